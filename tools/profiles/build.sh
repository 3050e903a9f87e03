#!/usr/bin/env bash
# Builds data/color/profiles/, the profiles that ship. Run by hand, where a number below or in the sources has changed:
#
#   tools/profiles/build.sh             all of them, about half an hour
#   tools/profiles/build.sh calculated  only those that make_profiles calculates, half a minute
#   tools/profiles/build.sh NAME        only the press of that name: USWebCoatedSWOP
#
# Needs Debian's argyll, icc-profiles-free, liblcms2-dev, g++ and pkgconf; Debian 12's give the bytes that ship.
set -euo pipefail
cd "$(dirname "$0")/../.."

readonly measurements=/usr/share/color/icc profiles=data/color/profiles
readonly srgb="$profiles/sRGB_IEC61966-2-1_no_black_scaling.icc"

# Name of the file | measurements | total ink, most black in % | description | source, as the data ask to be named
# Argyll's tables go beyond the total by up to 2.5 % on uncoated paper, so those two ask for less than 300 and 260.
readonly presses=(
  "USWebCoatedSWOP|TR003|300|95|US Web Coated SWOP (TR003)|ANSI CGATS/SWOP TR 003-2007"
  "ISO Coated FOGRA39|FOGRA39L|330|95|ISO Coated (FOGRA39)|FOGRA39L, www.fogra.org, zlib licence"
  "ISO Uncoated FOGRA29|FOGRA29L|294|98|ISO Uncoated (FOGRA29)|FOGRA29L, www.fogra.org, zlib licence"
  "Newsprint SNAP TR002|TR002|253|98|Newsprint SNAP (TR002)|ANSI CGATS/SNAP TR 002-2007"
  "GRACoL Coated TR006|TR006|320|95|GRACoL Coated (TR006)|ANSI CGATS/GRACoL TR 006-2007"
)

scratch=$(mktemp -d)
trap 'rm -rf "$scratch"' EXIT

# Absolute colours by scaling XYZ, as the ICC's version 2 asks of a press; Argyll would else turn the paper's white.
export ARGYLL_CREATE_WRONG_VON_KRIES_OUTPUT_CLASS_REL_WP=1

# Black begins in the light tones and stays below its share until the dark ones: skin and light grays keep their colour,
# and the shadows their neutrality. Perceptual and saturation map sRGB on a desk's screen to a print in a room.
press() {
  local name data ink black description source
  IFS='|' read -r name data ink black description source <<<"$1"
  cp "$measurements/$data.ti3" "$scratch/$data.ti3"
  colprof -qh -nc -l "$ink" -L "$black" -k p 0 0.2 1 1 0.4 -S "$srgb" -cmt -dpp \
    -D "$description" -C "Public domain (CC0 1.0). Characterization data: $source" \
    -O "$scratch/$name.icc" "$scratch/$data" >"$scratch/$data.log" || {
    cat "$scratch/$data.log" >&2
    exit 1
  }
  "$scratch/make_profiles" stamp "$scratch/$name.icc"
  install -m 644 "$scratch/$name.icc" "$profiles/$name.icc.new"
  mv "$profiles/$name.icc.new" "$profiles/$name.icc"
  echo "$name.icc"
}

mkdir -p "$profiles"
read -ra lcms < <(pkg-config --cflags --libs lcms2)
g++ -std=c++20 -O2 -ffp-contract=off -Wall -Wextra -I. tools/profiles/*.cpp -o "$scratch/make_profiles" "${lcms[@]}"

wanted=${1:-all}
built=
if [[ $wanted == all || $wanted == calculated ]]; then
  "$scratch/make_profiles" "$profiles"
  built=yes
fi
for row in "${presses[@]}"; do
  if [[ $wanted == all || $wanted == "${row%%|*}" ]]; then
    press "$row"
    built=yes
  fi
done
[[ -n $built ]] || {
  echo "$0: there is no press $wanted" >&2
  exit 2
}
