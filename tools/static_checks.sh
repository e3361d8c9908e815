#!/usr/bin/env bash
# Reads the code with clang-format, clang-tidy (and with it the warnings of clang) and cppcheck, and makes the headers
# that are generated.
#   tools/static_checks.sh [BUILD [REVISION]]    build/release; another one has to be built already; with a revision
#                                                the latter two read only what differs from it
set -euo pipefail
cd "$(dirname "$0")/.."
. tools/packages.sh
install_missing "${build_packages[@]}" "${check_packages[@]}"
[ $# -gt 0 ] || build_targets app_autogen editors_autogen windows_autogen widgets_autogen
rooms=(platform xctl dictionary values classic model link review panelsim cli widgets editors windows app)

find "${rooms[@]}" bench fuzz tests -name '*.cpp' -o -name '*.h' | xargs clang-format-14 --dry-run --Werror
/usr/bin/python3 tools/tidy_units.py "${1:-build/release}" ${2:+--changed "$2"} --jobs "$(nproc)"
sources="${rooms[*]} fuzz"
[ $# -lt 2 ] || sources=$(tools/changed_files.py "$2" $sources)
# The message left out takes a pointer to a member for an object that is passed by value.
[ -z "$sources" ] || cppcheck --std=c++20 --language=c++ --enable=warning,performance,portability --suppress=passedByValue --library=qt \
  -I . -j "$(nproc)" --error-exitcode=1 --quiet $sources
echo "cppcheck: clean"
