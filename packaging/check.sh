#!/usr/bin/env bash
# Builds the Debian package and proves it on this machine, as root or with sudo: checked, installed, its three
# programs run, removed, and nothing left of it. Arguments: none. The package stays in build/package.
set -euo pipefail
cd "$(dirname "$0")/.."
exec 9</usr/bin/dpkg  # one check at a time on a machine; a lock needs no file of its own
flock 9
. tools/packages.sh
install_missing "${build_packages[@]}" "${run_packages[@]}" "${package_check_packages[@]}"

as_root=()
[ "$(id -u)" -eq 0 ] || as_root=(sudo)
build=build/release
output=$PWD/build/package
id=org.tessaly.Tessaly
scratch=$(mktemp -d)
panel=
installed=
end() {
  [ -z "$panel" ] || kill "$panel" 2>/dev/null || true
  [ -z "$installed" ] || "${as_root[@]}" dpkg --purge tessaly >/dev/null || true
  rm -rf "$scratch"
}
trap end EXIT
fail() { echo "packaging: $*" >&2; exit 1; }

if dpkg-query -W tessaly >/dev/null 2>&1; then fail "the package is installed already; remove it first"; fi

echo "== descriptions"
desktop-file-validate packaging/desktop/$id.desktop
appstreamcli validate --no-net packaging/desktop/$id.metainfo.xml
xmllint --noout packaging/desktop/*.xml resources/icons/*.svg
flatpak-builder --show-manifest packaging/flatpak/$id.yml >/dev/null

echo "== package"
[ -f $build/build.ninja ] || cmake --preset release >/dev/null
rm -rf "$output"
(cd $build && cpack -G DEB -B "$output" >"$scratch/cpack.log") || { cat "$scratch/cpack.log"; exit 1; }
rm -rf "$output/_CPack_Packages"
package=$(echo "$output"/*.deb)
lintian --fail-on error,warning "$package" 2> >(grep -v 'root privileges' >&2)

echo "== installed"
"${as_root[@]}" env DEBIAN_FRONTEND=noninteractive apt-get install -y -qq --no-install-recommends "$package" \
  >"$scratch/apt.log" 2>&1 || { cat "$scratch/apt.log"; exit 1; }
installed=yes
dpkg -L tessaly | sort >"$scratch/files"
dpkg --verify tessaly

export HOME=$scratch/home
unset TESSALY_ROOT XDG_DATA_HOME XDG_CONFIG_HOME
mkdir "$HOME"
site=$scratch/site
cp -r /usr/share/tessaly/site "$site"

for program in tessaly tessaly-cli tessaly-panelsim; do
  [ "$(command -v $program)" = /usr/bin/$program ] || fail "$program is not the installed one"
  QT_QPA_PLATFORM=offscreen $program --version
done
tessaly-cli --root /usr/share/tessaly/site dictionary

tessaly-panelsim --site "$site" --root "$scratch/panel" --control-port 0 --ftp-port 0 </dev/null >"$scratch/panel.log" 2>&1 9>&- &
panel=$!
timeout 30 sh -c "until grep -q ^ready '$scratch/panel.log'; do sleep 0.1; done" ||
  fail "the simulated panel is not ready: $(cat "$scratch/panel.log")"
read -r _ _ control _ ftp _ < <(grep ^ready "$scratch/panel.log")
tessaly-cli panel 127.0.0.1 list 1 --control-port "${control##*:}" --ftp-port "${ftp##*:}" >"$scratch/macros"
grep -q '^000 - ' "$scratch/macros" || fail "the simulated panel lists no macros"

cat >"$scratch/window" <<'SH'
tessaly --root "$1" &
timeout 60 sh -c 'until xwininfo -root -tree | grep -q "(\"tessaly\" "; do sleep 0.1; done'
seen=$?
kill $!
wait $! 2>/dev/null
exit $seen
SH
QT_QPA_PLATFORM=xcb xvfb-run -a sh "$scratch/window" "$site" || fail "the window does not come up"

echo "== file types"
kind() { gio info -a standard::content-type "$1" | sed -n 's/.*content-type: //p'; }
macro=$(find "$site" -name macro000.mac | head -n 1)
keys=$(find "$site" -name '*.upk' | head -n 1)
[ "$(kind "$macro")" = application/x-tessaly-macro ] || fail "a macro is $(kind "$macro")"
[ "$(kind "$keys")" = application/x-tessaly-keys ] || fail "a key file is $(kind "$keys")"
# Beside a program with another meaning of the ending, each keeps its own files.
other=$scratch/share/mime
mkdir -p "$other/packages"
cat >"$other/packages/other.xml" <<'XML'
<mime-info xmlns="http://www.freedesktop.org/standards/shared-mime-info">
  <mime-type type="text/x-other"><comment>other</comment><glob pattern="*.mac"/></mime-type>
</mime-info>
XML
update-mime-database "$other" >/dev/null 2>&1
echo 'f(x) := x^2;' >"$scratch/other.mac"
export XDG_DATA_HOME=$scratch/share
[ "$(kind "$scratch/other.mac")" = text/x-other ] || fail "another program's .mac is $(kind "$scratch/other.mac")"
[ "$(kind "$macro")" = application/x-tessaly-macro ] || fail "a macro beside another program is $(kind "$macro")"

echo "== removed"
"${as_root[@]}" env DEBIAN_FRONTEND=noninteractive apt-get purge -y -qq tessaly >"$scratch/apt.log" 2>&1 ||
  { cat "$scratch/apt.log"; exit 1; }
installed=
remaining=()
while read -r path; do
  [ ! -e "$path" ] || remaining+=("$path")
done <"$scratch/files"
# Folders that other packages share may stay.
left=$(dpkg-query -S "${remaining[@]}" 2>&1 >/dev/null || true)
[ -z "$left" ] || fail "left behind: $left"
if grep -rq tessaly /usr/share/mime/globs2 /var/lib/dpkg/status; then fail "the system still knows of the package"; fi
echo "package: $package"
