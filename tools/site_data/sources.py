"""Video sources and destinations, under the names that the program knows."""

INPUTS = 96
MIX_EFFECTS = [("ME0", "PP"), ("ME1", "ME 1"), ("ME2", "ME 2"), ("ME3", "ME 3"), ("ME4", "ME h")]


def fixed_sources():
    """(panel name, display name) of the sources that are no inputs; numbers as in classic commands."""
    pairs = [(144, "Color 1"), (145, "Color 2"), (146, "Color 3"), (153, "Color-Test")]
    pairs += [(129 + 2 * i, f"eDpm Fill {i + 1}") for i in range(4)]
    pairs += [(137 + i, f"RamRec {i + 1}") for i in range(6)]
    for bank, name in enumerate(["PP", "ME1", "ME2", "ME3"]):
        pairs += [(160 + bank, f"{name} A"), (208 + bank, f"{name} B"), (192 + 2 * bank, f"{name} C"),
                  (193 + 2 * bank, f"{name} D"), (176 + bank, f"{name} Pvw1"), (216 + bank, f"{name} Pvw2")]
    pairs += [(164, "Me-h A"), (212, "Me-h B"), (180, "Me-h Pvw1"), (220, "Me-h Pvw2")]
    return pairs


def input_sources():
    """The family "INPUT_5": every source that an input parameter can take."""
    pairs = [(i, f"Input {i}") for i in range(1, INPUTS + 1)] + fixed_sources()
    pairs += [(224 + i, f"Virtual Inp. {i}") for i in range(16)]
    return [(f"INPUT{number}", display) for number, display in pairs]


def destination_names():
    """What the buttons of the multiple command dialog ask for, alternatives included."""
    full = range(4)
    names = [f"{bus}.ME{m}" for bus in ("PGM", "PST") for m in range(5)]
    names += [f"ME{m}.KEY{k}.KEY" for m in range(5) for k in range(1, 5)]
    names += [f"ME{m}.KEY{k}.KEY" for m in full for k in (5, 6)]
    names += [f"ME{m}.KEY{k}.WIPE" for m in full for k in range(1, 5)]
    names += [f"ME{m}.TRANSI" for m in range(5)]
    names += [f"ME{m}.{kind}{i}" for kind in ("UTIL", "WIPE") for m in full for i in (1, 2)]
    names += [f"ME{m}.IDPM.CHANNEL{c}" for m in full for c in range(1, 5)]
    names += [f"ME{m}.KEY{k}.IDPM" for m in full for k in range(1, 5)]
    names += [f"DpmEffect.ME{m}" for m in full]
    names += [f"YUV_CORR.ME{m}" for m in range(5)] + [f"RGB_CORR.ME{m}" for m in full]
    names += ["BACKGROUND1", "BACKGROUND2", "BACKGROUND3", "TEST_PATTERN"]
    names += [f"AUX{i}" for i in range(1, 49)] + [f"MACHINE{i}" for i in range(1, 37)]
    names += [f"{stem}{i}" for stem in ("RAMCHAN", "RAM") for i in range(1, 7)]
    names += [f"CHANNEL{i}.EDPM" for i in range(1, 5)] + ["EDPM_MASTER"]
    names += [f"{kind}_INP_CORR.{fidseg}" for kind in ("RGB", "YUV") for fidseg, _ in input_sources()]
    return names


def category_names():
    """Panel names of the categories of the creation dialog: each must be a whole segment of some function."""
    names = [fidseg for fidseg, _ in MIX_EFFECTS + input_sources()]
    for stem, count in (("AUX", 48), ("RAMCHAN", 6), ("MACHINE", 36), ("CHANNEL", 4)):
        names += [f"{stem}{i}" for i in range(1, count + 1)]
    return names + ["EMEM"]
