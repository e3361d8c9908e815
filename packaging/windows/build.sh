#!/usr/bin/env bash
# Builds Tessaly for 64 bit Windows by Debian's cross compiler, and proves it under wine: packaging/windows/build.sh
# [--plain|--quick|--libraries] [FOLDER_OF_THIS_SYSTEMS_PROGRAMS]. The libraries are built once, and kept in
# ~/.cache/tessaly-windows (TESSALY_WINDOWS_CACHE) by their versions; what is built stays in build/windows. With --plain
# the command-line twin and the tests, with --quick these without the panel, with few kills and with the tests of those
# rooms that have files of their own for that system, with --libraries only the libraries;
# else the window too, and the installer and the ZIP in build/windows-package. The twin and the simulated panel of this
# system, which they are set against, are built in build/release when their folder is not named.
set -euo pipefail
cd "$(dirname "$0")/../.."
here=$PWD/packaging/windows
what=window
case ${1:-} in --*) what=${1#--} && shift ;; esac
this_systems=${1:-build/release/bin}
. tools/packages.sh
install_missing "${windows_packages[@]}"
. "$here/libraries.sh"
# A line for each part that is over.
began=$SECONDS
part_began=$SECONDS
over() { echo "windows: $1 in $((SECONDS - part_began)) s" && part_began=$SECONDS; }
prepare_libraries
[ $what != window ] || prepare_toolkit
over libraries
[ $what != libraries ] || exit 0

rooms=(platform xctl cli dictionary values classic model link review)
kills=200 panel=--panel
[ $what != quick ] || { kills=10 panel= rooms=(platform xctl); }
build=build/windows
mkdir -p build
# What only proves the rooms is compiled faster.
settings=(-DTESSALY_WINDOW=OFF -DTESSALY_PRECOMPILE=ON -DTESSALY_GROUPED=ON -DCMAKE_CXX_FLAGS_RELEASE=-O1)
[ $what != window ] || settings=(-DTESSALY_WINDOW=ON -DTESSALY_PRECOMPILE=OFF -DTESSALY_GROUPED=OFF -DCMAKE_CXX_FLAGS_RELEASE="-O2 -DNDEBUG"
  -DTESSALY_WINDOWS_TOOLKIT="$toolkit" -DQT_HOST_PATH=/usr -DQT_HOST_PATH_CMAKE_DIR=/usr/lib/x86_64-linux-gnu/cmake
  -DQt6LinguistTools_DIR=/usr/lib/x86_64-linux-gnu/cmake/Qt6LinguistTools)
cmake -S . -B $build -G Ninja -DCMAKE_BUILD_TYPE=Release -DTESSALY_BENCH=OFF -DCMAKE_TOOLCHAIN_FILE="$here/toolchain.cmake" \
  -DTESSALY_WINDOWS_LIBRARIES="$libraries" "${settings[@]}" >$build.log || { cat $build.log; exit 1; }
targets=(tessaly-cli "${rooms[@]/#/test_}")
[ $what != window ] || targets+=(tessaly)
cmake --build $build --target "${targets[@]}"
cp "$libraries"/bin/*.dll $build/bin
over programs

"$here/test.sh" $build/bin "${rooms[@]}"
over "tests under wine"

if [ $# -eq 0 ]; then
  build_targets tessaly-cli tessaly-panelsim
  over "this system's twin"
fi
"$here/twin.py" $build/bin "$this_systems" $panel
over "the twin here and there"
"$here/kills.py" $build/bin "$this_systems" $kills
over "$kills kills"

if [ $what = window ]; then
  "$here/package.sh" $build/bin build/windows-package
  over "installer and ZIP"
fi
echo "windows: done in $((SECONDS - began)) s"
