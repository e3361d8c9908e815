#!/usr/bin/env bash
# Does an edit and a comparison as a screen reader's user does, through the accessibility bus alone (atspi.py). What
# came of it is seen in the files of the site.
#   tests/walk/atspi.sh [PROGRAMS [PICTURES]]    build/release/bin, build/atspi
set -euo pipefail
[ -n "${WALK_BUS:-}" ] || WALK_BUS=own exec dbus-run-session -- "$0" "$@"
cd "$(dirname "$0")/../.."
. tests/walk/person.inc.sh
begin_walk build/atspi "$@"

ftp_port=21
cli show "$macro" >"$work/before"

start_screen
export QT_LINUX_ACCESSIBILITY_ALWAYS_ON=1
# Asking for it starts it; a second one beside it now and then leaves none.
bus_answers() { dbus-send --session --print-reply --dest=org.a11y.Bus /org/a11y/bus org.a11y.Bus.GetAddress &>/dev/null; }
await "the accessibility bus" bus_answers
start_program
/usr/bin/python3 tests/walk/atspi.py || fail "what a screen reader finds"
picture compared
cli show "$macro" >"$work/after"
cli show "$folder/macro003.mac" >"$work/taken"
[ "$(diff "$work/before" "$work/after" | grep -c '^>.* ==> 37.0%$')" = 1 ] || fail "not one value was changed"
[ "$(diff "$work/before" "$work/after" | grep -c '^[<>]')" = 2 ] || fail "more than a value was changed"
same_file "$work/after" "$work/taken" || fail "macro 003 does not hold what was taken over"
kill -TERM "$program"
await "the end of the program" ended "$program"
echo "walked in $SECONDS s; pictures: $pictures"
