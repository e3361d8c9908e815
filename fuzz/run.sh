#!/usr/bin/env bash
# Builds the fuzz targets and runs them one after the other, each until it has made RUNS inputs or SECONDS have
# passed, whichever comes first, and tells a line for each: executions, seconds, edges covered, findings.
#   fuzz/run.sh [SECONDS [RUNS [TARGET ...]]]       without arguments: 600 seconds, 1000000 runs, every target
#   TINYXML=DIR fuzz/run.sh ...                     with TinyXML's sources in DIR: the parser under the sanitizers too
# What was learnt stays in build/fuzz/learnt/TARGET and is used again; findings lie in build/fuzz/findings/TARGET.
set -euo pipefail
cd "$(dirname "$0")/.."
seconds=${1:-600}
runs=${2:-1000000}
shift $(($# < 2 ? $# : 2))
. tools/packages.sh
install_missing "${build_packages[@]}" "${fuzz_packages[@]}"

cmake --preset fuzz -DTESSALY_TINYXML_SOURCE="${TINYXML:-}" >/dev/null
cmake --build --preset fuzz >&2
if [ $# -eq 0 ]; then
  for source in fuzz/*Fuzzer.cpp; do
    set -- "$@" "$(basename "$source" Fuzzer.cpp)"
  done
fi

dictionary() {
  case $1 in
    XmlFile | MacroFile | InterfaceFile | CommandFragment) echo -dict=fuzz/dictionaries/xml.dict ;;
    JsonLine | PanelStream | EditorStream | Snapshot) echo -dict=fuzz/dictionaries/json.dict ;;
    DecodingList | SiteNames | KeyFile) echo -dict=fuzz/dictionaries/ini.dict ;;
  esac
}

# Scratch files in memory, and none left behind by a target that ended with a finding.
TMPDIR=$(mktemp -d -p /dev/shm 2>/dev/null || mktemp -d)
export TMPDIR
trap 'rm -rf "$TMPDIR"' EXIT
export UBSAN_OPTIONS=halt_on_error=1:print_stacktrace=1

failed=0
printf '%-16s %12s %8s %8s %9s\n' target executions seconds edges findings
for target in "$@"; do
  learnt=build/fuzz/learnt/$target
  findings=build/fuzz/findings/$target
  log=build/fuzz/$target.log
  mkdir -p "$learnt" "$findings"
  start=$SECONDS
  # shellcheck disable=SC2046
  "build/fuzz/bin/fuzz_$target" "$learnt" "fuzz/corpus/$target" $(dictionary "$target") -max_len=4096 -timeout=25 \
    -max_total_time="$seconds" -runs="$runs" -print_final_stats=1 -artifact_prefix="$findings/" >"$log" 2>&1 || true
  executions=$(sed -n 's/^stat::number_of_executed_units: *//p' "$log" | tail -1)
  edges=$(sed -n 's/.* cov: \([0-9]*\).*/\1/p' "$log" | tail -1)
  count=$(find "$findings" -type f | wc -l)
  [ "$count" -eq 0 ] && [ -n "$executions" ] || failed=1
  printf '%-16s %12s %8s %8s %9s\n' "$target" "${executions:-?}" $((SECONDS - start)) "${edges:-?}" "$count"
done
exit $failed
