#!/usr/bin/env bash
# The installer and the portable ZIP of what has been built for Windows, tried under wine:
# packaging/windows/package.sh FOLDER_OF_THE_PROGRAMS OUTPUT
set -euo pipefail
root=$(cd "$(dirname "$0")/../.." && pwd)
here=$root/packaging/windows
programs=$(cd "$1" && pwd)
mkdir -p "$2"
output=$(cd "$2" && pwd)
version=$(sed -n 's/^project(tessaly VERSION \([0-9.]*\).*/\1/p' "$root/CMakeLists.txt")
name=Tessaly-$version
stage=$output/$name
rm -rf "$stage" "$output"/*.exe "$output"/*.zip
mkdir -p "$stage"
for file in tessaly.exe tessaly-cli.exe; do
  [ ! -f "$programs/$file" ] || x86_64-w64-mingw32-strip -o "$stage/$file" "$programs/$file"
done
cp "$programs"/lib*.dll "$stage"
cp -r "$root/site" "$stage/site"
cp -r "$root/docs" "$stage/docs"
cp "$root/README.md" "$root/LICENSE" "$stage"

(cd "$output" && cmake -E tar cf "$name-portable.zip" --format=zip "$name")
makensis -V2 -XTarget\ amd64-unicode -INPUTCHARSET UTF8 -DVERSION="$version" -DSTAGE="$stage" -DICON="$programs/../tessaly.ico" \
  -DOUTPUT="$output/$name-setup.exe" "$here/installer.nsi"

# Installed, run, removed again; what the user has made stays.
export WINEPREFIX=$output/wine WINEDEBUG=-all WINEARCH=win64 DISPLAY=
rm -rf "$WINEPREFIX"
mkdir -p "$WINEPREFIX"
wineboot --init >/dev/null 2>&1 || true
timeout 300 wine "$output/$name-setup.exe" /S
installed=$(find "$WINEPREFIX/drive_c/users" -type d -path '*/AppData/Local/Programs/Tessaly')
[ -n "$installed" ] || { echo "package: nothing is installed" >&2; exit 1; }
mkdir -p "$installed/../../Tessaly/history"
(cd "$installed" && wine tessaly-cli.exe --version && wine tessaly-cli.exe --root site dictionary)
wine reg query 'HKCU\Software\Classes\.mac\OpenWithProgids' /v Tessaly.Macro >/dev/null
timeout 300 wine "$installed/uninstall.exe" /S "_?=$(WINEPREFIX=$WINEPREFIX winepath -w "$installed")"
[ ! -e "$installed/tessaly-cli.exe" ] || { echo "package: the uninstaller leaves the program" >&2; exit 1; }
[ -d "$installed/../../Tessaly/history" ] || { echo "package: the uninstaller takes the user's history" >&2; exit 1; }
wineserver -k
rm -rf "$WINEPREFIX" "$stage"
ls -la "$output"
