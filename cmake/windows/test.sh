#!/usr/bin/env bash
# Builds for Windows x64 and runs the tests under Wine; arguments go to ctest: cmake/windows/test.sh -R platform
set -euo pipefail
cd "$(dirname "$0")/../.."
source cmake/setup.sh

packages build test windows
cmake/windows/libraries.sh
build windows

# Made afresh: without settings, and without the profile for RGB that Wine brings, which would stand in for ours.
home=$PWD/build/windows-home
rm -rf "$home"
# One server for all programs, started and warmed up with nobody listening: else every program starts a server of its
# own, which takes 0.4 s and keeps the streams of whoever reads from it open.
wine=cmake/windows/wine.sh
trap '"$wine" wineserver -k >/dev/null 2>&1 </dev/null || true' EXIT
"$wine" wineserver -p >/dev/null 2>&1 </dev/null
"$wine" wineboot -i >/dev/null 2>&1 </dev/null
rm -f "$home"/wine/drive_c/windows/system32/spool/drivers/color/*
ctest --preset windows "$@"
