#!/usr/bin/env bash
# A person's edit, as tests/walk/person.sh does it on a virtual screen, with the window built for Windows under wine; the
# panel and what looks at the files are this system's. packaging/windows/walk.sh FOLDER_OF_THE_WINDOWS_PROGRAMS [PICTURES]
set -euo pipefail
programs=$(cd "$1" && pwd)
pictures=$(realpath -m "${2:-$(dirname "$0")/../../build/windows-walk}")
cd "$(dirname "$0")/../.."
. tools/packages.sh
build_targets tessaly-cli tessaly-panelsim
hands=$(mktemp -d)
trap 'rm -rf "$hands"' EXIT
export WINEPREFIX=${TESSALY_WINE:-${XDG_CACHE_HOME:-$HOME/.cache}/tessaly-windows/wine} WINEDEBUG=-all WINEARCH=win64
rm -rf "$WINEPREFIX"/drive_c/users/*/AppData/Roaming/tessaly  # what the window of another walk remembers
cp build/release/bin/tessaly-{cli,panelsim} "$hands"
# The virtual screen's window manager tells the titles of windows; those of this one name a folder of the other system.
printf '#!/bin/sh\nunset QT_QPA_PLATFORM\nexec wine "%s/tessaly.exe" "$@"\n' "$programs" >"$hands/tessaly"
chmod +x "$hands/tessaly"
TESSALY_WALK_FOLDER='z:' tests/walk/person.sh "$hands" "$pictures"
