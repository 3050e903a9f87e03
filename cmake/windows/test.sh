#!/usr/bin/env bash
# Builds for Windows x64 and runs the tests under Wine; arguments go to ctest: cmake/windows/test.sh -R platform
set -euo pipefail
cd "$(dirname "$0")/../.."
source cmake/setup.sh

cmake/windows/libraries.sh
build windows

# Made afresh: without settings, and without the profile for RGB that Wine brings, which would stand in for ours.
home=$PWD/build/windows-home
rm -rf "$home"
trap 'cmake/windows/wine.sh --stop' EXIT
cmake/windows/wine.sh --start
rm -f "$home"/wine/drive_c/windows/system32/spool/drivers/color/*
ctest --preset windows "$@"
