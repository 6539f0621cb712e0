# shellcheck shell=bash
# Sourced: the environment in which this project's Windows programs run on Linux.
# KXOVA_PREFIX names another prefix than the one that setup.sh makes.
kxova_root=$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)
export WINEDLLPATH=$kxova_root/build/wine/modules/lib/wine
export WINEPREFIX=${KXOVA_PREFIX:-$kxova_root/build/wine/prefix}
export WINEDEBUG=${WINEDEBUG:--all}
export WINEARCH=win64
export KXOVA_LAUNCH=$kxova_root/build/wine/launch.exe
# A program that crashes ends; Wine's debugger would hold it until somebody comes.
export WINEDLLOVERRIDES=${WINEDLLOVERRIDES:-winedbg.exe=d}
