#!/usr/bin/env bash
# Screens whose size in twips passes 16 bits: a whole-screen capture and a zone captured on
# the overlay give the screen's pixels, and no run-time error ends the program.
# Usage: check_big_screens.sh BIN_DIR [WxH]   (without a size: 2560x1440, then 3840x2160)
set -euo pipefail
here=$(cd "$(dirname "${BASH_SOURCE[0]}")" && pwd)
if (($# < 2)); then
    rc=0
    for size in 2560x1440 3840x2160; do bash "$0" "${1:?usage: check_big_screens.sh BIN_DIR}" "$size" || rc=1; done
    exit $rc
fi
source "$here/lib.sh"
source "$here/program.sh"
BIN=$(cd "$1" && pwd)

wh_init "big-screen-$2"
wh_start_xvfb "$2"
wh_show_picture
wh_start_wine
mv_use_prefix

still_running() {
    kill -0 "$WH_PID_PROGRAM" 2>/dev/null || { wh_reason "the program ended"; return 1; }
}

check_whole_screen() {
    mv_start "$BIN" || return 1
    mv_click_button 1
    mv_new_capture 1 screen || return 1
    wh_assert_same screen "$WH_ART/screen.bmp" "$WH_PICTURE" --exclude "$(mv_tray_box)" || return 1
    still_running
}

# The default rectangle, 420 x 260, stands in the middle of the screen.
check_zone() {
    mv_open_overlay || return 1
    wh_screenshot overlay.png
    local x=$(((WH_SCREEN_W - 420) / 2)) y=$(((WH_SCREEN_H - 260) / 2))
    wh_click root 200 $((WH_SCREEN_H - 100)) 3 || return 1
    mv_new_capture 2 zone || return 1
    mv_crop 420 260 $((x + 1)) $((y + 1)) want-zone
    wh_assert_same zone "$WH_ART/zone.bmp" "$WH_ART/want-zone.png" || return 1
    wh_wait_window_gone "$OVERLAY" 10 || return 1
    sleep 1
    wh_screenshot after-zone.png
    still_running
}

wh_check "a whole-screen capture of $2 gives its pixels" check_whole_screen
wh_check "a zone of $2 captured on the overlay gives its pixels" check_zone
wh_finish
