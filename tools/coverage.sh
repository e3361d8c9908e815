#!/usr/bin/env bash
# Tells, room by room, how many of its lines the tests run, and names the files of which they run the fewest:
#   tools/coverage.sh BUILD [GOAL]    a build with TESSALY_COVERAGE whose tests have run; GOAL percent (95) over all
set -euo pipefail
cd "$(dirname "$0")/.."
. tools/packages.sh
install_missing llvm
build=$1 goal=${2:-95}
counts=$build/coverage.profdata
llvm-profdata-14 merge -sparse "$build"/coverage/*.profraw -o "$counts"
programs=()
for program in "$build"/bin/*; do
  [ -f "$program" ] && [ -x "$program" ] && readelf -S "$program" 2>/dev/null | grep -q __llvm_covmap && programs+=(-object "$program")
done
llvm-cov-14 export -summary-only -instr-profile "$counts" "${programs[@]:1}" |
  python3 tools/coverage.py "$goal"
