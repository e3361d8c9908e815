#!/usr/bin/env bash
# Does the typical edit as a person does: the program in a window manager on a virtual screen, worked by the
# keyboard alone. What happens is seen in titles of windows, in files of the site and of the simulated panel.
#   tests/walk/person.sh [PROGRAMS [PICTURES]]    build/release/bin, build/walk
set -euo pipefail
cd "$(dirname "$0")/../.."
. tests/walk/person.inc.sh
begin_walk build/walk "$@"

on_panel=$tree/macro123.mac
before=$(commands_in "$macro")

start_screen
start_panel
# The address that pane A was left with; pane B gets it typed.
cli settings --rewrite --address-a "$panel_address" >"$work/settings"
start_program
say "opens macro 010 of the disk"
# Keys are not heard before the dictionary is loaded, and choosing the same macro again does no harm.
repeat_until "the working copy" same_file "$macro" "$copy_a" -- \
  choose_row 1 "Evening News" 3 "Workplace 1" 4 "010"
picture macro-opened

say "inserts a command at the end"
keys alt+o
await_window "Create new command (Corvane XL panel style)"
write "me1"
keys alt+2
write "key2"
keys alt+3
write "clip"
keys alt+4
write "set"
keys Return Return
write "48"
picture command-built
keys Return Escape
await_window "$main_title"
await "the command in the working copy" commands_number "$copy_a" $((before + 1))
same_number "$macro" "$before" || fail "the macro was written before it was saved"
picture command-inserted
keys ctrl+z
await "the macro without the command" commands_number "$copy_a" "$before"
keys ctrl+shift+z
await "the command again" commands_number "$copy_a" $((before + 1))
keys ctrl+s
await "the saved macro" same_file "$copy_a" "$macro"
[ "$(command_at "$macro" $((before + 1)))" = "ME 1 Key 2 Clip Set ==> 48.0%" ] ||
  fail "saved was $(command_at "$macro" $((before + 1)))"

say "puts back what it was before, and what was saved"
keys ctrl+shift+p
await_window "Find an Act"
write "history"
keys Return
await_window "History"
picture history
keys alt+p
await_window "Tessaly"
agree() { ! has_window "Tessaly" || keys Return; }
repeat_until "the macro as it was" commands_number "$macro" "$before" -- agree
await_window "History"
keys Home alt+p
await_window "Tessaly"
repeat_until "the macro as it was saved" commands_number "$macro" $((before + 1)) -- agree
await_window "History"
keys Escape
await_window "$main_title"
await "what was put back in the pane" same_file "$copy_a" "$macro"

say "connects pane B to the panel"
keys F6 ctrl+1 shift+Tab shift+Tab space Right Tab ctrl+a
write "$panel_address"
keys alt+k
await "the connection" panel_said "PANEL.WP1.MFDCOUNT"
repeat_until "the names of workplace 1" panel_said "PANEL.MACRO1.REG" -- choose_row 3 "Workplace 1"
picture connected

say "sends the macro to the panel as number 123"
keys alt+y
await_window "Copy Macro"
keys ctrl+a
write "123"
picture copying
keys Return
await_window "$main_title"
await "the macro on the panel" same_file "$macro" "$on_panel"
await "the announcement" panel_said "calls PANEL.APPLICATION.LOAD.FINISH"
hear_panel_anew  # what was sent was also read back

say "opens it on the panel in pane A, fetches the value of the new command, saves"
keys F6 ctrl+1 shift+Tab shift+Tab space Right
repeat_until "the macro of the panel" panel_said "sent .*macro123.mac" -- \
  choose_row 3 "Workplace 1" 4 "123"
echo "set QMF1.ME1.KEY2.CLIP 0.25" >&"$panel_prompt"
keys ctrl+5 End F5
await "the panel's value in the working copy" grep -q '"0.25"' "$copy_a"
picture value-updated
keys ctrl+s
await "the updated macro on the panel" same_file "$copy_a" "$on_panel"
[ "$(command_at "$on_panel" $((before + 1)))" = "ME 1 Key 2 Clip Set ==> 25.0%" ] ||
  fail "on the panel was $(command_at "$on_panel" $((before + 1)))"
picture saved-on-panel

say "closes the window"
keys alt+F4
await "the end of the program" ended "$program"
wait "$program" || fail "the program ended with $?"
echo "walked in $SECONDS s; pictures: $pictures"
