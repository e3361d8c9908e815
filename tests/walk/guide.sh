#!/usr/bin/env bash
# Does what docs/guide.md says under its shows, word by word, on a screen of its own with a simulated panel.
#   tests/walk/guide.sh [PROGRAMS [PICTURES]]    build/release/bin, build/guide
set -euo pipefail
cd "$(dirname "$0")/../.."
if [ -z "${GUIDE_BUS:-}" ]; then  # a message bus of its own, for the eyes
  GUIDE_BUS=own exec dbus-run-session -- "$0" "$@"
fi
. tests/walk/person.inc.sh
begin_walk build/guide "$@"

export QT_LINUX_ACCESSIBILITY_ALWAYS_ON=1
start_screen
start_panel
start_program
sleep 1
# show HEADING: does the steps under it.
show() {
  say "$1"
  /usr/bin/python3 tests/walk/guide_steps.py docs/guide.md "$1" "$program" "10.0.0.5=$panel_address" ||
    fail "$1"
  picture "$(tr 'A-Z ' 'a-z-' <<<"$1")"
}
show "The first hour"
show "The evening before"
show "Ten minutes before air"
kill -TERM "$program"
await "the end of the program" ended "$program"
echo "shown in $SECONDS s; pictures: $pictures"
