#!/usr/bin/env bash
# What bash offers for some beginnings of a line: check_completion.sh PROGRAM_FOLDER SOURCE_FOLDER
set -uo pipefail
PATH=$1:$PATH
export TESSALY_ROOT=$2/site
. "$2/packaging/tessaly.completion.bash"
folder=$(mktemp -d)
trap 'rm -rf "$folder"' EXIT
cd "$folder" || exit 1
mkdir shows
touch one.mac key00.upk
failed=0

offers() { # WORDS OF THE LINE -- EXPECTED...: the last word of the line is the one to complete
  COMP_WORDS=(tessaly-cli)
  while [ "$1" != -- ]; do COMP_WORDS+=("$1"); shift; done
  shift
  COMP_LINE=${COMP_WORDS[*]}
  COMP_CWORD=$((${#COMP_WORDS[@]} - 1))
  _tessaly_cli
  local got
  got=$(printf '%s\n' "${COMPREPLY[@]}" | sort | paste -sd ' ')
  [ "$got" = "$*" ] || { echo "${COMP_WORDS[*]}: offers '$got', not '$*'"; failed=1; }
}

offers in -- insert insert-classic
offers --v -- --version
offers --root sh -- shows
offers --root shows show --t -- --tabs
offers show o -- one.mac
offers show --root shows o -- one.mac
offers help ren -- rename
offers diff one.mac o -- one.mac
offers check --severity w -- warning
offers check one.mac o -- one.mac
offers find clip o -- one.mac
offers set one.mac 0 1 --f -- --force
offers convert k -- key00.upk
offers copy o -- one.mac
offers paste one.mac --at '' -- end start
offers move one.mac 0-3 --t -- --to
offers insert one.mac Q -- QMF1. QMF2. QMF3. QMF4.
offers insert one.mac QMF3.ME1.KEY1.CL -- QMF3.ME1.KEY1.CLIP. QMF3.ME1.KEY1.CLIP_HIGH. QMF3.ME1.KEY1.CLIP_LOW.
offers value ME1.KEY1.CLIP.S -- ME1.KEY1.CLIP.SET
offers value QMF1.ME1.KEY1.CLIP.SET V -- VALUE
offers insert one.mac QMF1.ME1.KEY1.CLIP.SET --at end V -- VALUE=
offers insert one.mac QMF1.ME1.KEY1.CLIP.SET --at '' -- end start
offers insert-classic one.mac x --mainframe '' -- 1 2 3 4
offers dictionary --show ME2.KEY1.CLIP.I -- ME2.KEY1.CLIP.INC
offers snapshot sh -- shows
offers restore o -- one.mac
offers restore one.mac sh -- shows
offers restore one.mac shows --workplace 3 --d -- --dry-run
offers copy-macro one.mac o -- one.mac
offers list c:/programme/RV48/appli S -- 'Studio Talk'
offers list c:/programme/RV48/appli "'Evening News'" CP -- CP1 CP2 CP7
offers panel 127.0.0.1 r -- rename replace restore run
offers panel 127.0.0.1 update o -- one.mac
offers panel 127.0.0.1 s -- send snapshot
offers panel 127.0.0.1 send 1 sh -- shows
offers panel 127.0.0.1 snapshot o -- one.mac
offers panel 127.0.0.1 restore one.mac '' -- 1 2 3 4 5 6 7 8
offers panel --ftp-port 2121 127.0.0.1 get 1 7 o -- one.mac
offers panel 127.0.0.1 delete 1 7 o --
exit "$failed"
