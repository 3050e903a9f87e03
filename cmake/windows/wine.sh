#!/usr/bin/env bash
# Runs a program for Windows under a Wine of its own, which knows nothing of the user's and writes to build/windows-home:
# cmake/windows/wine.sh PROGRAM.exe ARGUMENT...
# cmake/windows/wine.sh wineserver OPTION
home=${ZELCLR_WINE_HOME:-$(dirname "$(readlink -f "${BASH_SOURCE[0]}")")/../../build/windows-home}
mkdir -p "$home/wine"
home=$(readlink -f "$home")
export HOME=$home WINEPREFIX=$home/wine WINEARCH=win64 WINEDEBUG=${WINEDEBUG:--all} LC_ALL=C.UTF-8
# Without what would ask whether to install add-ons.
export WINEDLLOVERRIDES="mscoree,mshtml=${WINEDLLOVERRIDES:+;$WINEDLLOVERRIDES}"
unset DISPLAY XDG_RUNTIME_DIR XDG_DATA_HOME XDG_CONFIG_HOME LANG LANGUAGE LC_MESSAGES
if [[ $1 == wineserver ]]; then
  exec "$@"
fi
exec wine "$@"
