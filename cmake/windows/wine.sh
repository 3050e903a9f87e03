#!/usr/bin/env bash
# Runs a program for Windows under a Wine of its own, which knows nothing of the user's and writes to build/windows-home:
# cmake/windows/wine.sh PROGRAM.exe ARGUMENT...
# cmake/windows/wine.sh --start    one server for all programs: else each starts one of its own, which takes 0.4 s
# cmake/windows/wine.sh --stop
home=${ZELCLR_WINE_HOME:-$(dirname "$(readlink -f "${BASH_SOURCE[0]}")")/../../build/windows-home}
mkdir -p "$home/wine"
home=$(readlink -f "$home")
export HOME=$home WINEPREFIX=$home/wine WINEARCH=win64 WINEDEBUG=${WINEDEBUG:--all} LC_ALL=C.UTF-8
# Without what would ask whether to install add-ons.
export WINEDLLOVERRIDES="mscoree,mshtml=${WINEDLLOVERRIDES:+;$WINEDLLOVERRIDES}"
unset DISPLAY XDG_RUNTIME_DIR XDG_DATA_HOME XDG_CONFIG_HOME LANG LANGUAGE LC_MESSAGES
case $1 in
--start) # and what runs besides, with nobody listening: it keeps open the streams of whoever starts it
  exec >/dev/null 2>&1 </dev/null
  wineserver -p
  exec wine wineboot -i
  ;;
--stop)
  wineserver -k >/dev/null 2>&1 </dev/null || true
  ;;
*)
  exec wine "$@"
  ;;
esac
