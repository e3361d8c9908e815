#!/usr/bin/env bash
# Reads the code with clang-format, clang-tidy (and with it the warnings of clang) and cppcheck. Needs a configured
# build folder whose generated headers are there: ./test.sh makes one.
#   tools/static_checks.sh [BUILD]    build/release unless another is given
set -euo pipefail
cd "$(dirname "$0")/.."
rooms=(platform xctl dictionary values classic model link panelsim cli widgets editors app)

find "${rooms[@]}" bench fuzz tests -name '*.cpp' -o -name '*.h' | xargs clang-format --dry-run --Werror
/usr/bin/python3 tools/tidy_units.py "${1:-build/release}" --jobs "$(nproc)"
# The message left out takes a pointer to a member for an object that is passed by value.
cppcheck --std=c++20 --language=c++ --enable=warning,performance,portability --suppress=passedByValue --library=qt \
  -I . -j "$(nproc)" --error-exitcode=1 --quiet "${rooms[@]}" fuzz
echo "cppcheck: clean"
