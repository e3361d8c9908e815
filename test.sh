#!/usr/bin/env bash
# Installs what is missing, builds everything and runs every test. Arguments go to ctest (-R NAME, -V, ...).
#   PRESET=asan ./test.sh    by clang, with the address and undefined behaviour sanitizers
#   COVERAGE=1 PRESET=asan ./test.sh    the same, with what tools/coverage.sh build/asan tells from
#   PRESET=tsan ./test.sh    by clang, with the thread sanitizer
set -euo pipefail
cd "$(dirname "$0")"
. tools/packages.sh
preset=${PRESET:-release}
compiler=()
[ "$preset" = release ] || compiler=(clang lld libclang-rt-14-dev)  # the sanitizer builds
install_missing "${build_packages[@]}" "${run_packages[@]}" "${compiler[@]}"

cmake --preset "$preset" ${WERROR:+-DTESSALY_WERROR=ON} ${COVERAGE:+-DTESSALY_COVERAGE=ON} >/dev/null
[ -z "${COVERAGE:-}" ] || export LLVM_PROFILE_FILE=$PWD/build/$preset/coverage/%2m.profraw
cmake --build "build/$preset"
ctest --preset "$preset" -j "$(nproc)" "$@"
