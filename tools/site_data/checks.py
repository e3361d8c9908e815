"""Is the sample site sound? Reads the written files back and compares them with what the dictionary holds."""

import re
import xml.etree.ElementTree as ElementTree
from collections import Counter

from .classic import GROUPS, TYPES, in_group_table, list_device_code, problem_of, read_list
from .dictionary import function_table, functions, interface_files
from .sources import category_names, destination_names

FEWEST_FUNCTIONS, FEWEST_LISTS, LARGEST_SITE = 40_000, 40, 4_000_000
SHARED_NAMES = {"EMEM.RECALL", "EMEM.STORE", "TEST_PATTERN.SELECT.SET"}  # in both files
# On purpose: a read action, of whose bytes no decoding list has to tell anything.
RAW_CLASSICS = {"63 10 07 01 "}


class Report:
    def __init__(self):
        self.problems = []
        self.lines = []

    def expect(self, holds, problem):
        if not holds:
            self.problems.append(problem)

    def missing(self, wanted, present, what):
        absent = sorted(set(wanted) - set(present))
        self.expect(not absent, f"{what}: {absent[:5]}{' ...' if len(absent) > 5 else ''}")

    def note(self, text):
        self.lines.append(text)


def check(site, files):
    report = Report()
    check_files(report, site, files)
    check_functions(report)
    lists = check_lists(report, files)
    check_macros(report, files, lists)
    check_keys(report, files, lists)
    check_devices(report, files)
    print("\n".join(report.lines + [f"PROBLEM: {problem}" for problem in report.problems]))
    return 1 if report.problems else 0


def check_files(report, site, files):
    on_disk = {str(path.relative_to(site)): path for path in (site / "c").rglob("*") if path.is_file()}
    report.missing(files, on_disk, "not written")
    report.missing(on_disk, files, "not generated")
    changed = [path for path in files if path in on_disk and on_disk[path].read_bytes() != files[path]]
    report.expect(not changed, f"differs from what is generated: {changed[:5]}")
    size = sum(map(len, files.values()))
    report.expect(size < LARGEST_SITE, f"site too large: {size}")
    report.note(f"{len(files)} files, {size:,} bytes")


def check_functions(report):
    everything = functions()
    report.expect(len(everything) >= FEWEST_FUNCTIONS, f"only {len(everything)} functions")
    report.missing(destination_names(), {f.group for f in everything}, "destination without functions")
    segments = {segment for f in everything for segment in f.name.split(".")}
    report.missing(category_names(), segments, "no whole segment of a name")
    mainframe, panel = interface_files()
    aliased = [entry[0] for entries in mainframe.aliases.values() for entry in entries]
    report.missing(aliased, segments, "alias of no segment")
    twice = {name for name, count in Counter(f.name for f in everything).items() if count > 1}
    report.expect(twice == SHARED_NAMES, f"names registered twice: {sorted(twice)}")
    texts = Counter(f.description for f in everything)
    report.expect(max(texts.values()) == 1, f"functions of one text: {texts.most_common(3)}")
    for f in everything:
        report.expect("$" not in f.description + f.group + f.sid, f"reference left in {f.name}")
        report.expect(f.description == f.description.strip() != "", f"description of {f.name}")
        report.expect(f.name.find("INC") in (-1, len(f.name) - 3), f"INC within {f.name}")
    kinds = Counter(p.kind for file in interface_files() for t in file.templates for p in t.parameters)
    report.expect(len(kinds) == 5, f"parameter kinds: {dict(kinds)}")
    report.note(f"{len(mainframe.templates)} + {len(panel.templates)} templates, {len(everything)} functions "
                f"({sum(f.incremental for f in everything)} without a value, {len(twice)} names twice), "
                f"{len(destination_names())} destinations, {len(aliased)} aliases")
    report.note("parameters of templates: " + ", ".join(f"{count} {kind}" for kind, count in sorted(kinds.items())))


def check_lists(report, files):
    lists, kinds = {}, Counter()
    for path, content in files.items():
        match = re.search(r"Cd-0x(..)-Co-0x(..)\.ini$", path)
        if match:
            cd, co = (int(item, 16) for item in match.groups())
            lists[cd, co] = entries = read_list(content.decode("cp1252"), cd, co)
            sharing = range(5) if cd == 0 else [cd]  # the mix effects share the lists of PP
            report.expect(any(in_group_table(code, co) for code in sharing), f"{path} is for no row of the menu")
            kinds.update(p.kind for entry in entries for p in entry.parameters)
    reached = sum((list_device_code(cd), co) in lists for cd, ranges in GROUPS.items() for low, high in ranges
                  for co in range(low, high + 1))
    report.expect(reached >= FEWEST_LISTS, f"only {reached} rows of the menu have a list")
    report.missing(TYPES, kinds, "parameter type in no list")
    report.note(f"{len(lists)} decoding lists for {reached} (cd, co) of the menu, "
                f"{sum(map(len, lists.values()))} entries")
    return lists


def check_macros(report, files, lists):
    sizes, kinds = [], Counter()
    for path, content in files.items():
        if not path.endswith(".mac"):
            continue
        # Without a declaration the bytes are Windows-1252.
        declared = content.startswith(b"<?xml")
        data = ElementTree.fromstring(content if declared else content.decode("cp1252")).find("data")
        sizes.append(len(data))
        for command in data:
            fid = command.get("fid")
            parameters = {p.get("name"): p.get("value") for p in command}
            kinds[fid.split(".")[0]] += 1
            if "NCSCOMMAND" in fid:
                kinds["classic"] += 1
                if parameters["CMD"] not in RAW_CLASSICS:
                    problem = problem_of(parameters["CMD"], lists)
                    report.expect(not problem, f"{path}: {parameters['CMD']}: {problem}")
            else:
                check_command(report, path, fid, parameters, kinds)
    report.expect(max(sizes) == 5000 and min(sizes) == 0, f"commands of a macro: {min(sizes)} to {max(sizes)}")
    long = sum(size >= 200 for size in sizes)
    report.note(f"{len(sizes)} macros, {sum(sizes)} commands, {long} macros of 200 and more: "
                + ", ".join(f"{count} {kind}" for kind, count in sorted(kinds.items())))


def check_command(report, path, fid, parameters, kinds):
    name = fid.partition(".")[2]
    function = function_table().get(name)
    report.expect(function is not None, f"{path}: {fid} is unknown")
    if function is None:
        return
    kinds["increment"] += name.endswith(".INC")
    described = {p.name: p for p in function.template.parameters}
    for parameter, value in parameters.items():
        if parameter not in described:
            report.expect(False, f"{path}: {fid} has no {parameter}")
        else:
            report.expect(in_range(function, described[parameter], value), f"{path}: {fid} {parameter}={value}")
    absent = [p.name for p in described.values() if not p.optional and p.name not in parameters]
    report.expect(not absent, f"{path}: {fid} without {absent}")


def in_range(function, parameter, value):
    if parameter.kind == "enum":
        return value in [stored for stored, _ in parameter.values]
    if parameter.kind == "input":
        return f"INPUT{value}" in {fidseg for fidseg, _ in interface_files()[0].enums["INPUT_5"]}
    if parameter.kind == "timecode":
        return value.isdigit() and all(int(digit, 16) < 10 for digit in f"{int(value) & 0x3F7F7F7F:08x}")
    if parameter.kind == "float" and function.incremental:
        return -2048 <= int(value) <= 2047
    low, high = parameter.number("min"), parameter.number("max")
    return low == high or low - 1e-6 <= float(value) <= high + 1e-6


def check_keys(report, files, lists):
    commands = 0
    keys = {path: content.decode("ascii").split("\n") for path, content in files.items() if path.endswith(".upk")}
    for path, lines in keys.items():
        index = int(path[-6:-4])
        headed = lines[:2] == ["#UPK", "BeginHeader"] and lines[3] == f"Name=MK{index + 1:02d}"
        report.expect(headed and index < 96, f"{path}: header")
        for line in lines[6:-1]:
            commands += 1
            problem = problem_of(line, lists)
            report.expect(not problem, f"{path}: {line}: {problem}")
    report.note(f"{len(keys)} key files, {commands} classic commands")


def check_devices(report, files):
    """Panels are found by their first two letters, and cut at the first hyphen of their list entry."""
    for path, content in files.items():
        if path.endswith("devices.ini"):
            text = content.decode("cp1252")
            names = re.findall(r'CP[^ ]*(?= ")', text)
            report.expect(text.count("CP") == len(names) and not any("-" in name for name in names), path)
