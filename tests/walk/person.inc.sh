# Sourced by the walks: the screen, the programs, the hands and the eyes of the person.

longest=30  # seconds that a condition may take on a busy machine
step=0

# begin_walk PICTURES_UNLESS_NAMED [PROGRAMS [PICTURES]]: what the walk needs is there, and goes again at its end.
begin_walk() {
  . tools/packages.sh
  install_missing "${build_packages[@]}" "${run_packages[@]}" "${check_packages[@]}"
  [ $# -gt 1 ] || build_targets tessaly tessaly-cli tessaly-panelsim
  programs=$(realpath "${2:-build/release/bin}")
  pictures=$(realpath -m "${3:-$1}")
  rm -rf "$pictures" && mkdir -p "$pictures"
  work=$(mktemp -d)
  trap end_walk EXIT
  begin_site "$work/site"
  tree=$work/panel/flash/data/PANEL/macro/workplace1
}

# begin_site ROOT: a sample site of its own for the programs that are started from now on.
begin_site() {
  site=$1
  mkdir "$site" && cp -R site/c "$site/"
  folder="$site/c/programme/RV48/appli/Evening News/CP1/macroWP1"
  macro=$folder/macro010.mac
  copy_a=$site/c/programme/RV48/bin/MacroFid/tempA.mac
  copy_b=$site/c/programme/RV48/bin/MacroFid/tempB.mac
  main_title="Corvane XL Macro Viewer / Editor - $(shown_folder "$site")"
}

say() { echo "walk: $*"; }

fail() {
  echo "walk: FAILED: $*" >&2
  picture failed || true
  tail -n 5 "$work/panel.log" "$work/program.log" >&2 || true
  exit 1
}

end_walk() {
  [ -z "${panel_prompt:-}" ] || exec {panel_prompt}>&-
  kill $(jobs -p) 2>/dev/null || true
  wait 2>/dev/null || true
  rm -rf "$work"
}

# await WHAT COMMAND...: until the command succeeds.
await() {
  local what=$1 deadline=$((SECONDS + longest))
  shift
  until "$@"; do
    [ $SECONDS -lt $deadline ] || fail "waited in vain for $what"
    sleep 0.05
  done
}

# repeat_until WHAT CONDITION... -- ACTION...: for an action that a busy program may not have heard.
repeat_until() {
  local what=$1 condition=() deadline=$((SECONDS + longest)) tries
  shift
  while [ "$1" != -- ]; do condition+=("$1") && shift; done
  shift
  until "${condition[@]}"; do
    [ $SECONDS -lt $deadline ] || fail "waited in vain for $what"
    "$@"
    for ((tries = 0; tries < 20; ++tries)); do "${condition[@]}" && break || sleep 0.05; done
  done
}

# The hands: keys go to the window that has the keyboard.
keys() { xdotool key --delay 20 "$@"; }
write() { xdotool type --delay 20 -- "$1"; }

# choose_row LIST TEXT ...: finds the row in the list with that number and chooses it.
choose_row() {
  while [ $# -gt 0 ]; do
    keys "ctrl+$1" ctrl+f ctrl+a
    write "$2"
    keys Return
    shift 2
  done
}

# Where the rows of commands of both panes are on this screen; the pictures show it.
x_a=200 x_b=800 first_row=521 row_height=17
row() { echo $((first_row + ($1 - 1) * row_height)); }

# The eyes.
# As the window spells a folder: with TESSALY_WALK_FOLDER, the drive that holds all of this system's, as Windows does.
shown_folder() { [ -z "${TESSALY_WALK_FOLDER:-}" ] && echo "$1" || echo "$TESSALY_WALK_FOLDER${1//\//\\}"; }
active_title() { xdotool getactivewindow getwindowname 2>/dev/null || true; }
has_window() { [ "$(active_title)" = "$1" ]; }
await_window() { await "the window \"$1\"" has_window "$1"; }
has_window_like() { [[ "$(active_title)" = "$1"* ]]; }
same_file() { cmp -s "$1" "$2"; }
heard=0  # lines of the panel that are over
hear_panel_anew() { heard=$(wc -l <"$work/panel.log"); }
panel_said() { tail -n "+$((heard + 1))" "$work/panel.log" | grep -- "$1" >/dev/null; }
ended() { ! kill -0 "$1" 2>/dev/null; }
cli() { "$programs/tessaly-cli" --root "$site" "$@"; }
commands_in() { cli show "$1" | wc -l; }
commands_number() { [ "$(commands_in "$1" 2>/dev/null)" = "$2" ]; }
same_number() { commands_number "$@"; }
command_at() { cli show "$1" | sed -n "$2p"; }

# Until the program waits and nothing moves any more; what the screen shows then is in last.xwd. (What the screen gives
# out by request lacks the contents of dialogs.)
await_still() {
  local tries
  for ((tries = 0; tries < 40; ++tries)); do
    cp "$work/Xvfb_screen0" "$work/last.xwd"
    sleep 0.1
    [ "$(cut -d' ' -f3 "/proc/$program/stat")" = S ] && cmp -s "$work/last.xwd" "$work/Xvfb_screen0" && break
  done
}

picture() {
  local file
  printf -v file '%s/%02d-%s.png' "$pictures" $((++step)) "$1"
  await_still
  convert "xwd:$work/last.xwd" "$file"
}

start_screen() {
  Xvfb -displayfd 5 -screen 0 1280x900x24 -nolisten tcp -fbdir "$work" 5>"$work/display" 2>"$work/screen.log" &
  screen=$!
  await "the screen" test -s "$work/display"
  export DISPLAY=:$(<"$work/display")
  openbox --sm-disable >"$work/manager.log" 2>&1 &
  manager=$!
  await "the window manager" managed
}

managed() { xdotool get_num_desktops >/dev/null 2>&1; }

start_panel() {
  mkfifo "$work/prompt"
  exec {panel_prompt}<>"$work/prompt"
  "$programs/tessaly-panelsim" --address 127.0.0.1 --control-port 0 --ftp-port 0 --root "$work/panel" \
    --site "$site" <"$work/prompt" >"$work/panel.log" 2>&1 &
  panel=$!
  await "the panel" panel_said '^ready'
  panel_address=$(sed -n 's/^ready control \([^ ]*\) .*/\1/p' "$work/panel.log")
  ftp_port=$(sed -n 's/^ready .* ftp [^ ]*:\([0-9]*\) .*/\1/p' "$work/panel.log")
}

start_program() {
  env QT_QPA_PLATFORM=xcb LC_ALL=C.UTF-8 XDG_CONFIG_HOME="$work/config" XDG_RUNTIME_DIR="$work" \
    "$programs/tessaly" --root "$site" --ftp-port "$ftp_port" >"$work/program.log" 2>&1 &
  program=$!
  await_window "$main_title"
}
