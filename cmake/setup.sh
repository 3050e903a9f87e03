#!/usr/bin/env bash
# What run, test and .ci/run share. They source it from the project's root; called by hand, it installs packages:
# cmake/setup.sh build test ci browser windows benchmark
# Progress goes to stderr. Whatever cannot go on ends the script with status 4 and one line that says why.

declare -A package_groups=(
  [build]="g++ cmake ninja-build ccache pkgconf libutfcpp-dev libhwy-dev libcli11-dev nlohmann-json3-dev liblcms2-dev libxml2-dev libzip-dev libpng-dev libjpeg-dev libtiff-dev"
  [test]="libgtest-dev libgmock-dev librapidcheck-dev"
  [ci]="clang-14 libclang-rt-14-dev llvm-14 clang-format-14"
  [browser]="chromium python3"
  [windows]="g++-mingw-w64-x86-64-posix libz-mingw-w64-dev dpkg-dev nasm wine64 wine zip unzip"
  [benchmark]="libbenchmark-dev qtbase5-dev"
)

say() { printf '%s\n' "$*" >&2; }
fail() {
  say "$0: $*"
  exit 4
}

# follow LOG: copies stdin to LOG and shows its newest line: in place on a terminal, every ten seconds elsewhere.
follow() {
  local line next=$((SECONDS + 10))
  while IFS= read -r line || [[ -n $line ]]; do
    printf '%s\n' "$line" >&3
    if [[ -t 2 ]]; then
      printf '\r\e[K%.79s' "$line" >&2
    elif ((SECONDS >= next)); then
      say "  $line"
      next=$((SECONDS + 10))
    fi
  done 3>"$1"
  [[ ! -t 2 ]] || printf '\r\e[K' >&2
}

# packages GROUP...: installs what is missing of these groups.
packages() {
  local group name names wanted=() missing=() groups="$*" installed
  for group; do
    read -ra names <<<"${package_groups[$group]}"
    wanted+=("${names[@]}")
  done
  installed=$(dpkg-query --show --showformat '${db:Status-Status} ${Package}\n' "${wanted[@]}" 2>/dev/null) || true
  for name in "${wanted[@]}"; do
    grep -qxF "installed $name" <<<"$installed" || missing+=("$name")
  done
  ((${#missing[@]} == 0)) || install_packages "${groups// /, }" "${missing[@]}"

  printf '%s\n' 3.25 "$(cmake --version | sed -n '1s/.* //p')" | sort -CV ||
    fail "CMake 3.25 or newer is needed, and $(command -v cmake) is older"
  printf '%s\n' 12 "$(g++ -dumpfullversion)" | sort -CV ||
    fail "g++ 12 or newer is needed, and $(command -v g++) is older"
}

first_error() { sed -n '/^E: /{s///p;q}' "$1"; }

# install_packages WHY NAME...
install_packages() {
  local why=$1 log=build/packages.log trouble=""
  shift
  local apt=(env DEBIAN_FRONTEND=noninteractive apt-get -qy -o DPkg::Lock::Timeout=300 -o Acquire::Retries=3)
  command -v apt-get >/dev/null || fail "apt is needed (Debian 12, Ubuntu 24.04) to install $*"
  if ((EUID != 0)); then
    sudo true 2>/dev/null || fail "root or sudo is needed to install $*"
    apt=(sudo "${apt[@]}")
  fi

  say "Installing through apt, for $why: $*"
  mkdir -p build
  # The lists may be fresh enough although a server did not answer, so only the installation decides.
  "${apt[@]}" -o APT::Update::Error-Mode=any update </dev/null 2>&1 | follow "$log" || trouble=$(first_error "$log")
  "${apt[@]}" install --no-install-recommends "$@" </dev/null 2>&1 | follow "$log" ||
    fail "cannot install the packages: ${trouble:-$(first_error "$log")} (more in $log)"
}

# build PRESET [TARGET]: configures where that was not done since the presets changed, then builds.
build() {
  local preset=$1 log=build/$1.log
  say "Building ${2:-everything} (preset $preset)"
  mkdir -p build
  {
    { [[ build/$preset/build.ninja -nt CMakePresets.json ]] || cmake --preset "$preset"; } &&
      cmake --build --preset "$preset" ${2:+--target "$2"}
  } 2>&1 | follow "$log" || {
    tail -n 40 "$log" >&2
    fail "the build of preset $preset failed; its whole output is in $log"
  }
}

if [[ ${BASH_SOURCE[0]} == "$0" ]]; then
  set -euo pipefail
  cd "$(dirname "$0")/.."
  packages "$@"
fi
