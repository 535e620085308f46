#!/usr/bin/env bash
# shellcheck disable=SC2034,SC2153 # WH_* are the harness's (tests/wine/lib.sh)
# One Wine session of the program in one language, for make.sh: screenshots of the main
# window, its menus, the tray menu, the options and the collection with five captures,
# cut to each window, into SHOTS (PNG files and geometry.txt).
# Usage: shoot.sh en|fr BIN_DIR [SHOTS=the session's artifacts folder/shots]
set -euo pipefail
here=$(cd "$(dirname "${BASH_SOURCE[0]}")" && pwd)
repo=$(cd "$here/../.." && pwd)
LNG=${1:?usage: shoot.sh en|fr BIN_DIR [SHOTS]}
BIN=$(cd "${2:?bin folder}" && pwd)
SHOTS=${3:-}
source "$repo/tests/wine/lib.sh"
source "$repo/tests/wine/program.sh"
source "$here/analyse.sh"

TPP=15
# The language file, and the menus' keys for Save all, sending the ticked captures and
# Save automatically.
case $LNG in
en) SPOKEN=ConstPRJA KEYS_SAVE_ALL=(alt+f a) KEYS_MAIL=(alt+f m t) KEYS_AUTO=(alt+t a) ;;
fr) SPOKEN=ConstPRJF KEYS_SAVE_ALL=(alt+f t) KEYS_MAIL=(alt+f c h) KEYS_AUTO=(alt+o a) ;;
*) echo "unknown language $LNG" >&2; exit 2 ;;
esac

# fail MESSAGE: stops the session with a screenshot of the moment.
fail() {
    wh_screenshot failed.png || true
    echo "shoot.sh $LNG: $* (screen in $WH_ART/failed.png)" >&2
    exit 1
}
# note KEY VALUE: one line of geometry.txt.
note() { printf '%s=%s\n' "$1" "$2" >>"$SHOTS/geometry.txt"; }
# grab NAME WID [X Y W H]: a window (or that part of it, relative to its X origin).
grab() {
    local name=$1 wid=$2
    wh_window_geometry "$wid" || fail "no window for $name"
    if (($# > 2)); then
        wh_screenshot "$SHOTS/$name.png" "$5x$6+$((WH_X + $3))+$((WH_Y + $4))"
    else
        wh_screenshot "$SHOTS/$name.png" "${WH_W}x$WH_H+$WH_X+$WH_Y"
    fi
}
# park: the pointer in the bottom right corner, clear of every window and tooltip.
park() { wh_mouse_move $((WH_SCREEN_W - 2)) $((WH_SCREEN_H - 2)); }

# popups: the menus on the screen (mapped windows with no title, smaller than the screen),
# one "X Y W H" a line, left to right.
popups() {
    local w
    for w in $(xdotool search --onlyvisible --name '^$' 2>/dev/null); do
        wh_window_geometry "$w" 2>/dev/null || continue
        ((WH_W < 700 && WH_H < 700 && WH_W > 40 && WH_H > 30)) || continue
        echo "$WH_X $WH_Y $WH_W $WH_H"
    done | sort -n -k1,1
}
popup_count() { (($(popups | wc -l) >= $1)); }
# shoot_popup NAME [K]: the Kth menu from the left (1 by default), cut to its window.
shoot_popup() {
    local x y w h
    read -r x y w h < <(popups | sed -n "${2:-1}p")
    [[ -n ${h:-} ]] || fail "no menu for $1"
    wh_screenshot "$SHOTS/$1.png" "${w}x$h+$x+$y"
    note "$1" "$x $y $w $h"
}
# end_pid PID: ends a helper program this session started.
end_pid() {
    kill -TERM "$1" 2>/dev/null || true
    wh_wait_for "pid $1 to end" 5 _wh_not_alive "$1" || kill -KILL "$1" 2>/dev/null || true
    WH_REASON=""
}
# box_ok: Enter on a message box of the program, when one is up.
box_ok() {
    if wh_find_window '^Mirovanta$' 3; then
        wh_key "$WH_WID" Return
        sleep 3
    fi
    WH_REASON=""
}
# list_back: the collection on the screen (it slides away when left alone).
list_back() {
    wh_window_geometry "$LIST" && ((WH_X >= 0))
}
close_menus() {
    _wh_xdo key Escape Escape Escape || true
    sleep 1
    park
}

# Titles of the menu bar: their x ranges in the main window, from its strip.
TITLES=()
find_titles() {
    grab menubar "$MAIN" 0 0 "$WH_W" "$MENU_H"
    mapfile -t TITLES < <(ink_columns "$SHOTS/menubar.png" 6)
    ((${#TITLES[@]} >= 5)) || fail "menu bar titles: ${TITLES[*]}"
}
# open_title K: a click on the Kth title of the menu bar (from 0).
open_title() {
    local a b
    read -r a b <<<"${TITLES[$1]}"
    wh_click "$MAIN" $(((a + b) / 2)) 9 || fail "click on title $1"
    wh_wait_for "menu $1" 5 popup_count 1 || fail "menu $1 did not open"
    sleep 0.7
}

# ------------------------------------------------------------------ the session
wh_init "helppics/$LNG"
[[ -n $SHOTS ]] || SHOTS=$WH_ART/shots
mkdir -p "$SHOTS"
SHOTS=$(cd "$SHOTS" && pwd)
wh_start_xvfb 1280x1024
wh_show_picture
wh_start_wine
mv_use_prefix
: >"$SHOTS/geometry.txt"
mkdir -p "$APPDATA"
printf '%s\r\n' "$SPOKEN" >"$APPDATA/spoken.txt"
# Wine's mail client traces its calls: the mail below is awaited in them.
WINEDEBUG=-all,+mapi,+winemapi wh_launch "$BIN/mirovanta.exe"
WH_PID_PROGRAM=$WH_PID
wh_find_window '^Mirovanta - ' 30 || fail "no main window"
MAIN=$WH_WID
park
sleep 4 # the opening animation

# The main window as it opens: menu bar and toolbar; its colour in the middle of the
# toolbar row, between two buttons.
grab main-start "$MAIN"
BACK=$(convert "$SHOTS/main-start.png" -format "%[pixel:p{$(($(mv_button_x 11) - 2)),$((MENU_H + 16))}]" info:)
note back "$BACK"
find_titles
note titles "$(printf '%s;' "${TITLES[@]}")"
for k in $(seq 0 19); do
    order=$(echo 0 19 1 2 11 12 13 3 9 10 4 5 6 7 8 16 17 15 14 18 | cut -d' ' -f$((k + 1)))
    note "button$k" "$(mv_button_x "$order") $MENU_H 32 32"
done

# The tray icon's menu, while no collection window covers the tray.
wh_find_window '^Wine System Tray$' 10 || fail "no tray"
wh_window_geometry "$WH_WID"
wh_mouse_move $((WH_X + 10)) $((WH_Y + 10))
sleep 0.5
_wh_xdo click 3
wh_wait_for "the tray menu" 5 popup_count 1 || fail "no tray menu"
sleep 1
shoot_popup menu-tray
close_menus
sleep 2

# The options dialog, on top.
mv_click_button 15 || fail "options button"
wh_find_window '^Mirovanta - Options' 15 || fail "no options"
OPTIONS=$WH_WID
sleep 3
wh_raise "$OPTIONS"
park
sleep 1
grab options "$OPTIONS"
wh_window_geometry "$OPTIONS"
wh_click root $((WH_X + 11125 / TPP)) $((WH_Y + 6150 / TPP)) # Cancel
wh_wait_window_gone "$OPTIONS" 10 || fail "options still open"
sleep 3

# Five captures, in the order of the thumbnails of the picture: a zone, a window, a smaller
# zone elsewhere, the whole screen, another window.
mv_open_overlay || fail "overlay 1"
wh_key "$OVERLAY" Return
mv_new_capture 1 cap1 || fail "capture 1"
mv_back_to_main || fail "main after capture 1"
sleep 1

wh_launch -l winemine.log winemine
MINE_PID=$WH_PID
wh_find_window 'Mine' 20 || fail "no winemine"
MINE=$WH_WID
_wh_xdo windowmove "$MINE" 640 520
sleep 2
wh_key_hold "$MINE" ctrl+f 0.4
mv_new_capture 2 cap2 || fail "capture 2"
wh_wait_for "the main window" 10 wh_window_visible "$MAIN" || fail "main after capture 2"
end_pid "$MINE_PID"
sleep 2

# A zone over the coloured blocks of the picture: moved up and left, made smaller.
mv_open_overlay || fail "overlay 3"
wh_focus "$OVERLAY"
moves=()
for k in {1..19}; do moves+=(ctrl+Left); done
for k in {1..17}; do moves+=(ctrl+Up); done
for k in {1..9}; do moves+=(alt+Left); done
for k in {1..6}; do moves+=(alt+Up); done
_wh_xdo key --delay 60 "${moves[@]}"
sleep 0.5
wh_key "$OVERLAY" Return
mv_new_capture 3 cap3 || fail "capture 3"
mv_back_to_main || fail "main after capture 3"
sleep 1

# The whole screen by its hotkey, the pointer parked in the corner: the program draws the
# pointer into the capture.
park
wh_key_hold "$MAIN" ctrl+e 0.6
mv_new_capture 4 cap4 || fail "capture 4"
wh_wait_for "the main window" 10 wh_window_visible "$MAIN" || fail "main window after capture 4"
park
sleep 3
# The view of the whole screen under the toolbar.
wh_window_geometry "$MAIN"
grab main-view "$MAIN" 0 0 "$WH_W" "$((WH_H < 360 ? WH_H : 360))"

wh_launch -l clock.log clock
CLOCK_PID=$WH_PID
wh_find_window 'Clock' 20 || fail "no clock"
CLOCK=$WH_WID
_wh_xdo windowmove "$CLOCK" 700 460
_wh_xdo windowsize "$CLOCK" 180 180
sleep 3
wh_key_hold "$CLOCK" ctrl+f 0.4
mv_new_capture 5 cap5 || fail "capture 5"
wh_wait_for "the main window" 10 wh_window_visible "$MAIN" || fail "main after capture 5"
end_pid "$CLOCK_PID"
sleep 3

# The collection before any mark: the thumbnails.
LIST=$(xdotool search --onlyvisible --name '^Collection$' | head -1)
[[ -n $LIST ]] || fail "no collection"
park
sleep 1
grab collection-plain "$LIST"

# Captures 2 and 3 ticked and mailed: grey ticks and the envelope; capture 5 ticked; then
# Save all marks every capture saved.
tick() {
    wh_window_geometry "$LIST"
    wh_click root $((WH_X + 3 + (1680 + 127) / TPP)) $((WH_Y + 19 + (840 + 445 + 127 + ($1 - 1) * 1600) / TPP))
    sleep 0.5
}
# main_keys KEY...: the clicks in the collection made it the foreground window while the
# X focus stayed on the main window: the focus goes there and back before the keys.
main_keys() {
    wh_focus "$LIST"
    sleep 0.5
    wh_key "$MAIN" "$1"
    shift
    local k
    for k in "$@"; do
        sleep 0.7
        _wh_xdo key "$k"
    done
}
wh_mouse_move 1 300
wh_wait_for "the collection back" 10 list_back || fail "the collection stays away"
tick 2
tick 3
main_keys "${KEYS_MAIL[@]}"
wh_wait_for "the mail" 20 grep -q 'MAPISendMail' "$WH_ART/mirovanta.exe.log" || fail "no mail sent"
sleep 3
box_ok
wh_mouse_move 1 300
wh_wait_for "the collection back" 10 list_back || fail "the collection stays away"
tick 5
main_keys "${KEYS_SAVE_ALL[@]}"
sleep 3
box_ok
park

# The menus, opened by the mouse so that no entry is lit.
open_title 0
shoot_popup menu-file
# The mail entry: the 4th of the menu; the pointer on it opens its submenu.
read -r x y w h < <(popups | head -1)
wh_mouse_move $((x + 30)) $((y + 3 + 3 * 17 + 9 + 8))
wh_wait_for "the mail menu" 5 popup_count 2 || fail "no mail submenu"
sleep 0.7
shoot_popup menu-mail 2
close_menus
open_title 1
shoot_popup menu-edit
close_menus
open_title 2
shoot_popup menu-tools
close_menus
open_title 3
shoot_popup menu-help
close_menus
# Save automatically ticked: the tools menu again.
main_keys "${KEYS_AUTO[@]}"
sleep 2
box_ok
open_title 2
shoot_popup menu-tools-ticked
close_menus

# The collection on a plain background of the window's colour: its see-through parts
# (around the slider) then show that colour.
wh_mouse_move 1 300
wh_wait_for "the collection back" 10 list_back || fail "the collection stays away"
park
convert -size 300x"$WH_SCREEN_H" "xc:$BACK" "$WH_ART/plain.png"
display -geometry +0+0 -borderwidth 0 -immutable -title mirovanta-plain "$WH_ART/plain.png" \
    </dev/null >>"$WH_ART/display.log" 2>&1 &
WH_PIDS+=($!)
_wh_remember $!
wh_find_window '^mirovanta-plain$' 10 || fail "no plain picture"
sleep 1
wh_raise "$LIST"
wh_focus "$LIST"
park
sleep 1
grab collection "$LIST"
echo "shoot.sh $LNG: done"
