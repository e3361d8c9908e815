#!/usr/bin/env bash
# Reads the code with clang-tidy (and with it the warnings of clang) and cppcheck. Needs a configured build folder whose
# generated headers are there: ./test.sh makes one.
#   tools/static_checks.sh [BUILD]    build/release unless another is given
set -euo pipefail
cd "$(dirname "$0")/.."
rooms=(platform xctl dictionary model link panelsim cli editors app)

/usr/bin/python3 tools/tidy_units.py "${1:-build/release}" --jobs "$(nproc)"
cppcheck --std=c++20 --language=c++ --enable=warning,performance,portability --library=qt -I . -j "$(nproc)" \
  --error-exitcode=1 --quiet "${rooms[@]}" fuzz
echo "cppcheck: clean"
