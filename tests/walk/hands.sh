#!/usr/bin/env bash
# Works with many commands as a person does, with the mouse of a real screen: drags them within a pane and to
# the other one, and carries them by the clipboard to a second program with a site of its own. What happens is
# seen in the files of both sites.
#   tests/walk/hands.sh [PROGRAMS [PICTURES]]    build/release/bin, build/hands
set -euo pipefail
cd "$(dirname "$0")/../.."
. tests/walk/person.inc.sh
begin_walk build/hands "$@"


# The commands of a file in any order, so that one can be told that moved.
commands_sorted() { cli show "$1" | sort; }
same_commands_moved() { ! same_lines "$1" "$2" && [ "$(commands_sorted "$1")" = "$(sort "$2")" ]; }
same_lines() { [ "$(cli show "$1")" = "$(<"$2")" ]; }
# drag X Y X Y: slowly enough for a drag to begin, and to be seen on its way.
drag() {
  xdotool mousemove "$1" "$2" sleep 0.1 mousedown 1 sleep 0.1
  for part in 1 2 3 4 5 6; do
    xdotool mousemove $(($1 + ($3 - $1) * part / 6)) $(($2 + ($4 - $2) * part / 6)) sleep 0.05
  done
  [ -z "${5:-}" ] || picture "$5"
  xdotool sleep 0.1 mouseup 1
}

start_screen
start_panel
start_program
say "opens macro 010 in pane A and 011 in pane B"
repeat_until "the working copy of A" same_file "$macro" "$copy_a" -- \
  choose_row 1 "Evening News" 3 "Workplace 1" 4 "010"
keys F6
repeat_until "the working copy of B" same_file "$folder/macro011.mac" "$copy_b" -- \
  choose_row 1 "Evening News" 3 "Workplace 1" 4 "011"
cli show "$copy_a" >"$work/a"
cli show "$copy_b" >"$work/b"
picture opened

above() { echo $(($(row "$1") - row_height / 2)); }

say "drags the command 3 of pane A in front of command 6"
drag "$x_a" "$(row 3)" "$x_a" "$(above 6)" drag-within
await "the moved command" same_commands_moved "$copy_a" "$work/a"
[ "$(command_at "$copy_a" 5)" = "$(sed -n 3p "$work/a")" ] || fail "it stands elsewhere"
keys ctrl+z
await "the order of before" same_file "$macro" "$copy_a"

say "drags the commands 2 to 4 of pane A in front of command 3 of pane B"
xdotool mousemove "$x_a" "$(row 2)" click 1
xdotool mousemove "$x_a" "$(row 4)" keydown shift click 1 keyup shift
drag "$x_a" "$(row 3)" "$x_b" "$(above 3)" drag-between
await "the commands in pane B" commands_number "$copy_b" $(($(wc -l <"$work/b") + 3))
[ "$(cli show "$copy_b" | sed -n 3,5p)" = "$(sed -n 2,4p "$work/a")" ] || fail "they stand elsewhere"
same_file "$macro" "$copy_a" || fail "pane A was changed by a copy"
picture copied-between

say "moves command 1 of pane A to the head of pane B with Shift"
xdotool mousemove "$x_a" "$(row 1)" mousedown 1 sleep 0.1 mousemove_relative 0 6 sleep 0.05 mousemove_relative 0 6 sleep 0.1
xdotool keydown shift mousemove "$x_b" "$(row 2)" sleep 0.1 mousemove "$x_b" "$(above 1)" sleep 0.2
xdotool mouseup 1 sleep 0.1 keyup shift
await "the command in pane B" commands_number "$copy_b" $(($(wc -l <"$work/b") + 4))
await "the command gone from pane A" commands_number "$copy_a" $(($(wc -l <"$work/a") - 1))
picture moved-between

say "copies all commands of pane B and pastes them in a second program"
xdotool mousemove "$x_b" "$(row 5)" click 1
keys ctrl+a ctrl+c
cli show "$copy_b" >"$work/b"
first_program=$program
begin_site "$work/second"
start_program
repeat_until "its working copy" test -s "$copy_a" -- \
  choose_row 1 "Football Live" 3 "Workplace 1" 4 "001"
other=$(commands_in "$copy_a")
keys ctrl+5 End ctrl+v
await "the pasted commands" commands_number "$copy_a" $((other + $(wc -l <"$work/b")))
picture pasted-in-second
keys ctrl+z
await "the macro as it was" commands_number "$copy_a" "$other"
keys alt+F4
await "the end of the second program" ended "$program"
program=$first_program
kill -TERM "$program"
await "the end of the first program" ended "$program"
echo "worked in $SECONDS s; pictures: $pictures"
