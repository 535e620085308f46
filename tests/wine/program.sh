# shellcheck shell=bash
# What the checks know of the program: where it keeps its files in the prefix, the menu
# bar's height under Wine and where each toolbar button stands. Source after lib.sh; MAIN
# holds the main window.

MENU_H=19 # Wine's menu bar: the client area starts below it

# mv_button_x N: left edge in pixels of toolbar button N, from the toolbar's order and
# gaps (twips).
mv_button_x() {
    local order=(0 19 1 2 11 12 13 3 9 10 4 5 6 7 8 16 17 15 14 18)
    local gaps=(0 20 20 20 60 20 20 70 20 20 60 20 20 20 70 20 20 60 20 20)
    local left=60 k
    for k in "${!order[@]}"; do
        ((k > 0)) && left=$((left + 480 + gaps[k]))
        if ((order[k] == $1)); then echo $((left / 15)); return; fi
    done
}

# mv_click_button N: clicks toolbar button N of the main window.
mv_click_button() { wh_click "$MAIN" $(($(mv_button_x "$1") + 16)) $((MENU_H + 16)); }

# mv_use_prefix: sets APPDATA, the program's folder in the prefix made by wh_start_wine.
mv_use_prefix() { APPDATA="$WINEPREFIX/drive_c/users/$(id -un)/AppData/Roaming/Mirovanta"; }

# mv_choose_english: the language is chosen already, so the chooser does not come up.
mv_choose_english() { mkdir -p "$APPDATA" && printf 'ConstPRJA\r\n' >"$APPDATA/spoken.txt"; }

# temp_files: the program's temporary captures, sorted; has_temp_file: true when any.
temp_files() { find "$APPDATA" -name 'Captprov_*.bmp' 2>/dev/null | sort; }
has_temp_file() { [ -n "$(temp_files)" ]; }
