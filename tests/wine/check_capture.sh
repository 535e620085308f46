#!/usr/bin/env bash
# Checks of the real program under Wine: the x64 build, a private Xvfb showing a known
# picture, driven by xdotool and judged by files, pixels and screenshots.
# Usage: check_capture.sh BIN_DIR   (the folder holding mirovanta.exe and its bitmaps)
set -euo pipefail
here=$(cd "$(dirname "${BASH_SOURCE[0]}")" && pwd)
source "$here/lib.sh"
source "$here/program.sh"
BIN=$(cd "${1:?usage: check_capture.sh BIN_DIR}" && pwd)

wh_init main-window
wh_start_xvfb 1280x1024
wh_show_picture
wh_start_wine

mv_use_prefix

check_toolbar() {
    wh_screenshot start.png
    wh_window_geometry "$MAIN" || return 1
    # Button 0 shows the camera bitmap pixel for pixel, at the window's top right.
    local x=$((WH_X + $(mv_button_x 0))) y=$((WH_Y + MENU_H))
    convert "$WH_ART/start.png" -crop 32x32+$x+$y +repage "$WH_ART/button0.png"
    wh_assert_same button0 "$WH_ART/button0.png" "$BIN/camera.bmp" || return 1
    ((WH_X + WH_W >= 1270)) || { wh_reason "main window not at the right edge: x=$WH_X w=$WH_W"; return 1; }
}

check_whole_screen_capture() {
    mv_click_button 1
    wh_wait_for "a temporary BMP" 15 has_temp_file || return 1
    sleep 1
    CAPTURE=$(temp_files | head -1)
    TRAY=$(mv_tray_box)
    wh_assert_same capture "$CAPTURE" "$WH_PICTURE" --exclude "$TRAY" || return 1
}

check_clipboard() {
    xclip -selection clipboard -t image/bmp -o > "$WH_ART/clipboard.bmp" 2>/dev/null ||
        { wh_reason "clipboard holds no picture"; return 1; }
    wh_assert_same clipboard "$WH_ART/clipboard.bmp" "$WH_PICTURE" --exclude "$TRAY"
}

# The Copy button puts the capture's file back on the clipboard, after another program
# took it.
check_copy_button() {
    printf 'text' | xclip -selection clipboard -i
    sleep 0.5
    if [[ "$(xclip -selection clipboard -t image/bmp -o 2>/dev/null | head -c 2)" == BM ]]; then
        wh_reason "the clipboard still holds a picture"
        return 1
    fi
    mv_click_button 3
    local got="$WH_ART/copied.bmp" _
    for _ in {1..50}; do
        xclip -selection clipboard -t image/bmp -o > "$got" 2>/dev/null &&
            [[ "$(head -c 2 "$got")" == BM ]] && break
        sleep 0.2
    done
    wh_assert_same copied "$got" "$CAPTURE"
}

check_capture_in_view() {
    wh_mouse_move 640 1000
    sleep 0.5
    wh_screenshot capture-in-view.png
    # The view is the screen at 75 %: a pixel of the red block (x 200-260, y 40-100 on the
    # known picture) lands at 0.75 times its place inside the view.
    wh_window_geometry "$MAIN" || return 1
    local px
    px=$(convert "$WH_ART/capture-in-view.png" -format '%[pixel:p{'$((WH_X + 1 + 172))','$((WH_Y + MENU_H + 33 + 52))'}]' info:)
    [[ "$px" == "srgb(255,0,0)" || "$px" == "red" ]] || { wh_reason "view pixel is $px, not red"; return 1; }
}

check_delete_key() {
    local list
    list=$(xdotool search --name '^Collection$' | head -1)
    wh_key "$MAIN" Delete
    wh_wait_for "the file deleted" 10 test ! -f "$CAPTURE" || return 1
    wh_wait_window_gone "$list" 10 || return 1
}

wh_check "the program starts with its toolbar" mv_start "$BIN"
wh_check "the toolbar shows its bitmaps at the top right" check_toolbar
wh_check "a whole-screen capture writes the screen's pixels" check_whole_screen_capture
wh_check "the clipboard holds the capture" check_clipboard
wh_check "the Copy button copies the capture's file" check_copy_button
wh_check "the capture is in view at 75 %" check_capture_in_view
wh_check "Delete removes the capture and its file" check_delete_key

# ---- the selection overlay -------------------------------------------------------------
# The default rectangle (420 x 260) stands in the middle of the 1280 x 1024 screen.
RX=430 RY=382 RW=420 RH=260

check_overlay_shows_the_dimmed_screen() {
    # The list is empty: Control+Q ends the first run without a question.
    wh_key "$MAIN" ctrl+q || return 1
    wh_wait_exit "$WH_PID_PROGRAM" 20 || return 1
    mv_start "$BIN" || return 1
    mv_open_overlay || return 1
    wh_mouse_move 300 250
    sleep 0.5
    wh_screenshot overlay.png
    # Outside: the picture under black at 80/255. Inside the clear spot: the picture.
    convert "$WH_PICTURE" -evaluate multiply 0.6862745 "$WH_ART/dimmed.png"
    wh_diff_count "$WH_ART/overlay.png" "$WH_ART/dimmed.png" --region 1280x300+0+700 --fuzz 1% ||
        return 1
    ((WH_DIFF == 0)) || { wh_reason "$WH_DIFF pixels of the lower band are not the dimmed picture"; return 1; }
    wh_assert_same clear-spot "$WH_ART/overlay.png" "$WH_PICTURE" \
        --region $((RW - 4))x$((RH - 8))+$((RX + 2))+$((RY + 2)) || return 1
}

check_right_click_captures_the_rectangle() {
    wh_click root 200 900 3 || return 1
    mv_new_capture 1 zone1 || return 1
    mv_crop $RW $RH $((RX + 1)) $((RY + 1)) want1
    wh_assert_same zone1 "$WH_ART/zone1.bmp" "$WH_ART/want1.png" || return 1
    wh_wait_window_gone "$OVERLAY" 10
}

check_handle_drag_resizes() {
    mv_open_overlay || return 1
    # The bottom right handle, dragged: the far edges land 5 pixels beyond the mouse.
    wh_drag root $((RX + RW + 2)) $((RY + RH + 2)) 900 700 || return 1
    sleep 0.5
    wh_screenshot handle-drag.png
    wh_click root 200 900 3 || return 1
    mv_new_capture 2 zone2 || return 1
    mv_crop 475 323 $((RX + 1)) $((RY + 1)) want2
    wh_assert_same zone2 "$WH_ART/zone2.bmp" "$WH_ART/want2.png"
}

# Command 11 shows the frozen screen of the last session, not the screen of now (where the
# main window stands at the top right).
check_back_to_the_frozen_screen() {
    wh_wait_window_gone "$OVERLAY" 10 || return 1
    sleep 1
    wh_screenshot before-back.png
    mv_click_button 11
    wh_wait_for "the overlay" 15 mv_overlay_wid || return 1
    sleep 1.5
    wh_screenshot back.png
    wh_diff_count "$WH_ART/back.png" "$WH_ART/dimmed.png" --region 300x60+950+100 --fuzz 1% ||
        return 1
    ((WH_DIFF == 0)) || { wh_reason "the reopened screen is not the frozen one ($WH_DIFF)"; return 1; }
    wh_click root 200 900 3 || return 1
    mv_new_capture 3 zone3 || return 1
    wh_assert_same zone3 "$WH_ART/zone3.bmp" "$WH_ART/want2.png"
}

# Control+M takes the last zone again from the live screen.
check_same_zone_again() {
    wh_wait_window_gone "$OVERLAY" 10 || return 1
    sleep 1
    wh_key_hold "$MAIN" ctrl+m 0.4 || return 1
    mv_new_capture 4 zone4 || return 1
    wh_assert_same zone4 "$WH_ART/zone4.bmp" "$WH_ART/want2.png"
}

# Control+Y after a session grabs the screen again under the first grab and opens on the
# seam: the view's upper half is the lower half of the first grab, its lower half the upper
# half of the second, both dimmed.
check_double_height() {
    mv_open_overlay || return 1
    wh_key "$OVERLAY" Escape || return 1
    wh_wait_window_gone "$OVERLAY" 10 || return 1
    sleep 1
    wh_mouse_move 1240 300
    wh_key_hold "$MAIN" ctrl+y 0.4 || return 1
    wh_wait_for "the overlay" 15 mv_overlay_wid || return 1
    sleep 1
    wh_mouse_move 1270 1010
    sleep 0.5
    wh_screenshot double.png
    convert "$WH_ART/dimmed.png" -roll +0-512 "$WH_ART/dimmed-seam.png"
    local band
    for band in 250x300+100+150 250x300+100+600; do
        wh_diff_count "$WH_ART/double.png" "$WH_ART/dimmed-seam.png" --region $band --fuzz 1% || return 1
        ((WH_DIFF == 0)) || { wh_reason "$WH_DIFF pixels of $band are not the seam's"; return 1; }
    done
    wh_key "$OVERLAY" Escape || return 1
    wh_wait_window_gone "$OVERLAY" 10
}

# Multi-selection (button 8): each right click captures, the list stands over the
# overlay for a moment, then the frozen screen is back for the next rectangle, moved by a
# drag from inside it; Escape ends the session. The rectangle keeps the size the handle
# drag gave it.
check_multi_selection() {
    wh_wait_for "capture 4" 15 mv_nth_capture 4 || return 1
    mv_click_button 8
    mv_open_overlay || return 1
    local list k dx=(0 -300 300) dy=(0 -250 200) x=$RX y=$RY
    list=$(xdotool search --name '^Collection$' | head -1)
    for k in 0 1 2; do
        if ((k > 0)); then
            # A first move inside the clear spot hands the mouse to the picture beneath. The
            # drag goes in small steps, from the middle: the rectangle follows only a mouse
            # that stays 500 twips inside it.
            wh_mouse_move $((x + 200)) $((y + 160))
            sleep 0.3
            wh_drag root $((x + 200)) $((y + 160)) $((x + 200 + dx[k])) $((y + 160 + dy[k])) 1 10 || return 1
            x=$((x + dx[k])) y=$((y + dy[k]))
            sleep 0.5
            wh_screenshot multi-moved$k.png
        fi
        wh_click root 200 990 3 || return 1
        mv_new_capture $((5 + k)) multi$k || return 1
        mv_crop 475 323 $((x + 1)) $((y + 1)) want-multi$k
        wh_assert_same multi$k "$WH_ART/multi$k.bmp" "$WH_ART/want-multi$k.png" || return 1
        # Without a window manager Wine holds the hide of the framed list for 2 s.
        wh_wait_window_gone "$list" 10 || return 1
        mv_overlay_wid || { wh_reason "the overlay did not come back after capture $((k + 1))"; return 1; }
    done
    # A held Enter takes one capture; Alt+F4 then ends the session as Escape does.
    wh_focus "$OVERLAY" || return 1
    _wh_xdo keydown Return && sleep 1.5 && _wh_xdo keyup Return
    mv_new_capture 8 held-enter || return 1
    wh_wait_window_gone "$list" 10 || return 1
    mv_overlay_wid || { wh_reason "the overlay did not come back after the held Enter"; return 1; }
    sleep 1
    (($(temp_files | wc -l) == 8)) || { wh_reason "a held Enter took $(($(temp_files | wc -l) - 7)) captures"; return 1; }
    wh_key "$OVERLAY" alt+F4 || return 1
    mv_back_to_main || return 1
    kill -0 "$WH_PID_PROGRAM" 2>/dev/null || { wh_reason "Alt+F4 ended the program"; return 1; }
    (($(temp_files | wc -l) == 8)) || { wh_reason "Alt+F4 took a capture"; return 1; }
    mv_click_button 8
}

# quit_discarding: Control+Q, and No to keeping the captures.
quit_discarding() {
    # After a zone the main window comes back once Wine has let the overlay go.
    wh_wait_for "the main window" 10 wh_window_visible "$MAIN" || return 1
    wh_key "$MAIN" ctrl+q || return 1
    wh_find_window '^Mirovanta - quit$' 10 || return 1
    wh_key "$WH_WID" n || return 1
    wh_wait_exit "$WH_PID_PROGRAM" 20
}

# placed_mode 0|1: column 120 of the settings line, free (0) or placed (1) rectangle.
placed_mode() { mv_set_column 120 "$1"; }

# Free mode (column 120 of the settings line at 0): a drawing is captured on release.
check_free_drawing() {
    quit_discarding || return 1
    placed_mode 0
    mv_start "$BIN" || return 1
    mv_open_overlay || return 1
    wh_screenshot free-mode.png
    # Halfway through the drawing the clear spot follows the mouse (the size text, right of
    # the rectangle, is one move behind).
    _wh_xdo mousemove 100 600 mousedown 1 || return 1
    local i
    for i in 1 2 3 4; do _wh_xdo mousemove $((100 + 25 * i)) $((600 + 25 * i)); sleep 0.05; done
    sleep 0.5
    wh_screenshot free-drawing.png
    wh_assert_same drawing-spot "$WH_ART/free-drawing.png" "$WH_PICTURE" --region 70x90+105+605 || return 1
    for i in 1 2 3 4; do _wh_xdo mousemove $((200 + 25 * i)) $((700 + 12 * i + i / 2)); sleep 0.05; done
    _wh_xdo mousemove 300 750 mouseup 1 || return 1
    mv_new_capture 1 free || return 1
    mv_crop 200 150 101 601 want-free
    wh_assert_same free "$WH_ART/free.bmp" "$WH_ART/want-free.png" || return 1
    wh_wait_window_gone "$OVERLAY" 10 || return 1
    quit_discarding
}

wh_check "Control+Z shows the frozen screen dimmed, clean inside the rectangle" check_overlay_shows_the_dimmed_screen
wh_check "a right click captures the rectangle's pixels, one pixel in" check_right_click_captures_the_rectangle
wh_check "a handle dragged with the mouse resizes the rectangle" check_handle_drag_resizes
wh_check "command 11 reopens the frozen screen after the screen changed" check_back_to_the_frozen_screen
wh_check "Control+M takes the same zone from the live screen" check_same_zone_again
wh_check "Control+Y grabs the screen again under the first and opens on the seam" check_double_height
wh_check "three rectangles in multi-selection give three captures, a held Enter one, Alt+F4 none" check_multi_selection
wh_check "in free mode a drawn rectangle is captured on release" check_free_drawing

# The keys on the rectangle: Right five times (+5 wide), Alt+Down (+20 high),
# Shift+Left (one left), Control+Up (20 up), then Enter; Escape captures nothing.
check_keys() {
    placed_mode 1
    mv_start "$BIN" || return 1
    # Control+Z in another program; the keys reach the overlay while it slides in. (Wine
    # without a window manager moves the X focus only for xdotool: Windows gives the
    # overlay the foreground by itself.)
    wh_launch -l notepad.log notepad
    wh_find_window 'Notepad' 20 || return 1
    # Out of the way of the rectangle, in the lower left corner.
    _wh_xdo windowmove "$WH_WID" 0 700
    wh_mouse_move $((WH_SCREEN_W - 40)) 300
    sleep 0.5
    wh_screenshot before-keys.png
    wh_key_hold "$WH_WID" ctrl+z 0.4 || return 1
    wh_wait_for "the overlay" 15 mv_overlay_up || return 1
    wh_key "$OVERLAY" Right Right Right Right Right alt+Down shift+Left ctrl+Up || return 1
    wh_wait_for "the overlay in place" 5 mv_overlay_wid || return 1
    sleep 0.5
    wh_screenshot keys.png
    wh_key "$OVERLAY" Return || return 1
    mv_new_capture 1 keys || return 1
    # The rectangle opens centred with the size of the last zone, which the settings kept.
    local w h
    read -r w h < <(identify -format '%w %h' "$WH_ART/keys.bmp")
    convert "$WH_ART/before-keys.png" -crop "${w}x$h+$(((1280 - w + 5) / 2))+$(((1024 - h + 20) / 2 - 19))" \
        +repage "$WH_ART/want-keys.png"
    wh_assert_same keys "$WH_ART/keys.bmp" "$WH_ART/want-keys.png" || return 1
    mv_back_to_main || return 1
    mv_open_overlay || return 1
    wh_key "$OVERLAY" Escape || return 1
    mv_back_to_main || return 1
    sleep 1
    (($(temp_files | wc -l) == 1)) || { wh_reason "Escape left a capture"; return 1; }
    quit_discarding
}
wh_check "from another program the overlay has the keys as it slides in: arrows with Alt, Shift and Control size and move the rectangle; Enter takes it" check_keys

# A long page, 2048 rows whose pixels tell their place: red x mod 256, green y mod 256,
# blue (x / 256) * 16 + y / 256.
make_page() {
    awk -v W=1280 -v H=2048 'BEGIN { printf "P3\n%d %d\n255\n", W, H
        for (y = 0; y < H; y++) { l = ""
            for (x = 0; x < W; x++) l = l (x % 256) " " (y % 256) " " (int(x / 256) * 16 + int(y / 256)) " "
            print l } }' | convert ppm:- -depth 8 -type TrueColor "png24:$WH_ART/page.png"
    convert "$WH_ART/page.png" -crop 1280x1024+0+0 +repage "$WH_ART/page-top.png"
    convert "$WH_ART/page.png" -crop "1280x1024+0+$PAGE_SCROLL" +repage "$WH_ART/page-scrolled.png"
}

# The long page road: its top shown, Control+Z and Enter (the default rectangle), Control+Z
# and Escape; the page scrolled by 1000 rows, Control+Y; the 22 rows seen twice trimmed at the seam with F6 and F7 (12 and 10,
# each after one too many given back); the rectangle moved across the seam and Enter.
# The capture is one piece of the page: its first pixel says where, and the rows run on
# across the seam.
PAGE_SCROLL=1000
check_long_page() {
    placed_mode 1
    mv_set_column 93 04200260
    make_page || { wh_reason "making the page failed"; return 1; }
    local picture=$WH_PICTURE picture_pid=$WH_PICTURE_PID top_pid
    wh_show_picture "$WH_ART/page-top.png"
    top_pid=$WH_PICTURE_PID
    mv_start "$BIN" || return 1
    # Control+Z and Enter: the default rectangle in the middle, one pixel in.
    mv_open_overlay || return 1
    wh_key "$OVERLAY" Return || return 1
    mv_new_capture 1 page-default || return 1
    convert "$WH_ART/page-top.png" -crop 420x260+431+383 +repage "$WH_ART/want-page-default.png"
    wh_assert_same page-default "$WH_ART/page-default.bmp" "$WH_ART/want-page-default.png" || return 1
    mv_back_to_main || return 1
    mv_open_overlay || return 1
    wh_key "$OVERLAY" Escape || return 1
    mv_back_to_main || return 1
    wh_show_picture "$WH_ART/page-scrolled.png"
    kill "$top_pid"
    wh_mouse_move 1240 300
    wh_key_hold "$MAIN" ctrl+y 0.4 || return 1
    wh_wait_for "the overlay" 15 mv_overlay_wid || return 1
    sleep 1
    local keys=() i
    for i in {1..30}; do keys+=(ctrl+Down); done
    for i in {1..13}; do keys+=(F6); done
    for i in {1..11}; do keys+=(F7); done
    wh_key "$OVERLAY" "${keys[@]}" shift+F6 shift+F7 || return 1
    sleep 0.5
    wh_screenshot long-page-seam.png
    wh_key "$OVERLAY" Return || return 1
    mv_new_capture 2 long-page || return 1
    kill "$WH_PICTURE_PID"
    WH_PICTURE=$picture WH_PICTURE_PID=$picture_pid
    local px w h x y
    px=$(convert "$WH_ART/long-page.bmp" -format '%[pixel:p{0,0}]' info:)
    [[ $px =~ ([0-9]+),([0-9]+),([0-9]+) ]] || { wh_reason "first pixel $px"; return 1; }
    x=$((BASH_REMATCH[1] + 256 * (BASH_REMATCH[3] / 16)))
    y=$((BASH_REMATCH[2] + 256 * (BASH_REMATCH[3] % 16)))
    read -r w h < <(identify -format '%w %h' "$WH_ART/long-page.bmp")
    convert "$WH_ART/page.png" -crop "${w}x$h+$x+$y" +repage "$WH_ART/want-long-page.png"
    wh_assert_same long-page "$WH_ART/long-page.bmp" "$WH_ART/want-long-page.png" || return 1
    # The seam lies at the page's row 1012 (the view's 1022, the upper grab 10 rows down);
    # the rectangle went 600 rows down from the middle of the view.
    ((y < 1012 && y + h > 1012)) || { wh_reason "rows $y to $((y + h)) miss the seam"; return 1; }
    ((x == 431 && y == 382 + 600 + 1 - 10)) || { wh_reason "the capture starts at $x,$y"; return 1; }
    quit_discarding
}
wh_check "Control+Z and Enter take the default rectangle; a long page, scrolled, Control+Y, F6 and F7 fitting the seam: Enter takes rows across it" check_long_page

# 20 captures taken and deleted leave the window-system objects where they were (the soak
# bench, bench/run_soak.sh, runs the long version with windows and zones).
check_no_leak() {
    local script="$WH_TMP/leak.txt" counts="$WH_TMP/counts.txt" done="$WH_TMP/leak-done.txt"
    # The windows stay up and one capture stays in the list: without a window manager
    # Wine waits up to 2 s at each hide, and the loop is about what a capture holds.
    cat > "$script" <<SCRIPT
wait 1500
keepwindows
click 1
wait 300
click 1
wait 300
key 46 0
wait 300
gui $(winepath -w "$counts")
repeat 20
click 1
wait 20
key 46 0
wait 20
end
wait 300
gui $(winepath -w "$counts")
mark $(winepath -w "$done") done
waitfile $(winepath -w "$WH_TMP/leak-quit")
saveall bmp
key 81 2
SCRIPT
    wh_launch_driver "$BIN" "$script"
    local program=$WH_PID
    wh_wait_file "$done" 600 || return 1
    cp "$counts" "$WH_ART/gui-counts.txt"
    local first last
    first=$(head -1 "$counts" | cut -d' ' -f1,2); last=$(tail -1 "$counts" | cut -d' ' -f1,2)
    [[ "$first" == "$last" ]] || { wh_reason "GDI/USER objects went from $first to $last"; return 1; }
    # The capture kept in the list is the only file left.
    local left
    left=$(temp_files | wc -l)
    ((left == 1)) || { wh_reason "$left temporary files left instead of 1"; return 1; }
    # Its windows would stand over those of the next run: the capture is saved, then Quit.
    touch "$WH_TMP/leak-quit"
    wh_wait_exit "$program" 30
}
wh_check "20 captures taken and deleted leak no GDI or USER object" check_no_leak

# A click on a thumbnail's tick box reaches the program: the box's own notification,
# passed on by the window that holds it, ticks the capture, and a second click unticks it.
lines_at_least() { (($(wc -l < "$1") >= $2)); }

check_tick_box() {
    local script="$WH_TMP/tick.txt" ticks="$WH_TMP/ticks.txt" clicked="$WH_TMP/clicked.txt"
    local done="$WH_TMP/tick-done.txt" x y v
    rm -f "$ticks" "$clicked" "$done"
    cat > "$script" <<SCRIPT
wait 1500
keepwindows
click 1
wait 800
ticks $(winepath -w "$ticks")
waitfile $(winepath -w "$clicked")
wait 300
ticks $(winepath -w "$ticks")
waitfile $(winepath -w "$clicked")2
wait 300
ticks $(winepath -w "$ticks")
mark $(winepath -w "$done") done
key 46 0
wait 300
key 81 2
SCRIPT
    wh_launch_driver "$BIN" "$script"
    local program=$WH_PID
    wh_wait_file "$ticks" 60 || return 1
    read -r x y v < <(tr -d '\r' < "$ticks")
    [[ $v == 0 ]] || { wh_reason "the new capture is ticked already ($v)"; return 1; }
    wh_click root "$x" "$y" || return 1
    touch "$clicked"
    wh_wait_for "the second reading" 30 lines_at_least "$ticks" 2 || return 1
    wh_click root "$x" "$y" || return 1
    touch "${clicked}2"
    wh_wait_file "$done" 60 || return 1
    cp "$ticks" "$WH_ART/ticks.txt"
    local values
    values=$(tr -d '\r' < "$ticks" | awk '{printf "%s", $3}')
    [[ $values == 010 ]] || { wh_reason "tick values $values, want 010"; return 1; }
    wh_wait_exit "$program" 30
}
wh_check "a click on a tick box ticks the capture and a second unticks it" check_tick_box

# A capture whose temporary file was deleted from outside: Delete removes its row, clearing
# the list goes through to the end, and the next capture lands in the list.
check_vanished_file() {
    local script="$WH_TMP/vanish.txt" t1="$WH_TMP/t1.txt" t3="$WH_TMP/t3.txt"
    local ready="$WH_TMP/v-ready" cleared="$WH_TMP/v-cleared" done="$WH_TMP/v-done"
    cat > "$script" <<SCRIPT
wait 1500
keepwindows
click 1
wait 300
click 1
wait 300
click 1
wait 500
mark $(winepath -w "$ready") ready
waitfile $(winepath -w "$WH_TMP/v-go1")
key 46 0
wait 500
ticks $(winepath -w "$t1")
waitfile $(winepath -w "$WH_TMP/v-go2")
click 10
wait 500
mark $(winepath -w "$cleared") cleared
click 1
wait 500
ticks $(winepath -w "$t3")
mark $(winepath -w "$done") done
key 46 0
wait 300
key 81 2
SCRIPT
    wh_launch_driver "$BIN" "$script"
    local program=$WH_PID
    wh_wait_file "$ready" 60 || return 1
    rm -f "$(temp_files | tail -1)" # the third, the current capture
    touch "$WH_TMP/v-go1"
    wh_wait_file "$t1" 30 || return 1
    (($(wc -l < "$t1") == 2)) || { wh_reason "$(wc -l < "$t1") rows after Delete, want 2"; return 1; }
    rm -f "$(temp_files | head -1)"
    touch "$WH_TMP/v-go2"
    # Clearing the list asks first: OK.
    wh_find_window '^Mirovanta$' 20 || return 1
    wh_key "$WH_WID" Return || return 1
    wh_wait_file "$cleared" 30 || return 1
    has_temp_file && { wh_reason "temporary files left: $(temp_files)"; return 1; }
    wh_wait_file "$done" 30 || return 1
    (($(wc -l < "$t3") == 1)) || { wh_reason "$(wc -l < "$t3") rows after a new capture, want 1"; return 1; }
    wh_wait_exit "$program" 30
}
wh_check "a capture whose file vanished is deleted, the list cleared, and a new one lands" check_vanished_file

# A script word the driver does not know ends the run at once, before any step: a check
# with a typing error fails instead of waiting on a step that never comes.
check_driver_refuses() {
    local script="$WH_TMP/typo.txt" log="$WH_ART/driver.log"
    printf 'wait 100\nclik 1\nwait 600000\n' > "$script"
    : > "$log"
    wh_launch_driver "$BIN" "$script"
    wh_wait_exit "$WH_PID" 30 || return 1
    ((WH_EXIT_CODE == 3)) || { wh_reason "the driver ended with $WH_EXIT_CODE, want 3"; return 1; }
    grep -q "unknown command 'clik' on line 2" "$log" ||
        { wh_reason "driver.log does not name the unknown word"; return 1; }
}
wh_check "the test driver refuses a script with an unknown word" check_driver_refuses

wh_finish
