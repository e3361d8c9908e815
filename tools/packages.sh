# Sourced by the scripts: installs the Debian packages that are missing, and builds what a script needs.

# Of packaging/windows/build.sh; without them everything else is built as ever.
windows_packages=(g++-mingw-w64-x86-64-posix libz-mingw-w64-dev wine wine64 nsis dpkg-dev libgtest-dev libgmock-dev
  nlohmann-json3-dev libxxhash-dev libhpdf-dev)
build_packages=(g++ cmake ninja-build ccache pkg-config git qt6-base-dev qt6-l10n-tools qt6-tools-dev
  qt6-tools-dev-tools qt6-translations-l10n libgl-dev libtinyxml-dev
  libcurl4-openssl-dev libssl-dev libzip-dev libhpdf-dev libxxhash-dev
  nlohmann-json3-dev curl libgtest-dev libgmock-dev libbenchmark-dev)
run_packages=(python3 python3-pyftpdlib python3-jsonschema jq poppler-utils fonts-dejavu-core qt6-qpa-plugins xvfb xauth)
check_packages=(clang-format-14 clang lld libclang-rt-14-dev clang-tidy cppcheck openbox xdotool imagemagick python3-pyatspi at-spi2-core dbus-daemon
  strace)
# Of packaging/check.sh.
package_check_packages=(lintian desktop-file-utils appstream shared-mime-info libxml2-utils libglib2.0-bin
  x11-utils flatpak-builder)
fuzz_packages=(clang libclang-rt-14-dev llvm)  # the latter for the names of functions in a finding

install_missing() {
  local missing=()
  local package
  for package in "$@"; do
    dpkg-query -W -f='${Status}' "$package" 2>/dev/null | grep -q 'ok installed' || missing+=("$package")
  done
  [ ${#missing[@]} -eq 0 ] && return 0
  echo "installing: ${missing[*]}"
  local as_root=()
  if [ "$(id -u)" -ne 0 ]; then
    command -v sudo >/dev/null || { echo "need root or sudo to install: ${missing[*]}" >&2; return 1; }
    as_root=(sudo)
  fi
  "${as_root[@]}" env DEBIAN_FRONTEND=noninteractive apt-get update -qq
  "${as_root[@]}" env DEBIAN_FRONTEND=noninteractive apt-get install -y -qq --no-install-recommends "${missing[@]}"
}

# build_targets TARGET...: in build/release, whatever has or has not been built there before.
build_targets() {
  [ -f build/release/build.ninja ] || cmake --preset release >/dev/null
  cmake --build build/release --target "$@"
}
