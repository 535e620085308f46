#!/usr/bin/env bash
# Checks of the options dialog under Wine: opened from the toolbar with its controls from
# params.txt, a new zone hotkey confirmed and used, equal keys refused, the save folder
# chosen by browsing and used by save-all, Silence, and the dialog in French.
# Usage: check_options.sh BIN_DIR
set -euo pipefail
here=$(cd "$(dirname "${BASH_SOURCE[0]}")" && pwd)
source "$here/lib.sh"
source "$here/program.sh"
BIN=$(cd "${1:?usage: check_options.sh BIN_DIR}" && pwd)

wh_init options
wh_start_xvfb 1280x1024
wh_show_picture
wh_start_wine
mv_use_prefix

TPP=15
column() { head -1 "$APPDATA/params.txt" | cut -c"$1"; }
OPTIONS=""
options_up() { wh_find_window "$1" 1 && OPTIONS=$WH_WID; }
# opt_click X Y: a click at twips X Y of the dialog's client area.
opt_click() {
    wh_window_geometry "$OPTIONS" || return 1
    wh_click root $((WH_X + $1 / TPP)) $((WH_Y + $2 / TPP))
}
open_options() {
    mv_click_button 15 || return 1
    wh_wait_for "the options" 15 options_up "${1:-^Mirovanta - Options$}" || return 1
    # Showing a window blocks Wine for up to 2 s without a window manager.
    sleep 3
}
ok() { opt_click 9525 6150; }
# key_box N CHAR: types CHAR over hotkey box N (1-5).
key_box() {
    opt_click 9300 $((3322 + ($1 - 1) * 315)) || return 1
    wh_key "$OPTIONS" End shift+Home || return 1
    wh_type "$OPTIONS" "$2"
}
cancel() { opt_click 11125 6150; }

# The dialog shows the settings of the file: a prefix set there comes back on OK, which
# rewrites the line (the filler of columns 1 to 92 becomes blanks).
check_opens_filled() {
    mv_start "$BIN" || return 1
    wh_key "$MAIN" ctrl+q || return 1
    wh_wait_exit "$WH_PID_PROGRAM" 20 || return 1
    mv_set_column 111 Shot
    mv_start "$BIN" || return 1
    open_options || return 1
    wh_screenshot options-en.png
    ok || return 1
    wh_wait_window_gone "$OPTIONS" 10 || return 1
    sleep 1
    [[ $(head -1 "$APPDATA/params.txt" | cut -c111-114) == Shot ]] ||
        { wh_reason "prefix: $(head -1 "$APPDATA/params.txt" | cut -c111-114)"; return 1; }
    [[ $(head -1 "$APPDATA/params.txt" | cut -c1-92 | tr -d ' ') == "" ]] ||
        { wh_reason "the line was not rewritten"; return 1; }
}

# The zone key from Z to K: the file holds K, Control+K opens the overlay, Control+Z no more.
check_zone_key() {
    open_options || return 1
    key_box 1 k || return 1
    sleep 0.5
    wh_screenshot zone-key.png
    ok || return 1
    wh_wait_window_gone "$OPTIONS" 10 || return 1
    sleep 1
    [[ $(column 101) == K ]] || { wh_reason "column 101: $(column 101)"; return 1; }
    wh_key_hold "$MAIN" ctrl+z 0.4 || return 1
    sleep 3
    ! mv_overlay_up || { wh_reason "Control+Z still opens the overlay"; return 1; }
    wh_mouse_move $((WH_SCREEN_W - 40)) 300
    wh_key_hold "$MAIN" ctrl+k 0.4 || return 1
    wh_wait_for "the overlay" 15 mv_overlay_wid || return 1
    sleep 1
    wh_key "$OVERLAY" Escape || return 1
    wh_wait_window_gone "$OVERLAY" 10
}

# Two equal keys among the first four: entry 67, and the dialog stays.
check_equal_keys() {
    sleep 2
    open_options || return 1
    key_box 2 k || return 1
    ok || return 1
    wh_find_window '^Mirovanta$' 10 || return 1
    wh_screenshot equal-keys.png
    wh_key "$WH_WID" Return || return 1
    # Without a window manager Wine waits 2 s for the box to be withdrawn, and a click
    # meanwhile is lost.
    sleep 3
    wh_window_visible "$OPTIONS" || { wh_reason "the dialog closed"; return 1; }
    # The second key back as it was, and OK closes the dialog.
    key_box 2 m || return 1
    ok || return 1
    wh_wait_window_gone "$OPTIONS" 10 || return 1
    sleep 1
    [[ $(head -1 "$APPDATA/params.txt" | cut -c101-102) == KM ]] ||
        { wh_reason "keys: $(head -1 "$APPDATA/params.txt" | cut -c101-105)"; return 1; }
}

# The save folder picked through the browse dialog takes the next save-all, even with a
# name outside the code page (the settings file gets its short form); Silence ticked keeps
# the shutter quiet.
check_browse_and_silence() {
    local shots="$WINEPREFIX/drive_c/shots é 截图 📷"
    mkdir -p "$shots"
    open_options || return 1
    opt_click 11125 307 || return 1
    wh_find_window '^Open$' 15 || { wh_screenshot no-open.png; return 1; }
    local dialog=$WH_WID
    sleep 1
    wh_key "$dialog" End $(printf 'BackSpace %.0s' {1..20}) || return 1
    wh_paste "$dialog" 'C:\shots é 截图 📷\here' || return 1
    wh_key "$dialog" Return || return 1
    wh_wait_window_gone "$dialog" 10 || return 1
    opt_click 250 4470 || return 1 # Silence
    sleep 0.5
    wh_screenshot browsed.png
    ok || return 1
    wh_wait_window_gone "$OPTIONS" 10 || return 1
    sleep 1
    [[ $(column 121) == 1 ]] || { wh_reason "column 121: $(column 121)"; return 1; }
    local played
    played=$(mv_sound_bytes)
    wh_key_hold "$MAIN" ctrl+e 0.6 || return 1
    mv_catch_shutter silent-shutter || return 1
    wh_wait_for "the capture" 15 mv_nth_capture 1 || return 1
    sleep 1
    (($(mv_sound_bytes) == played)) || { wh_reason "a sound played"; return 1; }
    mv_click_button 5 || return 1
    # The prefix of the first check (Shot) names it.
    wh_wait_for "the saved capture" 15 eval 'ls "$shots"/Shot_*.jpg >/dev/null 2>&1' || return 1
    local line2
    line2=$(sed -n 2p "$APPDATA/params.txt" | tr -d '\r')
    [[ $line2 == *'~'* && $line2 != *'?'* ]] || { wh_reason "line 2 of params.txt: $line2"; return 1; }
}

# An editor browsed to in a folder outside the code page: the settings line keeps the
# folder's short form, and Edit starts it on the current capture.
editor_given_capture() { grep -qsF '\Captprov_' "$(find "$1" -iname paint.exe.log)"; }
check_editor_in_unicode_folder() {
    local folder="$WINEPREFIX/drive_c/tools é 截图 📷"
    mkdir -p "$folder"
    cp "$BIN/testeditor.exe" "$folder/paint.exe"
    echo 1 >"$folder/paint.exe.secs"
    open_options || return 1
    opt_click 11125 757 || return 1
    wh_find_window '^Open$' 15 || return 1
    local dialog=$WH_WID editor
    sleep 1
    wh_paste "$dialog" 'C:\tools é 截图 📷\paint.exe' || return 1
    wh_key "$dialog" Return || return 1
    wh_wait_window_gone "$dialog" 10 || return 1
    sleep 0.5
    wh_screenshot editor-browsed.png
    ok || return 1
    wh_wait_window_gone "$OPTIONS" 10 || return 1
    sleep 1
    editor=$(head -1 "$APPDATA/params.txt" | cut -c131-280 | tr -d '\r' | sed 's/ *$//')
    [[ $editor == C:*'~'*'\paint.exe' ]] || { wh_reason "editor in params.txt: $editor"; return 1; }
    # Opened again, the dialog shows both paths under their real names.
    open_options || return 1
    wh_screenshot options-long-names.png
    cancel || return 1
    wh_wait_window_gone "$OPTIONS" 10 || return 1
    sleep 1
    mv_click_button 7 || return 1
    wh_wait_for "the editor's command line" 15 editor_given_capture "$folder"
}

# The dialog in French, every label readable.
check_french() {
    wh_key "$MAIN" ctrl+q || return 1
    if wh_find_window '^Mirovanta - ' 5; then wh_key "$WH_WID" n || true; fi
    WH_REASON=""
    wh_wait_exit "$WH_PID_PROGRAM" 20 || return 1
    printf 'ConstPRJF\r\n' >"$APPDATA/spoken.txt"
    wh_launch "$BIN/mirovanta.exe"
    WH_PID_PROGRAM=$WH_PID
    wh_find_window '^Mirovanta - ' 20 || return 1
    MAIN=$WH_WID
    sleep 2
    open_options '^Mirovanta - Options' || return 1
    wh_screenshot options-fr.png
    cancel || return 1
    wh_wait_window_gone "$OPTIONS" 10
}

wh_check "the options open from the toolbar with the settings of the file" check_opens_filled
wh_check "the zone key changed to K: Control+K opens the overlay, Control+Z no more" check_zone_key
wh_check "two equal keys: the entry 67 box, and the dialog stays" check_equal_keys
wh_check "a browsed save folder takes the next save-all; Silence keeps the shutter quiet" check_browse_and_silence
wh_check "an editor in a Unicode folder is kept by its short path and edits the capture" \
    check_editor_in_unicode_folder
wh_check "the options in French" check_french
wh_finish
