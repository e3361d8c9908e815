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
fail() { echo "package: $*" >&2; exit 1; }
export WINEPREFIX=$output/wine WINEDEBUG=-all WINEARCH=win64 DISPLAY=
rm -rf "$WINEPREFIX"
mkdir -p "$WINEPREFIX"
wineboot --init >/dev/null 2>&1 || true
registered() { wine reg query "HKCU\\Software\\Classes\\$1" /v "$2" >/dev/null 2>&1; }
in_menu() { find "$WINEPREFIX/drive_c/users" -name Tessaly.lnk | grep -q 'Start Menu'; }
timeout 300 wine "$output/$name-setup.exe" /S
installed=$(find "$WINEPREFIX/drive_c/users" -type d -path '*/AppData/Local/Programs/Tessaly')
[ -n "$installed" ] || fail "nothing is installed"
(cd "$stage" && find . -type f | sort) >"$output/staged"
(cd "$installed" && find . -type f ! -name uninstall.exe | sort) | diff "$output/staged" - || fail "not all is installed"
[ ! -f "$installed/tessaly.exe" ] || in_menu || fail "the start menu lacks the window"
registered .mac\\OpenWithProgids Tessaly.Macro && registered .upk\\OpenWithProgids Tessaly.Keys || fail "a file type is missing"
kept=$installed/../../Tessaly/history/kept
mkdir -p "${kept%/*}"
echo kept >"$kept"
echo mine >"$installed/mine.txt"
(cd "$installed" && wine tessaly-cli.exe --version && wine tessaly-cli.exe --root site dictionary)
timeout 300 wine "$installed/uninstall.exe" /S
timeout 300 wineserver -w  # it goes on as a copy of itself
[ "$(ls "$installed")" = mine.txt ] || fail "the uninstaller leaves $(ls "$installed")"
[ -f "$kept" ] || fail "the uninstaller takes the user's history"
! in_menu || fail "the uninstaller leaves the start menu"
! registered .mac\\OpenWithProgids Tessaly.Macro || fail "the uninstaller leaves a file type"
wineserver -k
rm -rf "$WINEPREFIX" "$stage" "$output/staged"
ls -la "$output"
