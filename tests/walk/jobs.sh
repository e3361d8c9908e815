#!/usr/bin/env bash
# Does ten jobs of a show by real keys and clicks, and counts them: a typed letter, a chord such as Ctrl+S and a click
# are one each. Writes the table in docs/usability.md, and fails where a job takes more than its limit.
#   tests/walk/jobs.sh [PROGRAMS [PICTURES]]    build/release/bin, build/jobs
set -euo pipefail
cd "$(dirname "$0")/../.."
. tests/walk/person.inc.sh
begin_walk build/jobs "$@"


# The hands that are counted.
taken=0 job= table=$work/table over=0
press() { taken=$((taken + $#)) && keys "$@"; }
letters() { taken=$((taken + ${#1})) && write "$1"; }
# click X Y [KEY]: with the key held down.
click() {
  taken=$((taken + 1))
  xdotool mousemove "$1" "$2" ${3:+keydown "$3"} click 1 ${3:+keyup "$3"}
}
begin_job() { job=$1 taken=0 && say "$job"; }
# end_job THEN LIMIT HOW
end_job() {
  say "$taken keys and clicks of at most $2"
  [ "$taken" -le "$2" ] || over=$((over + 1))
  echo "| $job | $1 | $2 | $taken | $3 |" >>"$table"
  picture "$(tr 'A-Z ' 'a-z-' <<<"$job")"
}
lines() { cli show "$1" | sed -n "$2p"; }
has_lines() { [ "$(lines "$1" "$2")" = "$3" ]; }
# await_lines FILE NUMBERS TEXT: until these lines of a stored macro are the text.
await_lines() { await "\"$3\" in $1" has_lines "$@"; }
all_five() {
  for number in "${five[@]}"; do
    same_file "$folder/macro$number.mac" "$tree/macro$number.mac" || return
  done
}
# act WORDS: finds it among the acts of the menus.
act() {
  keys ctrl+shift+p
  await_window "Find an Act"
  write "$1"
  keys Return
  await_window "$main_title"
}

start_screen
start_panel
for number in 000 001 002 003 005 006 007 011; do
  cli move "$folder/macro$number.mac" 0 --to 2
done
start_program
say "makes ready: workplace 1 of the disk in pane A, that of the panel in pane B"
repeat_until "a macro" test -s "$copy_a" -- choose_row 1 "Evening News" 3 "Workplace 1" 4 "000"
keys F6
act "show panel"
act "address"
write "$panel_address"
keys alt+k
await "the connection" panel_said "PANEL.WP1.MFDCOUNT"
repeat_until "the macro of the panel" same_file "$tree/macro011.mac" "$copy_b" -- \
  choose_row 3 "Workplace 1" 4 "011"
picture ready
keys F6 ctrl+4

begin_job "Open a macro by name"
press ctrl+f
letters "do"
press Return
await "the macro" same_file "$macro" "$copy_a"
end_job - 4 'in the list of macros: Ctrl+F, two letters of "Double box anchor and guest", Enter'

begin_job "Change one value"
click "$x_a" "$(row 3)"
press Return
await_window "Modify selected command  (Corvane XL Panel style)"
letters "37"
press Return
await_window "$main_title"
press ctrl+s
await_lines "$macro" 3 "Color 1 Wash Size Set ==> 37.0%"
end_job 20 6 'a click on the command, Enter, `37`, Enter, Ctrl+S'

begin_job "A macro of twelve commands"
press alt+o
await_window "Create new command (Corvane XL panel style)"
wanted=
for key in 1 2 3 4; do
  for part in "Clip 48" "Gain 62" "Transparency 9"; do
    name=${part% *}
    letters "k$key ${name:0:2}"
    press Return
    letters "${part#* }"
    press Return
    wanted+="${wanted:+$'\n'}PP Key $key $name Set ==> ${part#* }.0%"
  done
done
press Escape
await_window "$main_title"
press ctrl+s
await_lines "$macro" '50,$' "$wanted"
end_job 250 110 'Alt+O; for each command two words, Enter, its value, Enter; Esc, Ctrl+S'

begin_job "Five macros to the panel"
five=(001 003 005 007 011)
press ctrl+shift+w
await_window "Workplaces"
await_still
for line in 2 4 5 7 9; do click 210 $((234 + (line - 1) * 20)); done
press alt+g
await "the five macros on the panel" all_five
cmp -s "$folder/macro002.mac" "$tree/macro002.mac" && fail "macro 002 went with them"
end_job "23 clicks" 8 'Ctrl+Shift+W, a click on the box of each, Alt+G'
keys Escape
await_window "$main_title"
keys ctrl+5 Home
await_still

begin_job "Reorder commands"
moved=$(lines "$macro" 5)
click "$x_a" "$(row 5)"
press alt+Up ctrl+s
await_lines "$macro" 4 "$moved"
end_job - 3 'a click on the command, Alt+Up, Ctrl+S'

begin_job "Three commands across panes"
before=$(lines "$tree/macro011.mac" 1,3)
click "$x_a" "$(row 2)"
click "$x_a" "$(row 4)" shift
press ctrl+c
click "$x_b" "$(row 1)"
press ctrl+v ctrl+s
await_lines "$tree/macro011.mac" 1,3 "$(lines "$macro" 2,4)"
end_job - 6 'a click, Shift and a click, Ctrl+C; a click in the other pane, Ctrl+V, Ctrl+S'

begin_job "Undo"
press ctrl+z
await_lines "$copy_b" 1,3 "$before"
end_job - 1 'Ctrl+Z'
keys ctrl+s
await_lines "$tree/macro011.mac" 1,3 "$before"

begin_job "Who uses a source"
last=$(cli find source:1 "$site/c/programme/RV48/appli" | tail -n 1 | cut -f 1)
click "$x_a" "$(row 6)"
press ctrl+shift+u
await_still
press s
await_window "Search"
await_still
end_job - 5 'a click on a command that names it, Ctrl+Shift+U, S'
keys End Return
await "the last macro that was found" same_file "$last" "$copy_a"
keys ctrl+shift+f
await_window "Search"
keys Escape
await_window "$main_title"

repeat_until "the macro of the disk" same_file "$macro" "$copy_a" -- \
  choose_row 1 "Evening News" 3 "Workplace 1" 4 "010"
keys F6
repeat_until "the macro of the panel" same_file "$tree/macro010.mac" "$copy_b" -- choose_row 4 "010"

begin_job "Compare disk and panel"
press ctrl+shift+b
await_window "Compare A with B"
end_job - 3 'Ctrl+Shift+B: the first difference is selected'
keys alt+Left
await_lines "$copy_a" 3 "$(lines "$tree/macro010.mac" 3)"
keys Escape
await_window "$main_title"

# A simulated panel's own value of a colour is none of its presets, which would be asked about.
printf 'set QMF1.BACKGROUND1.%s\n' "COLOR 4" "WASH_SIZE 0.25" >&"$panel_prompt"

begin_job "Capture"
press shift+F5
await_window "Capture"
await_still
press alt+t
await_still
press Escape
await_window "$main_title"
press ctrl+s
await_lines "$tree/macro010.mac" 3 "Color 1 Wash Size Set ==> 25.0%"
end_job - 5 'Shift+F5, Alt+T, Esc, Ctrl+S'

kill -TERM "$program"
await "the end of the program" ended "$program"
page=docs/usability.md
sed '/^| Job |/,$d' "$page" >"$work/page"
{
  echo "| Job | Then | Limit | Now | How |"
  echo "|---|---|---|---|---|"
  cat "$table"
} >>"$work/page"
cmp -s "$work/page" "$page" || cp "$work/page" "$page"
[ "$over" -eq 0 ] || { echo "walk: FAILED: $over jobs take more than their limits" >&2; exit 1; }
echo "done in $SECONDS s; pictures: $pictures"
