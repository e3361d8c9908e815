#!/usr/bin/env bash
# Runs tests that were built for Windows under wine: packaging/windows/test.sh FOLDER_OF_THE_PROGRAMS ROOM...
set -euo pipefail
programs=$(cd "$1" && pwd)
here=$(cd "$(dirname "$0")" && pwd)
export WINEPREFIX=${TESSALY_WINE:-${XDG_CACHE_HOME:-$HOME/.cache}/tessaly-windows/wine}
export WINEDEBUG=-all WINEARCH=win64 DISPLAY=
mkdir -p "$WINEPREFIX"
[ -f "$WINEPREFIX/system.reg" ] || wineboot --init >/dev/null 2>&1 || true
# One server for all of them, or with each program a new one would begin, and go with it. It and its services do not
# hold this output.
{ wineserver -p600 || true; wine cmd /c exit; } </dev/null >/dev/null 2>&1
# Links among files and devices among them are not to be had there, and these make some; names that no file has there, too.
left_out=MacroHistoryTest.WaitingForAnotherProgramEnds:MacroHistoryTest.NothingIsKeptOrFoundThroughLinks
left_out+=:MacroHistoryTest.OddNamesAndHostileBytesStayWhatTheyAre
left_out+=:MacroBatchTest.AJournalIsReadAsFarAsItIsWhole:StepsFileTest.WhatIsNoSmallFileIsPutAsideUnread
left_out+=:HistoryCommands.RestoresOutsideTheSiteOnlyWhereItIsTold:ReviewCommand.ChecksAndFindsInFilesFoldersAndStreams
# Computes alone, on any system the same, for minutes here.
left_out+=:EffectOfRandomMacros.IsWhatTheSimulatedPanelMakesOfItsValues
failed=()
for room in "${@:2}"; do
  echo "-- $room"
  (cd "$programs" && timeout 300 wine "test_$room.exe" --gtest_brief=1 --gtest_filter="-$left_out") || failed+=("$room")
done
[ ${#failed[@]} -eq 0 ] || { echo "failed: ${failed[*]}" >&2; exit 1; }
