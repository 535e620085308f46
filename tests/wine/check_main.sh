#!/usr/bin/env bash
# Checks of the main window under Wine: the toolbar's buttons at their places, the view of a
# zone at each zoom, the mode reduced to the toolbar, the about box and its mail button,
# and the notification-area icon: its double click, its menu, and a hotkey capture while
# both windows are hidden.
# Usage: check_main.sh BIN_DIR
set -euo pipefail
here=$(cd "$(dirname "${BASH_SOURCE[0]}")" && pwd)
source "$here/lib.sh"
source "$here/program.sh"
BIN=$(cd "${1:?usage: check_main.sh BIN_DIR}" && pwd)

wh_init main
wh_start_xvfb 1280x1024
wh_show_picture
wh_start_wine
mv_use_prefix

TPP=15
# The toolbar's pictures in command order.
PICTURES=(camera toutecran camerafen copy savex saveallx printerx paintx multiselx deletex
    waste undox moverbox moverboxtim closex wrench agrandir filmx report camerag)

# Each button shows its own picture: the mouse away, every one of the 20 equals its file.
check_toolbar() {
    # Wine's mail client traces the calls that reach it.
    WINEDEBUG=-all,+mapi,+winemapi mv_start "$BIN" || return 1
    wh_mouse_move 640 1000
    sleep 1
    wh_window_geometry "$MAIN" || return 1
    # Under Wine the main window's X window starts with its menu bar: no frame is drawn.
    wh_screenshot toolbar.png "$((24 * 32 + 40))x32+$WH_X+$((WH_Y + MENU_H))"
    local i x bad=()
    for i in "${!PICTURES[@]}"; do
        x=$(mv_button_x "$i")
        convert "$WH_ART/toolbar.png" -crop "32x32+$x+0" +repage "$WH_ART/button-$i.png"
        wh_diff_count "$WH_ART/button-$i.png" "$BIN/${PICTURES[$i]}.bmp" || return 1
        ((WH_DIFF == 0)) || bad+=("$i:$WH_DIFF")
    done
    ((${#bad[@]} == 0)) || { wh_reason "buttons differ (index:pixels) ${bad[*]}"; return 1; }
}

# zoom K: the zoom menu's entry K (0 for 25 % to 4 for 200 %), by the keyboard.
zoom() {
    wh_key "$MAIN" alt+e || return 1
    sleep 0.4
    _wh_xdo key m || return 1
    sleep 0.4
    local k
    for ((k = 0; k < $1; k++)); do _wh_xdo key Down; done
    _wh_xdo key Return
    sleep 1
}
# view NAME W H: the view of a zone just captured: 20 twips from the left, 80 below the
# toolbar.
view() {
    wh_window_geometry "$MAIN" || return 1
    wh_screenshot "$1.png" "$2x$3+$((WH_X + 20 / TPP))+$((WH_Y + MENU_H + 560 / TPP))"
}

# A zone of the known picture at 25, 50, 75, 100 and 200 %: shrinking averages like
# ImageMagick's box filter (a unit apart here and there), enlarging doubles each pixel.
check_zoom() {
    mv_open_overlay || return 1
    wh_key "$OVERLAY" Return || return 1
    mv_new_capture 1 zone || return 1
    mv_back_to_main || return 1
    sleep 1
    local k w h
    local pour=(25 50 75 100 200)
    for k in 0 1 2 3 4; do
        zoom "$k" || return 1
        w=$((420 * ${pour[$k]} / 100)) h=$((260 * ${pour[$k]} / 100))
        view "zoom-${pour[$k]}" "$w" "$h" || return 1
        if ((k == 4)); then
            convert "$WH_ART/zone.bmp" -scale 200% "$WH_ART/want-200.png"
            wh_assert_same zoom-200 "$WH_SHOT" "$WH_ART/want-200.png" || return 1
        else
            convert "$WH_ART/zone.bmp" -filter box -resize "${w}x$h!" "$WH_ART/want-${pour[$k]}.png"
            # Both average; where a grid line falls across a pixel they weigh it apart.
            local psnr
            psnr=$(compare -metric PSNR "$WH_SHOT" "$WH_ART/want-${pour[$k]}.png" null: 2>&1 || true)
            [[ $psnr == inf ]] || awk -v p="$psnr" 'BEGIN { exit !(p >= 35) }' ||
                { wh_reason "${pour[$k]} %: $psnr dB from ImageMagick's resize"; return 1; }
        fi
    done
}

# Command 16 folds the window to its toolbar and back to the view at 200 %.
check_reduced() {
    mv_click_button 16
    sleep 1.5
    wh_window_geometry "$MAIN" || return 1
    wh_screenshot reduced.png "$((WH_W + 6))x$((WH_H + 6))+$WH_X+$WH_Y"
    ((WH_H < 1430 / TPP + 30)) || { wh_reason "still ${WH_H} pixels high"; return 1; }
    mv_click_button 16
    # Away from the toolbar, so that no tooltip stands over the view.
    wh_mouse_move 200 $((WH_SCREEN_H - 100))
    sleep 1.5
    view back-200 840 520 || return 1
    wh_assert_same back-200 "$WH_SHOT" "$WH_ART/want-200.png"
}

# The icon stands first in Wine's tray window.
TRAY_X=0 TRAY_Y=0
find_tray() {
    wh_find_window '^Wine System Tray$' 10 || return 1
    wh_window_geometry "$WH_WID" || return 1
    TRAY_X=$((WH_X + 10)) TRAY_Y=$((WH_Y + 10))
}
# tray_menu: the pop-up menu under the icon (a window with no title), into MENU_X, MENU_Y and
# the height of a row, MENU_ROW.
MENU_X=0 MENU_Y=0 MENU_ROW=0
tray_menu() {
    local w
    for w in $(xdotool search --onlyvisible --name '^$' 2>/dev/null); do
        wh_window_geometry "$w" || continue
        ((WH_W < 400 && WH_H < 200)) || continue
        MENU_X=$WH_X MENU_Y=$WH_Y MENU_ROW=$((WH_H / 3))
        return 0
    done
    return 1
}
# The about box: its mail button opens a message to the support address in the mail
# client (Wine's hands it to its browser) with no box, and OK closes it.
about_box() { wh_find_window '^Mirovanta$' 1 && ABOUT=$WH_WID; }
mapi_sends() { grep -q 'winemapi:MAPISendMail Executing.*support@mirovanta.app' "$WH_ART/mirovanta.exe.log"; }
check_about() {
    mv_click_button 18
    wh_wait_for "the about box" 10 about_box || return 1
    sleep 3
    wh_screenshot about.png
    wh_click "$ABOUT" $(((960 + 1000) / TPP)) $(((1500 + 200) / TPP)) || return 1
    wh_wait_for "MAPISendMail" 15 mapi_sends || return 1
    sleep 2
    [[ $(xdotool search --onlyvisible --name '^Mirovanta$' | wc -l) == 1 ]] ||
        { wh_reason "a box came with the about box"; return 1; }
    wh_click "$ABOUT" $(((3900 + 600) / TPP)) $(((1500 + 200) / TPP)) || return 1
    wh_wait_window_gone "$ABOUT" 10 || return 1
    sleep 3
}

# tray_click [xdotool click options] BUTTON: a click on the icon.
tray_click() { wh_mouse_move "$TRAY_X" "$TRAY_Y" && sleep 0.3 && _wh_xdo click "$@"; }
# Without a window manager a minimised window stays on the screen; Wine marks it iconic.
main_iconic() { xwininfo -wm -id "$MAIN" 2>/dev/null | grep -q 'Iconic State'; }
main_normal() { wh_window_visible "$MAIN" && ! main_iconic; }
main_hidden() { ! wh_window_visible "$MAIN"; }

check_tray_icon() {
    find_tray || return 1
    wh_screenshot tray.png "40x20+$((TRAY_X - 10))+$((TRAY_Y - 10))"
    # The program's blue tile and red dot, not the default application icon.
    local bleu rouge
    bleu=$(convert "$WH_SHOT" -fuzz 12% -fill black +opaque '#2f7cdf' -fill white -opaque '#2f7cdf' \
        -format '%[fx:round(mean*w*h)]' info:)
    rouge=$(convert "$WH_SHOT" -fuzz 12% -fill black +opaque '#e23f3b' -fill white -opaque '#e23f3b' \
        -format '%[fx:round(mean*w*h)]' info:)
    ((bleu >= 20 && rouge >= 2)) || { wh_reason "tray icon: $bleu blue, $rouge red pixels"; return 1; }
}

# A double click on the icon puts both windows away, the next brings them back.
check_tray_double_click() {
    tray_click --repeat 2 --delay 80 1 || return 1
    wh_wait_for "the windows to go" 10 main_iconic || return 1
    tray_click --repeat 2 --delay 80 1 || return 1
    wh_wait_for "the windows to come back" 10 main_normal || return 1
}

# The right button opens the tray menu; its standby entry hides both windows, and
# Control+E still captures, showing them again.
check_tray_menu_and_hotkey() {
    # The keys will go to another program's window, as they would with the windows away;
    # it stands clear of the tray.
    wh_launch -l notepad.log notepad
    wh_find_window 'Notepad' 20 || return 1
    local notepad=$WH_WID avant
    _wh_xdo windowmove "$notepad" 500 600
    sleep 2
    tray_click 3 || return 1
    wh_wait_for "the tray menu" 5 tray_menu || return 1
    wh_screenshot tray-menu.png
    # Its second entry: show / hide the windows.
    wh_click root $((MENU_X + 40)) $((MENU_Y + MENU_ROW * 3 / 2)) || return 1
    wh_wait_for "the windows to hide" 10 main_hidden || return 1
    avant=$(temp_files | wc -l)
    # Without a window manager Wine takes up to 2 s to hide each window, and the program
    # polls no key meanwhile.
    sleep 3
    wh_key_hold "$notepad" ctrl+e 0.6 || return 1
    wh_wait_for "a capture" 20 mv_nth_capture $((avant + 1)) || return 1
    wh_wait_for "the windows back" 10 main_normal || return 1
}

wh_check "the toolbar's 20 buttons show their pictures in their places" check_toolbar
wh_check "a zone at 25, 50, 75, 100 and 200 %" check_zoom
wh_check "command 16 folds the window to its toolbar and back" check_reduced
wh_check "the about box writes to us through the mail client" check_about
wh_check "the program's icon stands in the tray" check_tray_icon
wh_check "double clicks on the icon put the windows away and back" check_tray_double_click
wh_check "the tray menu's standby hides both windows; Control+E still captures" check_tray_menu_and_hotkey
wh_finish
