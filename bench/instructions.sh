#!/bin/bash
# Counts the instructions of the benchmarks that keep to one thread, once a side, so that a change shows on a noisy
# machine: bench/instructions.sh [BUILD_FOLDER] [PATTERN]. Prints `name  measured  limit  ratio`, in millions.
set -eu
bench=${1:-build/release}/bin/tessaly-bench
export QT_QPA_PLATFORM=offscreen
counts=$(mktemp -d)
trap 'rm -rf "$counts"' EXIT

count() {
  valgrind --tool=callgrind --callgrind-out-file="$counts/out" --toggle-collect='tessaly::bench::countedRun*' \
    "$bench" --count "$1" "$2" >/dev/null 2>"$counts/log" || { cat "$counts/log" >&2; exit 1; }
  sed -n 's/.*Collected : //p' "$counts/log"
}

printf '%-72s %10s %10s %6s\n' name measured limit ratio
"$bench" --counted | { grep -E "${2:-.}" || true; } | while IFS= read -r name; do
  measured=$(count measured "$name")
  limit=$(count limit "$name")
  awk -v n="$name" -v m="$measured" -v l="$limit" \
    'BEGIN { printf "%-72s %10.2f %10.2f %6.2f\n", n, m / 1e6, l / 1e6, m / l }'
done
