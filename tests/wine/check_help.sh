#!/usr/bin/env bash
# Checks of the help under Wine: the tip of the day at the first start, kept away by its
# check box at the next start and brought back by the Help menu; the illustrated help in
# English and French: a toolbar button, a menu title and one of its rows in view 0, the
# thumbnails and the options views, each explained by its own text; F1's quick help and
# the news window.
# Usage: check_help.sh BIN_DIR
set -euo pipefail
here=$(cd "$(dirname "${BASH_SOURCE[0]}")" && pwd)
source "$here/lib.sh"
source "$here/program.sh"
BIN=$(cd "${1:?usage: check_help.sh BIN_DIR}" && pwd)
LANG_DIR=$(cd "$here/../../assets/lang" && pwd)

wh_init help
wh_start_xvfb 1280x1024
wh_show_picture
wh_start_wine
mv_use_prefix

TPP=15
# entry LANG N: language entry N; help LANG N: help text N; menu_help LANG M ROW.
entry() { sed -n "s/^$2 [^\"]*\"\\([^\"]*\\)\".*/\\1/p" "$LANG_DIR/$1.txt"; }
help_text() {
    awk '/^\/\/\/--- HELP --/{on=1; next} /^\/\/\/--- HELP ME/{on=0} on' "$LANG_DIR/$1.txt" |
        sed -n "$(($2 + 1))s/^\"\\(.*\\)\".*/\\1/p"
}
menu_help() {
    awk '/^\/\/\/--- HELP ME/{on=1; next} on' "$LANG_DIR/$1.txt" |
        sed -n "$(($2 * 7 + $3 + 1))s/^\"\\(.*\\)\".*/\\1/p"
}
tips_setting() {
    wh_wine reg query 'HKCU\Software\Mirovanta\Options' /v 'Show Tips at Startup' | tr -d '\r' |
        awk '/Show Tips/ {print $NF}'
}
quit_program() {
    wh_key "$MAIN" ctrl+q || return 1
    wh_wait_exit "$WH_PID_PROGRAM" 20
}
TIP=""
tip_up() { wh_find_window '^Tip of the day$' 1 && TIP=$WH_WID; }
# tip_click X Y: a click at twips X Y of the tip's client area.
tip_click() {
    wh_window_geometry "$TIP" || return 1
    wh_click root $((WH_X + $1 / TPP)) $((WH_Y + $2 / TPP))
}

# The first start greets with a tip; clearing its box writes 0 at once.
check_tip_first_start() {
    mv_tips 1
    mv_start "$BIN" || return 1
    wh_wait_for "the tip" 15 tip_up || return 1
    sleep 3
    wh_screenshot tip.png
    tip_click 400 2200 || return 1
    wh_wait_for "the setting at 0" 10 eval '[[ $(tips_setting) == 0 ]]' || return 1
    tip_click 5680 2200 || return 1
    wh_wait_window_gone "$TIP" 10 || return 1
    sleep 3
}

# The next start shows none; Help > Tip of the day shows one and turns the tips back on.
check_tip_off_then_menu() {
    quit_program || return 1
    mv_start "$BIN" || return 1
    sleep 5
    ! tip_up || { wh_reason "the tip came although turned off"; return 1; }
    WH_REASON=""
    wh_key "$MAIN" alt+h || return 1
    sleep 0.5
    _wh_xdo key t || return 1
    wh_wait_for "the tip from the menu" 15 tip_up || return 1
    [[ $(tips_setting) == 1 ]] || { wh_reason "setting $(tips_setting)"; return 1; }
    sleep 3
    wh_screenshot tip-from-menu.png
    tip_click 5680 2200 || return 1
    wh_wait_window_gone "$TIP" 10 || return 1
    sleep 3
}

# F1 shows the main window's quick help beside it; the news window says what is new.
check_side_windows() {
    wh_key "$MAIN" F1 || return 1
    wh_find_window '^Mirovanta - quick help$' 10 || return 1
    local panel=$WH_WID
    sleep 3
    wh_screenshot quick-help.png
    wh_window_geometry "$panel" || return 1
    wh_click root $((WH_X + 3300 / TPP)) $((WH_Y + 20 + 1680 / TPP)) || return 1
    wh_wait_window_gone "$panel" 10 || return 1
    sleep 3
    wh_key "$MAIN" alt+h || return 1
    sleep 0.5
    _wh_xdo key n || return 1
    wh_find_window '^News$' 10 || return 1
    local news=$WH_WID
    sleep 3
    wh_screenshot news.png
    wh_window_geometry "$news" || return 1
    wh_click root $((WH_X + 6300 / TPP)) $((WH_Y + 3650 / TPP)) || return 1
    wh_wait_window_gone "$news" 10 || return 1
    sleep 3
}

# The illustrated help in one language, run by the test flavour, which writes the text
# under the mouse into a file on each sign of the check.
SIGNS="$WINEPREFIX/drive_c/signs"
HELP=""
help_up() { wh_find_window "^$(help_text "$1" 20)\$" 1 && HELP=$WH_WID; }
# help_at X Y: the mouse at pixel X Y of the help picture.
help_at() {
    wh_window_geometry "$HELP" || return 1
    wh_mouse_move $((WH_X + 1800 / TPP + $1)) $((WH_Y + 600 / TPP + $2))
}
help_button() {
    local tops=(800 1300 1800 2600)
    wh_window_geometry "$HELP" || return 1
    wh_click root $((WH_X + 900 / TPP)) $((WH_Y + (${tops[$1]} + 210) / TPP))
}
# said N EXPECTED: sign N, then the text the program read then is EXPECTED.
said() {
    : >"$SIGNS/$1"
    wh_wait_for "the help text $1" 10 eval "[[ \$(wc -l <'$SIGNS/said.txt' 2>/dev/null || echo 0) -ge $1 ]]" || return 1
    local got
    got=$(sed -n "$1p" "$SIGNS/said.txt" | tr -d '\r')
    [[ $got == "$2" ]] || { wh_reason "sign $1: '$got', not '$2'"; return 1; }
}
run_help() {
    local lang=$1 code=$2 key=$3 script="$WH_TMP/help-$1.txt" k
    mkdir -p "$SIGNS"
    rm -f "$SIGNS"/*
    : >"$script"
    for k in 1 2 3 4 5; do
        printf 'waitfile C:\\signs\\%s\r\nhelptext C:\\signs\\said.txt\r\n' "$k" >>"$script"
    done
    printf 'wait 600000\r\n' >>"$script"
    printf '%s\r\n' "$code" >"$APPDATA/spoken.txt"
    wh_launch_driver "$BIN" "$script"
    WH_PID_PROGRAM=$WH_PID
    wh_find_window '^Mirovanta - ' 20 || return 1
    MAIN=$WH_WID
    sleep 3
    wh_key "$MAIN" "alt+$key" || return 1
    sleep 0.5
    _wh_xdo key "$(sed -n 's/.*&\(.\).*/\1/p' <<<"$(entry "$code" 036)" | tr '[:upper:]' '[:lower:]')" || return 1
    wh_wait_for "the help window" 15 help_up "$code" || return 1
    sleep 3
    wh_screenshot "help-main-$lang.png"
    # The third toolbar button, a menu title, a row of its menu.
    help_at 83 64 && said 1 "$(help_text "$code" 2)" || return 1
    help_at 25 35 && said 2 "$(help_text "$code" 75)" || return 1
    sleep 0.5
    help_at 60 $((50 + 2 * 17 + 8)) && said 3 "$(menu_help "$code" 0 2)" || return 1
    wh_screenshot "help-menu-$lang.png"
    # The thumbnails view, then the options view.
    help_button 1 || return 1
    sleep 3
    wh_screenshot "help-thumbs-$lang.png"
    help_at 70 300 && said 4 "$(help_text "$code" 23)" || return 1
    help_button 2 || return 1
    sleep 3
    wh_screenshot "help-options-$lang.png"
    help_at 620 140 && said 5 "$(help_text "$code" 62)" || return 1
    help_button 3 || return 1
    wh_wait_window_gone "$HELP" 10 || return 1
    sleep 3
    kill "$WH_PID_PROGRAM" 2>/dev/null || true
    wh_wait_exit "$WH_PID_PROGRAM" 20 || true
}
check_help_english() {
    quit_program || return 1
    run_help en ConstPRJA h
}
check_help_french() {
    kill "$WH_PID_PROGRAM" 2>/dev/null || true
    wh_wait_exit "$WH_PID_PROGRAM" 20 || true
    WH_REASON=""
    run_help fr ConstPRJF a
}

wh_check "the tip greets the first start; its box turns it off" check_tip_first_start
wh_check "no tip at the next start; Help > Tip of the day brings it back" check_tip_off_then_menu
wh_check "F1's quick help and the news window" check_side_windows
wh_check "the illustrated help in English" check_help_english
wh_check "the illustrated help in French" check_help_french
wh_finish
