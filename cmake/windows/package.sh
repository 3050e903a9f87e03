#!/usr/bin/env bash
# Builds for Windows and packs that, build/windows/zelclr-VERSION-windows-x64.zip, and proves it where nothing else is:
# unpacked into a folder with a name of many letters, the tool converts through profiles, and a program is built against
# it.
set -euo pipefail
cd "$(dirname "$0")/../.."
source cmake/setup.sh

cmake/windows/libraries.sh
build windows

scratch=$(mktemp -d)
wine=$PWD/cmake/windows/wine.sh
trap '"$wine" --stop; rm -rf "$scratch"' EXIT

rm -f build/windows/*.zip
cpack --config build/windows/CPackConfig.cmake -B "$PWD/build/windows" >build/windows/cpack.log
zip=$(echo "$PWD"/build/windows/*.zip)
unpacked="$scratch/Größe 日本"
mkdir "$unpacked"
(cd "$unpacked" && cmake -E tar xf "$zip")
root=$(echo "$unpacked"/*)

same() { [[ $1 == "$2" ]] || fail "the package answers \"$1\" instead of \"$2\""; }

"$wine" --start
cd "$unpacked"
printf '#ff8000 Größe\n' >"$unpacked/日本.txt"
same "$("$wine" "$root/bin/zelclr.exe" convert '#ff8000' --to CMYK100 2>&1 </dev/null)" 'CMYK100(0,50,100,0)'
"$wine" "$root/bin/zelclr.exe" profile path >"$scratch/path" 2>&1 </dev/null
grep -q '日本.*share.zelclr' "$scratch/path" || fail "the package does not find its data: $(cat "$scratch/path")"
"$wine" "$root/bin/zelclr.exe" settings use "Europe Prepress" >/dev/null 2>&1 </dev/null || fail "settings"
"$wine" "$root/bin/zelclr.exe" report 日本.txt >"$scratch/report" 2>&1 </dev/null || (($? == 1))
grep -q 'Größe' "$scratch/report" || fail "the package does not report: $(cat "$scratch/report")"

cmake -S "$OLDPWD/tests/consumer" -B "$scratch/consumer" -G Ninja --toolchain "$OLDPWD/cmake/windows/toolchain.cmake" \
  -DZelClr_DIR="$root/lib/cmake/ZelClr" >/dev/null
cmake --build "$scratch/consumer" >/dev/null
cp "$scratch/consumer/consumer.exe" "$root/bin"
"$wine" "$root/bin/consumer.exe" </dev/null
say "$(du -h "$zip" | cut -f 1) $zip"
