#!/usr/bin/env bash
# Builds Tessaly and opens it on the sample site, in a private root, beside a simulated panel.
#   ./run.sh            keep the private root of the last run
#   ./run.sh --fresh    start from the untouched sample site
# Without a display the window opens on a virtual one, does one full edit and leaves a screenshot.
set -euo pipefail
cd "$(dirname "$0")"
. tools/packages.sh
install_missing "${build_packages[@]}" "${run_packages[@]}"

build=build/release
root=$PWD/build/run/site
panel_root=$PWD/build/run/panel
panel_address=127.0.0.1
ftp_port=2121

[ "${1:-}" = "--fresh" ] && rm -rf build/run
targets=(tessaly tessaly-cli tessaly-panelsim)
headless=
if [ -z "${DISPLAY:-}" ] && [ -z "${WAYLAND_DISPLAY:-}" ]; then
  headless=1
  targets+=(tessaly-walk)
fi
build_targets "${targets[@]}"

if [ ! -d "$root" ]; then
  mkdir -p "$root"
  cp -R site/c "$root/"
  "$build/bin/tessaly-cli" --root "$root" settings --rewrite --address-b "$panel_address" >/dev/null
fi
echo "sample site: $root"

"$build/bin/tessaly-panelsim" --address "$panel_address" --ftp-port "$ftp_port" --root "$panel_root" \
  --site "$root" </dev/null >build/run/panel.log 2>&1 &
panel=$!
trap 'kill "$panel" 2>/dev/null || true' EXIT
for _ in $(seq 50); do
  grep -q '^ready' build/run/panel.log && break
  kill -0 "$panel" 2>/dev/null || { echo "the simulated panel did not start:" >&2; cat build/run/panel.log >&2; break; }
  sleep 0.1
done
echo "simulated panel: $panel_address (log: build/run/panel.log)"

if [ -n "$headless" ]; then
  shot=$PWD/build/run/screenshot.png
  xvfb-run -a -s '-screen 0 1280x900x24' \
    "$build/bin/tessaly-walk" --root "$root" --ftp-port "$ftp_port" --screenshot "$shot"
  echo "screenshot: $shot"
else
  "$build/bin/tessaly" --root "$root" --ftp-port "$ftp_port"
fi
