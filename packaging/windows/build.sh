#!/usr/bin/env bash
# Builds Tessaly for 64 bit Windows by Debian's cross compiler, and proves it under wine: packaging/windows/build.sh
# [--plain|--libraries]. The libraries are built once, and kept in ~/.cache/tessaly-windows (TESSALY_WINDOWS_CACHE) by
# their versions; what is built stays in build/windows. With --plain the command-line twin and the tests, with --libraries
# only the libraries; else the window too, and the installer and the ZIP in build/windows-package.
set -euo pipefail
cd "$(dirname "$0")/../.."
here=$PWD/packaging/windows
plain=
[ "${1:-}" != --plain ] || plain=yes
. tools/packages.sh
install_missing "${windows_packages[@]}"
. "$here/libraries.sh"
began=$SECONDS
prepare_libraries
[ -n "$plain" ] || prepare_toolkit
[ "${1:-}" != --libraries ] || exit 0

echo "== programs"
build=build/windows
mkdir -p build
# What only proves the rooms is compiled faster.
cmake -S . -B $build -G Ninja -DCMAKE_BUILD_TYPE=Release -DCMAKE_CXX_FLAGS_RELEASE="-O$([ -n "$plain" ] && echo 1 || echo 2)" -DTESSALY_BENCH=OFF \
  -DCMAKE_TOOLCHAIN_FILE="$here/toolchain.cmake" -DTESSALY_WINDOWS_LIBRARIES="$libraries" \
  ${toolkit:+-DTESSALY_WINDOWS_TOOLKIT="$toolkit" -DQT_HOST_PATH=/usr
  -DQT_HOST_PATH_CMAKE_DIR=/usr/lib/x86_64-linux-gnu/cmake
  -DQt6LinguistTools_DIR=/usr/lib/x86_64-linux-gnu/cmake/Qt6LinguistTools} \
  -DTESSALY_WINDOW="$([ -n "$plain" ] && echo OFF || echo ON)" \
  >$build.log || { cat $build.log; exit 1; }
targets=(tessaly-cli test_{platform,xctl,dictionary,values,classic,model,link,review,cli})
[ -n "$plain" ] || targets+=(tessaly)
cmake --build $build --target "${targets[@]}"
cp "$libraries"/bin/*.dll $build/bin

echo "== tests under wine"
"$here/test.sh" $build/bin

echo "== the twin here and there"
build_targets tessaly-cli tessaly-panelsim
"$here/twin.py" $build/bin --panel

echo "== killed while it writes"
"$here/kills.py" $build/bin 200

if [ -z "$plain" ]; then
  echo "== installer and ZIP"
  "$here/package.sh" $build/bin build/windows-package
fi
echo "windows: done in $((SECONDS - began)) s"
