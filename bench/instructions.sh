#!/bin/bash
# Counts the instructions of the benchmarks that keep to one thread, so that a change shows on a noisy machine.
#   bench/instructions.sh [BUILD [PATTERN]]    prints `name  measured  limit  ratio`, in millions
#   bench/instructions.sh --keep BUILD         counts the rows of bench/instructions.txt anew and keeps what they take
#   bench/instructions.sh --check BUILD        fails where one takes 3 % more than is kept
# These two go with build/ci, as CI does: a group of files is inlined otherwise than each by itself, by up to 14 %.
# To count another row, write its name into the file with any number before it.
set -eu
cd "$(dirname "$0")/.."
. tools/packages.sh
install_missing valgrind
mode=table
case ${1:-} in --keep | --check) mode=${1#--} && shift && : "${1:?of which BUILD?}" ;; esac
bench=${1:-build/release}/bin/tessaly-bench
kept=bench/instructions.txt
export QT_QPA_PLATFORM=offscreen
counts=$(mktemp -d)
trap 'rm -rf "$counts"' EXIT

count() {
  valgrind --tool=callgrind --callgrind-out-file="$counts/out" --toggle-collect='tessaly::bench::countedRun*' \
    "$bench" --count "$1" "$2" >/dev/null 2>"$counts/log" || { cat "$counts/log" >&2; exit 1; }
  sed -n 's/.*Collected : //p' "$counts/log"
}

if [ $mode != table ]; then
  while IFS=$'\t' read -r _ name; do
    measured=$(count measured "$name")  # a statement of its own, so that a failed one ends the run
    printf '%s\t%s\n' "$measured" "$name"
  done <$kept >"$counts/now"
fi
case $mode in
  keep) cp "$counts/now" $kept ;;
  check)
    paste "$counts/now" $kept | awk -F'\t' '
      { change = 100 * ($1 / $3 - 1); printf "%+6.1f %%  %s\n", change, $2; if (change > 3) worse = 1 }
      END { exit worse }' || { echo "instructions: more than 3 % above $kept" >&2; exit 1; }
    ;;
  table)
    printf '%-72s %10s %10s %6s\n' name measured limit ratio
    "$bench" --counted | { grep -E "${2:-.}" || true; } | while IFS= read -r name; do
      measured=$(count measured "$name")
      limit=$(count limit "$name")
      awk -v n="$name" -v m="$measured" -v l="$limit" \
        'BEGIN { printf "%-72s %10.2f %10.2f %6.2f\n", n, m / 1e6, l / 1e6, m / l }'
    done
    ;;
esac
