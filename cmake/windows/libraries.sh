#!/usr/bin/env bash
# Cross-builds the third-party libraries for Windows from Debian's sources, of the versions that the Linux build uses
# where the archive has them, and links build/windows-libraries to them. They stay in a cache, which is keyed by all that
# they are made from: it costs some minutes the first time and nothing after.
set -euo pipefail
cd "$(dirname "$0")/../.."
source cmake/setup.sh

toolchain=$PWD/cmake/windows/toolchain.cmake
log=$PWD/build/windows-libraries.log

# What stands in files only, and comes from the packages of the Linux build.
headers=(libcli11-dev nlohmann-json3-dev libutfcpp-dev libz-mingw-w64-dev)

# Source packages, and the packages of the Linux build that tell the wanted version.
declare -A development=(
  [benchmark]=libbenchmark-dev [googletest]=libgtest-dev [highway]=libhwy-dev [lcms2]=liblcms2-dev
  [libjpeg-turbo]=libjpeg62-turbo-dev [libpng1.6]=libpng-dev [libxml2]=libxml2-dev [libzip]=libzip-dev
  [tiff]=libtiff-dev
)

# How CMake is told to make each of them: a library, and nothing that a colour library has no use for.
declare -A options=(
  [benchmark]="-DGIT_VERSION=v0 -DBENCHMARK_ENABLE_TESTING=OFF"
  [googletest]="-DBUILD_GMOCK=ON"
  [highway]="-DBUILD_TESTING=OFF -DHWY_ENABLE_CONTRIB=OFF -DHWY_ENABLE_EXAMPLES=OFF"
  [libjpeg-turbo]="-DENABLE_SHARED=OFF -DWITH_TURBOJPEG=OFF"
  [libpng1.6]="-DPNG_SHARED=OFF -DPNG_TESTS=OFF -DPNG_EXECUTABLES=OFF"
  [libxml2]="-DLIBXML2_WITH_C14N=OFF -DLIBXML2_WITH_CATALOG=OFF -DLIBXML2_WITH_DEBUG=OFF -DLIBXML2_WITH_DOCB=OFF
    -DLIBXML2_WITH_FTP=OFF -DLIBXML2_WITH_HTML=OFF -DLIBXML2_WITH_HTTP=OFF -DLIBXML2_WITH_ICONV=OFF
    -DLIBXML2_WITH_ICU=OFF -DLIBXML2_WITH_ISO8859X=ON -DLIBXML2_WITH_LEGACY=OFF -DLIBXML2_WITH_LZMA=OFF
    -DLIBXML2_WITH_MEM_DEBUG=OFF -DLIBXML2_WITH_MODULES=OFF -DLIBXML2_WITH_OUTPUT=ON -DLIBXML2_WITH_PATTERN=ON
    -DLIBXML2_WITH_PROGRAMS=OFF -DLIBXML2_WITH_PUSH=ON -DLIBXML2_WITH_PYTHON=OFF -DLIBXML2_WITH_READER=ON
    -DLIBXML2_WITH_REGEXPS=ON -DLIBXML2_WITH_RUN_DEBUG=OFF -DLIBXML2_WITH_SAX1=ON -DLIBXML2_WITH_SCHEMAS=ON
    -DLIBXML2_WITH_SCHEMATRON=OFF -DLIBXML2_WITH_TESTS=OFF -DLIBXML2_WITH_THREADS=ON
    -DLIBXML2_WITH_THREAD_ALLOC=OFF -DLIBXML2_WITH_TREE=ON -DLIBXML2_WITH_VALID=ON -DLIBXML2_WITH_WRITER=ON
    -DLIBXML2_WITH_XINCLUDE=OFF -DLIBXML2_WITH_XPATH=ON -DLIBXML2_WITH_XPTR=OFF -DLIBXML2_WITH_ZLIB=OFF"
  [libzip]="-DBUILD_TOOLS=OFF -DBUILD_REGRESS=OFF -DBUILD_EXAMPLES=OFF -DBUILD_DOC=OFF -DENABLE_BZIP2=OFF
    -DENABLE_LZMA=OFF -DENABLE_OPENSSL=OFF -DENABLE_GNUTLS=OFF -DENABLE_MBEDTLS=OFF -DENABLE_WINDOWS_CRYPTO=OFF"
  [tiff]="-Dtiff-tools=OFF -Dtiff-tests=OFF -Dtiff-contrib=OFF -Dtiff-docs=OFF -Dcxx=OFF -Djbig=OFF -Dlerc=OFF
    -Dlibdeflate=OFF -Dlzma=OFF -Dold-jpeg=OFF -Dwebp=OFF -Dzstd=OFF"
)
in_order=(highway googletest benchmark libxml2 libzip libjpeg-turbo libpng1.6 tiff) # tiff needs libjpeg-turbo

# Another of these makes other libraries.
key() {
  {
    cat cmake/windows/libraries.sh "$toolchain"
    dpkg-query --show g++-mingw-w64-x86-64-posix mingw-w64-x86-64-dev "${headers[@]}" "${development[@]}"
  } | sha256sum | cut -c 1-16
}

# A list of our own where the machine has none: the machine's lists of its distribution, for sources.
list_sources() {
  [[ -z $(apt-get indextargets --format '$(SITE)' 'Created-By: Sources') ]] || return 0
  local file text folder=/etc/apt/sources.list.d
  say "Adding a list of source packages to $folder"
  for file in $folder/{debian,ubuntu}.sources; do
    [[ ! -f $file ]] || text=$(sed 's/^Types:.*/Types: deb-src/' "$file")
    [[ -z ${text:-} ]] || { write_as_root $folder/zelclr-sources.sources <<<"$text"; text=""; }
  done
  file=/etc/apt/sources.list
  text=$(sed -n 's/^deb /deb-src /p' "$file" 2>/dev/null || true)
  [[ -z $text ]] || write_as_root $folder/zelclr-sources.list <<<"$text"
  "${as_root[@]}" apt-get -qy -o DPkg::Lock::Timeout=300 update
}
write_as_root() { "${as_root[@]}" tee "$1" >/dev/null; }

# fetch SOURCE: unpacks it, with Debian's patches, as the folder SOURCE. A version that was replaced for its security may
# be gone from the archive while the lists still name it, so older ones are tried.
fetch() {
  local name=$1 version versions
  [[ ! -d $name ]] || return 0
  mapfile -t versions < <(
    dpkg-query --show --showformat '${source:Version}\n' "${development[$name]}"
    apt-cache showsrc --only-source "$name" | sed -n 's/^Version: //p' | sort -Vr
  )
  for version in "${versions[@]}"; do
    apt-get -qy -o APT::Sandbox::User=root --download-only source "$name=$version" || continue
    dpkg-source --no-check --extract "${name}_${version#*:}.dsc" "$name" && echo "$name $version" >>"$prefix/versions" &&
      return 0
  done
  return 1
}

make_with_cmake() {
  local name=$1 choice
  read -ra choice <<<"${options[$name]//$'\n'/ }"
  cmake -S "$name" -B "$name/made" -G Ninja --toolchain "$toolchain" -DCMAKE_BUILD_TYPE=Release \
    -DCMAKE_C_COMPILER_LAUNCHER=ccache -DCMAKE_CXX_COMPILER_LAUNCHER=ccache -DBUILD_SHARED_LIBS=OFF \
    -DCMAKE_POSITION_INDEPENDENT_CODE=ON -DCMAKE_INSTALL_PREFIX="$prefix" \
    -DCMAKE_POLICY_DEFAULT_CMP0074=NEW "${choice[@]}" &&
    cmake --build "$name/made" &&
    cmake --install "$name/made"
}

# The library is loaded at run time by exactly this name; the import library is for tests that compare with it.
make_lcms2() {
  x86_64-w64-mingw32-gcc-posix -O2 -DNDEBUG -DCMS_DLL -DCMS_DLL_BUILD -Ilcms2/include -Ilcms2/src \
    -static -shared -s lcms2/src/*.c -o "$prefix/bin/lcms2.dll" \
    -Wl,--out-implib,"$prefix/lib/liblcms2.dll.a" || return 1
  cp lcms2/include/*.h "$prefix/include"
  cat >"$prefix/lib/pkgconfig/lcms2.pc" <<END
prefix=$prefix
Name: lcms2
Description: Little CMS
Version: 2
Cflags: -I\${prefix}/include -DCMS_DLL
Libs: -L\${prefix}/lib -llcms2
END
}

copy_headers() {
  local package file
  for package in "${headers[@]}"; do
    for file in $(dpkg-query --listfiles "$package"); do
      case $file in
      /usr/include/* | /usr/share/cmake/*) target=$prefix${file#/usr} ;;
      /usr/x86_64-w64-mingw32/lib/libz.a | /usr/x86_64-w64-mingw32/include/*) target=$prefix${file#/usr/x86_64-w64-mingw32} ;;
      *) continue ;;
      esac
      [[ -d $file ]] || install -D -m 644 "$file" "$target"
    done
  done
  cat >"$prefix/lib/pkgconfig/zlib.pc" <<END
prefix=$prefix
Name: zlib
Description: zlib
Version: 1.2.13
Cflags: -I\${prefix}/include
Libs: -L\${prefix}/lib -lz
END
}

make_all() {
  local name
  mkdir -p "$prefix"/{bin,include,lib/pkgconfig,share/licences}
  copy_headers
  for name in lcms2 "${in_order[@]}"; do
    echo "== $name"
    fetch "$name" || return 1
    if [[ $name == lcms2 ]]; then make_lcms2; else make_with_cmake "$name"; fi || return 1
    cp "$name/debian/copyright" "$prefix/share/licences/$name.txt"
  done
}

packages build test windows
mkdir -p build
cache=${XDG_CACHE_HOME:-$HOME/.cache}/zelclr-windows
made=$cache/$(key)
if [[ ! -e $made/complete ]]; then
  say "Building the third-party libraries for Windows (into $cache)"
  rm -rf "$made"
  work=$(mktemp -d)
  trap 'rm -rf "$work"' EXIT
  export prefix=$made ZELCLR_WINDOWS_LIBRARIES=$made
  as_root=(env)
  ((EUID == 0)) || as_root=(sudo)
  # Nothing in here ends at a failure by itself: that is so of whatever stands before ||.
  { list_sources && cd "$work" && make_all; } 2>&1 | follow "$log" || {
    tail -n 40 "$log" >&2
    fail "cannot build the third-party libraries; the whole output is in $log"
  }
  touch "$made/complete"
  find "$cache" -mindepth 1 -maxdepth 1 ! -path "$made" -exec rm -rf {} +
fi
ln -sfn "$made" build/windows-libraries
