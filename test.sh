#!/usr/bin/env bash
# Installs what is missing, builds everything and runs every test. Arguments go to ctest (-R NAME, -V, ...).
#   PRESET=asan ./test.sh    with the address and undefined behaviour sanitizers
#   PRESET=tsan ./test.sh    with the thread sanitizer
set -euo pipefail
cd "$(dirname "$0")"
. tools/packages.sh
install_missing "${build_packages[@]}" "${run_packages[@]}"

preset=${PRESET:-release}
cmake --preset "$preset" ${WERROR:+-DTESSALY_WERROR=ON} >/dev/null
cmake --build "build/$preset"
export QT_QPA_PLATFORM=${QT_QPA_PLATFORM:-offscreen}
ctest --test-dir "build/$preset" --output-on-failure -j "$(nproc)" "$@"
