#!/usr/bin/env bash
# Fails unless each given program has what cmake/Hardening.cmake asks for.
set -euo pipefail
failed=0

needs() {  # program, what, pattern, readelf options
  readelf -W "${@:4}" "$1" | grep -E "$3" >/dev/null || { echo "$1: no $2"; failed=1; }
}

for program in "$@"; do
  needs "$program" "position independent code" 'Type:.*DYN' -h
  needs "$program" "binding at the start" 'Flags:.*NOW' -d
  needs "$program" "tables that are read-only after the start" 'GNU_RELRO' -l
  needs "$program" "stack without code" 'GNU_STACK.* RW ' -l
  needs "$program" "guarded return addresses" '__stack_chk_fail' -s
  needs "$program" "checked library calls" '__(v?snprintf|memcpy|read|v?fprintf|printf)_chk' -s
done
exit $failed
