#!/usr/bin/env bash
# Makes the pictures of the illustrated help (Help > Illustrated help) from the real
# program: runs the Windows build under Wine in a private Xvfb, once in English and once in
# French, takes screenshots of the main window, its menus, the tray icon's menu, the
# options and the collection of thumbnails (shoot.sh), then cuts the windows' elements out
# of them and pastes them with ImageMagick where the help window's hot zones expect them
# (compose.sh, zones.sh). Writes, for LANG en and fr: help_main_LANG.jpg,
# help_thumbs_LANG.jpg, help_options_LANG.jpg and help_menu_{file,edit,tools,help,tray}_LANG.jpg.
#
# Needs the Windows build, Wine, Xvfb, xdotool and ImageMagick (the tools of tests/wine).
# Run it again when one of these windows changes, and commit its output.
#
# Usage: make.sh [BIN_DIR=build/win64/bin] [OUT=assets/help]
# The screenshots stay in build/wine-artifacts/helppics/LANG/shots (MIROVANTA_WINE_ARTIFACTS
# moves them, as for the Wine checks). HELPPICS_REUSE=1 composes again from them without
# Wine; HELPPICS_DEBUG=DIR also writes each picture as PNG with its hot zones in red.
set -euo pipefail
here=$(cd "$(dirname "${BASH_SOURCE[0]}")" && pwd)
repo=$(cd "$here/../.." && pwd)
BIN=${1:-$repo/build/win64/bin}
OUT=${2:-$repo/assets/help}
[[ -f $BIN/mirovanta.exe ]] || { echo "make.sh: no mirovanta.exe in $BIN" >&2; exit 2; }
BIN=$(cd "$BIN" && pwd)
mkdir -p "$OUT"
OUT=$(cd "$OUT" && pwd)
ARTIFACTS=${MIROVANTA_WINE_ARTIFACTS:-$repo/build/wine-artifacts}

start=$SECONDS
for lang in en fr; do
    shots=$ARTIFACTS/helppics/$lang/shots
    if [[ ${HELPPICS_REUSE:-0} != 1 ]]; then
        # One Wine session at a time, each from a fresh prefix.
        bash "$here/shoot.sh" "$lang" "$BIN" "$shots"
    fi
    bash "$here/compose.sh" "$lang" "$shots" "$BIN" "$OUT" "${HELPPICS_DEBUG:-}"
done

missing=()
for lang in en fr; do
    for name in main thumbs options menu_file menu_edit menu_tools menu_help menu_tray; do
        [[ -s $OUT/help_${name}_$lang.jpg ]] || missing+=("help_${name}_$lang.jpg")
    done
done
((${#missing[@]} == 0)) || { echo "make.sh: missing ${missing[*]}" >&2; exit 1; }
echo "make.sh: 16 pictures in $OUT in $((SECONDS - start)) s"
