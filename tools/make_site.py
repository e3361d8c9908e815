#!/usr/bin/python3
"""Writes the sample site (site/c), or checks that it is sound and up to date.

    tools/make_site.py            writes the site
    tools/make_site.py --check    expands, decodes and counts everything; exit code 1 when something is wrong
"""

import argparse
import shutil
import sys
from pathlib import Path

from site_data.applications import applications
from site_data.layout import site_files

SITE = Path(__file__).resolve().parent.parent / "site"


def write(files):
    shutil.rmtree(SITE / "c", ignore_errors=True)
    for path, content in files.items():
        target = SITE / path
        target.parent.mkdir(parents=True, exist_ok=True)
        target.write_bytes(content)


def main():
    parser = argparse.ArgumentParser(description=__doc__, formatter_class=argparse.RawDescriptionHelpFormatter)
    parser.add_argument("--check", action="store_true", help="check the site instead of writing it")
    options = parser.parse_args()
    files = site_files(applications())
    if options.check:
        from site_data.checks import check

        return check(SITE, files)
    write(files)
    print(f"{len(files)} files, {sum(map(len, files.values())):,} bytes in {SITE}")
    return 0


if __name__ == "__main__":
    sys.exit(main())
