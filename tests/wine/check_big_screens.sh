#!/usr/bin/env bash
# Screens whose size in twips passes 16 bits, and Windows' scalings where a pixel is not a
# whole number of twips: a whole-screen capture and a zone captured on the overlay give
# the screen's pixels, and no run-time error ends the program. WxH+WxH is two monitors side
# by side: the overlay spans both, numeric plus scrolls the second into view, and a zone
# on the second monitor gives its pixels.
# Usage: check_big_screens.sh BIN_DIR [WxH[+WxH][@DPI]]   (without a size: each of SIZES below)
set -euo pipefail
here=$(cd "$(dirname "${BASH_SOURCE[0]}")" && pwd)
if (($# < 2)); then
    : "${1:?usage: check_big_screens.sh BIN_DIR}"
    # Two lanes of sizes side by side, each size on its own X server and Wine: most of a
    # session is waiting on Wine. Each lane's output is shown when it ends.
    sizes=(${MIROVANTA_BIG_SCREENS:-7680x4320 1280x1024+1280x1024@120 3840x2160@144 1600x1200@168 3840x2160 2560x1440@192})
    lane() {
        local i rc=0
        for ((i = $1; i < ${#sizes[@]}; i += 2)); do bash "$0" "$2" "${sizes[i]}" || rc=1; done
        return $rc
    }
    out=$(mktemp -d)
    rc=0
    lane 0 "$1" >"$out/0" 2>&1 &
    first=$!
    lane 1 "$1" >"$out/1" 2>&1 || rc=1
    wait "$first" || rc=1
    cat "$out/0" "$out/1"
    rm -rf "$out"
    exit $rc
fi
source "$here/lib.sh"
source "$here/program.sh"
BIN=$(cd "$1" && pwd)

SIZE=${2%@*}
DPI=96
[[ $2 != *@* ]] || DPI=${2#*@}
MONITORS=1
if [[ $SIZE == *+* ]]; then
    [[ ${SIZE%+*} == "${SIZE#*+}" ]] || { echo "two monitors of one size only: $SIZE" >&2; exit 2; }
    SIZE=${SIZE%+*}
    MONITORS=2
fi
wh_init "big-screen-$2"
wh_start_xvfb "$SIZE" "$MONITORS"
if ((MONITORS == 2)); then
    wh_make_picture "$WH_ART/picture.png" "${WH_VIRTUAL_W}x$WH_SCREEN_H"
    wh_show_picture "$WH_ART/picture.png"
    # A whole-screen capture is of the primary monitor.
    mv_crop "$WH_SCREEN_W" "$WH_SCREEN_H" 0 0 primary
    PRIMARY=$WH_ART/primary.png
else
    wh_show_picture
    PRIMARY=$WH_PICTURE
fi
wh_start_wine
mv_use_prefix
((DPI == 96)) || mv_set_dpi "$DPI"

still_running() {
    kill -0 "$WH_PID_PROGRAM" 2>/dev/null || { wh_reason "the program ended"; return 1; }
}

check_whole_screen() {
    mv_start "$BIN" || return 1
    mv_click_button 1
    mv_new_capture 1 screen || return 1
    wh_assert_same screen "$WH_ART/screen.bmp" "$PRIMARY" --exclude "$(mv_tray_box)" || return 1
    still_running
}

check_window() {
    wh_launch -l winemine.log winemine
    wh_find_window 'Mine' 20 || return 1
    sleep 1
    mv_window_capture "$WH_WID" window 2 || return 1
    still_running
}

# The default rectangle, 420 x 260, stands in the middle of the screen.
check_zone() {
    mv_open_overlay || return 1
    wh_screenshot overlay.png
    local x=$(((WH_SCREEN_W - 420) / 2)) y=$(((WH_SCREEN_H - 260) / 2))
    wh_click root 200 $((WH_SCREEN_H - 100)) 3 || return 1
    mv_new_capture 3 zone || return 1
    mv_crop 420 260 $((x + 1)) $((y + 1)) want-zone
    wh_assert_same zone "$WH_ART/zone.bmp" "$WH_ART/want-zone.png" || return 1
    wh_wait_window_gone "$OVERLAY" 10 || return 1
    sleep 1
    wh_screenshot after-zone.png
    still_running
}

# Two monitors: the overlay is two screens wide (mv_open_overlay looks for that width).
# The rectangle is dragged onto the second monitor; numeric plus moves the picture left by
# 300 twips a press until it has gone a screen's width or more, which brings the second
# monitor's half over the first, rectangle included (not the size label, which belongs to
# the form); one more press is past the limit and does nothing.
check_second_monitor() {
    mv_open_overlay || return 1
    local x=$(((WH_SCREEN_W - 420) / 2)) y=$(((WH_SCREEN_H - 260) / 2))
    local step=$((300 * DPI / 1440)) steps shift
    steps=$(((WH_SCREEN_W + step - 1) / step))
    shift=$((steps * step - WH_SCREEN_W))
    wh_drag root $((x + 210)) $((y + 130)) $((x + 210 + WH_SCREEN_W)) $((y + 130)) 1 10 || return 1
    sleep 0.5
    wh_screenshot overlay-second.png \
        "$((WH_SCREEN_W - shift))x$WH_SCREEN_H+$((WH_SCREEN_W + shift))+0" || return 1
    local keys=() i
    for ((i = 0; i <= steps; i++)); do keys+=(KP_Add); done
    wh_key "$OVERLAY" "${keys[@]}" || return 1
    sleep 0.5
    wh_screenshot overlay-scrolled.png "$((WH_SCREEN_W - shift))x$WH_SCREEN_H+0+0" || return 1
    wh_assert_same scrolled "$WH_ART/overlay-scrolled.png" "$WH_ART/overlay-second.png" \
        --exclude "300x40+$((x + 415 - shift))+$((y - 5))" || return 1
    wh_click root 200 $((WH_SCREEN_H - 100)) 3 || return 1
    mv_new_capture 3 zone || return 1
    mv_crop 420 260 $((x + 1 + WH_SCREEN_W)) $((y + 1)) want-zone
    wh_assert_same zone "$WH_ART/zone.bmp" "$WH_ART/want-zone.png" || return 1
    wh_wait_window_gone "$OVERLAY" 10 || return 1
    still_running
}

wh_check "a whole-screen capture of $SIZE at $DPI DPI gives its pixels" check_whole_screen
wh_check "a window capture at $SIZE and $DPI DPI gives its pixels" check_window
if ((MONITORS == 2)); then
    wh_check "a zone on the second monitor at $DPI DPI, scrolled into view, gives its pixels" \
        check_second_monitor
else
    wh_check "a zone of $SIZE at $DPI DPI captured on the overlay gives its pixels" check_zone
fi
wh_finish
