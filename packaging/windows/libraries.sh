# Sourced by build.sh: the libraries for Windows, made from Debian's source packages and kept in a folder that is named
# after their versions. prepare_libraries sets `libraries`, prepare_toolkit `toolkit`.

launcher=$(command -v ccache || true)
triple=x86_64-w64-mingw32
sources=(tinyxml curl libzip libharu)
cache=${TESSALY_WINDOWS_CACHE:-${XDG_CACHE_HOME:-$HOME/.cache}/tessaly-windows}

# apt_source ARGUMENTS: by lists of source packages of our own, which leave the machine's alone.
apt_source() { of_sources apt-get -qq "$@"; }
of_sources() {
  local program=$1
  shift
  "$program" -o Dir::Etc::sourcelist=/dev/null -o Dir::Etc::sourceparts="$cache/apt/parts" \
    -o Dir::State::lists="$cache/apt/lists" -o Dir::Cache="$cache/apt/cache" -o APT::Sandbox::User=root "$@"
}

learn_sources() {
  mkdir -p "$cache"/apt/{parts,lists/partial,cache/archives/partial}
  local list
  for list in /etc/apt/sources.list.d/*.sources; do
    sed 's/^ *Types:.*/Types: deb-src/' "$list" >"$cache/apt/parts/$(basename "$list")"
  done
  if [ -s /etc/apt/sources.list ]; then sed -n 's/^deb /deb-src /p' /etc/apt/sources.list >"$cache/apt/parts/one.list"; fi
  apt_source update
}

# fetch PACKAGE: its source with Debian's changes in "$work/PACKAGE"; without them where the archive has lost them.
fetch() {
  local package=$1
  mkdir -p "$work/$package"
  (
    cd "$work"
    if apt_source source --download-only "$package" 2>"$package.log"; then
      rmdir "$package"
      dpkg-source --no-check -x "${package}"_*.dsc "$package" >/dev/null
    else
      apt_source source --download-only --tar-only "$package" 2>>"$package.log" || { cat "$package.log" >&2; exit 1; }
      tar -xf "${package}"_*.orig.tar.* -C "$package" --strip-components=1
    fi
  )
}

# cmake_library FOLDER OPTION...: builds and installs what has a CMakeLists.txt.
cmake_library() {
  local folder=$1
  shift
  cmake -S "$work/$folder" -B "$work/$folder-build" -G Ninja -DCMAKE_TOOLCHAIN_FILE="$here/toolchain.cmake" \
    -DTESSALY_WINDOWS_LIBRARIES="$libraries.part" -DCMAKE_BUILD_TYPE=Release -DCMAKE_INSTALL_PREFIX="$libraries.part" -DCMAKE_C_FLAGS=-w \
    ${launcher:+-DCMAKE_C_COMPILER_LAUNCHER=$launcher} \
    -DCMAKE_SHARED_LINKER_FLAGS="-static -static-libgcc" "$@" >"$work/$folder.log" &&
    ninja -C "$work/$folder-build" install >>"$work/$folder.log" || { tail -n 40 "$work/$folder.log" >&2; return 1; }
}

build_tinyxml() {
  local name
  for name in tinyxml tinyxmlparser tinyxmlerror; do
    $triple-g++-posix -O2 -DTIXML_USE_STL -c "$work/tinyxml/$name.cpp" -o "$work/$name.o"
  done
  $triple-ar rc "$libraries.part/lib/libtinyxml.a" "$work"/tinyxml{,parser,error}.o
  cp "$work/tinyxml/tinyxml.h" "$libraries.part/include"
}

# By the settings that its authors have for this system. FTP; what it shares with HTTP is not to be had without that.
build_curl() {
  local off=(-DCURL_DISABLE_LDAP) name
  for name in ALTSVC COOKIES CRYPTO_AUTH DICT DOH FILE GETOPTIONS GOPHER HSTS IMAP LDAPS MIME MQTT NETRC NTLM PARSEDATE \
    POP3 RTSP SMB SMTP SOCKETPAIR TELNET TFTP; do
    off+=("-DCURL_DISABLE_$name")
  done
  (
    cd "$work/curl/lib"
    for name in *.c v*/*.c; do echo "$name"; done | xargs -P 2 -I{} sh -c \
      '"$@" -c {} -o "$(echo {} | tr / -).o"' compile $launcher $triple-gcc-posix -O2 -w -DBUILDING_LIBCURL -DUNICODE \
      -D_UNICODE -D_WIN32_WINNT=0x0A00 "${off[@]}" -I../include -I.
    $triple-gcc-posix -shared -static -static-libgcc -s -o "$libraries.part/bin/libcurl.dll" ./*.o -lws2_32 -lcrypt32 \
      -lbcrypt -ladvapi32
  )
  cp -r "$work/curl/include/curl" "$libraries.part/include"
}

build_libzip() {
  cmake_library libzip -DBUILD_SHARED_LIBS=ON -DENABLE_COMMONCRYPTO=OFF -DENABLE_GNUTLS=OFF -DENABLE_MBEDTLS=OFF \
    -DENABLE_OPENSSL=OFF -DENABLE_WINDOWS_CRYPTO=OFF -DENABLE_BZIP2=OFF -DENABLE_LZMA=OFF -DBUILD_TOOLS=OFF \
    -DBUILD_REGRESS=OFF -DBUILD_EXAMPLES=OFF -DBUILD_DOC=OFF -DZLIB_LIBRARY=/usr/$triple/lib/libz.a \
    -DZLIB_INCLUDE_DIR=/usr/$triple/include
}

# Without pictures, which no sheet has. A sheet names the version, which Debian has changed.
build_libharu() {
  local source objects=()
  cp /usr/include/hpdf_version.h "$work/libharu/include"
  printf '#define LIBHPDF_HAVE_NOPNGLIB 1\n#define HPDF_NOPNGLIB 1\n' >"$work/libharu/include/hpdf_config.h"
  for source in "$work"/libharu/src/*.c; do
    objects+=("${source%.c}.o")
    $triple-gcc-posix -O2 -w -I"$work/libharu/include" -c "$source" -o "${source%.c}.o"
  done
  $triple-gcc-posix -shared -static-libgcc -s -Wl,--export-all-symbols -o "$libraries.part/bin/libhpdf.dll" "${objects[@]}" \
    /usr/$triple/lib/libz.a
  cp "$work"/libharu/include/*.h "$libraries.part/include"
}

# From installed packages, which have the sources.
build_headers_and_gtest() {
  cp -r /usr/include/{gtest,gmock,nlohmann,xxhash.h} "$libraries.part/include"
  local part test=/usr/src/googletest
  for part in googletest/src/gtest-all googletest/src/gtest_main googlemock/src/gmock-all; do
    $triple-g++-posix -O2 -std=c++20 -I"$libraries.part/include" -I$test/googletest -I$test/googlemock \
      -c "$test/$part.cc" -o "$work/$(basename $part).o"
  done
  $triple-ar rc "$libraries.part/lib/libgmock.a" "$work"/{gtest,gmock}-all.o
  $triple-ar rc "$libraries.part/lib/libgtest_main.a" "$work/gtest_main.o"
}

# version_of PACKAGE: of the source package that there is to be had, or of an installed one.
version_of() {
  local version
  version=$(of_sources apt-cache showsrc "$1" 2>/dev/null | sed -n 's/^Version: //p' | sort -V | tail -n 1)
  [ -n "$version" ] || version=$(dpkg-query -W -f='${Version}' "$1")
  echo "$version"
}

# The folder of the libraries, built when they are not there yet.
prepare_libraries() {
  learn_sources
  local package versions=
  for package in "${sources[@]}" libz-mingw-w64-dev libgtest-dev nlohmann-json3-dev libxxhash-dev g++-mingw-w64-x86-64-posix; do
    versions+="$package $(version_of "$package")"$'\n'
  done
  local key
  key=$( (echo "$versions" && cat "$here/toolchain.cmake" && declare -f cmake_library build_{tinyxml,curl,libzip,libharu,headers_and_gtest}) | sha256sum | cut -c 1-16)
  libraries=$cache/libraries-$key
  [ -d "$libraries" ] && return
  local began=$SECONDS
  echo "windows: building the libraries (some two minutes, once)"
  work=$(mktemp -d)
  rm -rf "$libraries.part"
  mkdir -p "$libraries.part"/{bin,lib,include}
  for package in "${sources[@]}"; do
    fetch "$package"
    "build_$package"
  done
  build_headers_and_gtest
  echo "$versions" >"$libraries.part/versions"
  $triple-strip --strip-unneeded "$libraries.part"/bin/*.dll
  mv "$libraries.part" "$libraries"
  rm -rf "$work"
  echo "windows: libraries built in $((SECONDS - began)) s: $libraries"
}

# What the window does not use. The graphics that it does not use either stay, because the part that knows the system does
# not link without.
toolkit_options() {
  local name
  for name in sql dbus vulkan openssl schannel ssl icu xml concurrent network testlib tabletevent direct2d1_1 graphicsview \
    graphicseffect gif ico jpeg system_zlib system_png system_jpeg system_pcre2 system_doubleconversion system_freetype \
    system_harfbuzz; do
    echo "-DFEATURE_$name=OFF"
  done
  echo "-DBUILD_SHARED_LIBS=OFF -DCMAKE_BUILD_TYPE=Release -DQT_BUILD_EXAMPLES=OFF -DQT_BUILD_TESTS=OFF -DINPUT_opengl=desktop"
}

# The same of the toolkit. What was cut short is taken up where it stood, by whichever checkout comes next: the folder of
# the work holds all that it needs, and has one name, so that a compiler cache finds in it what it knows.
prepare_toolkit() {
  local key
  key=$( (version_of qt6-base && cat "$here/toolchain.cmake" && toolkit_options) | sha256sum | cut -c 1-16)
  toolkit=$cache/toolkit-$key
  [ -f "$toolkit/complete" ] && return
  local began=$SECONDS
  echo "windows: building the toolkit (20 to 60 minutes on two cores, once)"
  work=$cache/toolkit.work
  if [ "$(cat "$work/key" 2>/dev/null)" != "$key" ]; then
    rm -rf "$work"
    fetch qt6-base
    cp "$here/toolchain.cmake" "$work"
    echo "$key" >"$work/key"
  fi
  export CCACHE_SLOPPINESS=pch_defines,time_macros  # of precompiled headers the contents count
  # shellcheck disable=SC2046  # words without blanks
  cmake -S "$work/qt6-base" -B "$work/build" -G Ninja -DCMAKE_TOOLCHAIN_FILE="$work/toolchain.cmake" \
    -DTESSALY_WINDOWS_TOOLKIT="$toolkit" -DCMAKE_INSTALL_PREFIX="$toolkit" \
    ${launcher:+-DCMAKE_C_COMPILER_LAUNCHER=$launcher -DCMAKE_CXX_COMPILER_LAUNCHER=$launcher} -DQT_HOST_PATH=/usr \
    -DQT_HOST_PATH_CMAKE_DIR=/usr/lib/x86_64-linux-gnu/cmake $(toolkit_options) >"$work/toolkit.log" &&
    ninja -C "$work/build" install >>"$work/toolkit.log" || { tail -n 40 "$work/toolkit.log" >&2; return 1; }
  touch "$toolkit/complete"
  rm -rf "$work"
  echo "windows: toolkit built in $((SECONDS - began)) s: $toolkit"
}
