#!/usr/bin/env bash
# Checks of timed capture under Wine, over a window whose colour counts (tools/counter.cpp):
# the schedule dialog, a slow run of three images in PNG whose pixels follow the screen, and
# a burst of twenty JPEG images that removes its own bitmaps and no other.
# Usage: check_timed.sh BIN_DIR
set -euo pipefail
here=$(cd "$(dirname "${BASH_SOURCE[0]}")" && pwd)
source "$here/lib.sh"
source "$here/program.sh"
BIN=$(cd "${1:?usage: check_timed.sh BIN_DIR}" && pwd)

wh_init timed
wh_start_xvfb 1280x1024
wh_show_picture
wh_start_wine
mv_use_prefix

TPP=15
SAVED="$WINEPREFIX/drive_c/users/$(id -un)/Documents"
saved() { find "$SAVED" -maxdepth 1 -name "Capt_*.$1" 2>/dev/null | sort; }
# The counter covers the default rectangle (430,382 420x260) of the overlay.
wh_launch "$BIN/counter.exe" 380 330 520 360

CHRONO=""
chrono() { wh_find_window 'Periodic capture$' 1 && CHRONO=$WH_WID; }
# chrono_click X Y: a click at twips X Y of the schedule's client area.
chrono_click() {
    wh_window_geometry "$CHRONO" || return 1
    wh_click root $((WH_X + $1 / TPP)) $((WH_Y + $2 / TPP))
}
# field I TEXT: field I of the plan (1-10) gets TEXT, as typed.
field() {
    local i=$1 row col left
    if (($1 == 10)); then row=2 col=3; else row=$((($1 - 1) / 3)) col=$((($1 - 1) % 3)); fi
    left=$((1500 + col * 1020))
    chrono_click $((left + 100)) $((700 + row * 770 + 150)) || return 1
    wh_key "$CHRONO" End BackSpace BackSpace BackSpace BackSpace || return 1
    wh_type "$CHRONO" "$2"
}
count_field() {
    chrono_click 6800 1620 || return 1
    wh_key "$CHRONO" End BackSpace BackSpace BackSpace || return 1
    wh_type "$CHRONO" "$1"
}
# centre_count FILE: the count the counter showed, from the colour of the file's middle.
centre_count() {
    local rgb
    rgb=$(convert "$1" -crop 1x1+210+130 +repage -format '%[fx:int(255*r+.5)] %[fx:int(255*g+.5)] %[fx:int(255*b+.5)]' info:)
    read -r R G B <<<"$rgb"
    echo $((R + 256 * G))
}

check_dialog() {
    mv_start "$BIN" || return 1
    mv_open_overlay || return 1
    wh_key "$OVERLAY" Return || return 1
    mv_new_capture 1 zone || return 1
    wh_wait_window_gone "$OVERLAY" 10 || return 1
    sleep 2
    mv_click_button 13 || return 1
    # A save folder that holds files brings the warning first.
    sleep 2
    if wh_find_window '^Mirovanta$' 1; then
        wh_screenshot folder-warning.png
        wh_key "$WH_WID" Return || return 1
    fi
    WH_REASON=""
    wh_wait_for "the schedule" 15 chrono || { wh_screenshot no-schedule.png; return 1; }
    sleep 1
    wh_screenshot schedule.png
    local title
    title=$(wh_window_title "$CHRONO")
    [[ $title =~ ^[0-2][0-9]:[0-5][0-9]:[0-5][0-9]\ Periodic\ capture$ ]] ||
        { wh_reason "caption: $title"; return 1; }
}

# Every 2 seconds, 3 images, PNG: three files after the zone, each the counter at its time.
check_slow_run() {
    [[ -n $CHRONO ]] || { wh_reason "no schedule"; return 1; }
    field 9 02 && count_field 3 || return 1
    chrono_click 3000 3100 || return 1 # png
    sleep 0.5
    wh_screenshot schedule-planned.png
    chrono_click 1050 4310 || return 1 # Start
    wh_mouse_move 1200 950
    wh_wait_for "the first image" 30 eval '[[ $(saved png | wc -l) -ge 2 ]]' || return 1
    # The schedule comes back during the run, counting down.
    mv_click_button 13 || return 1
    sleep 1.5
    wh_screenshot schedule-running.png
    wh_wait_for "three images" 40 eval '[[ $(saved png | wc -l) -ge 4 ]]' || return 1
    sleep 4
    local files n previous=-1 f
    files=$(saved png)
    n=$(wc -l <<<"$files")
    ((n == 4)) || { wh_reason "$n PNG files: $(ls "$SAVED")"; return 1; }
    [[ -z $(saved bmp) ]] || { wh_reason "bitmaps left: $(saved bmp)"; return 1; }
    for f in $(tail -3 <<<"$files"); do
        cp "$f" "$WH_ART/"
        local c
        c=$(centre_count "$f")
        # Two seconds of counting at 50 ms apart, give or take the capture's own time.
        ((c > previous + 15)) || { wh_reason "counts not following the screen: $previous then $c"; return 1; }
        previous=$c
    done
}

# Every 100 ms, 20 images, JPEG: twenty files that follow the counter, its bitmaps gone, an
# older bitmap of the folder left alone.
check_burst() {
    [[ -n $CHRONO ]] || { wh_reason "no schedule"; return 1; }
    cp "$WH_ART/zone.bmp" "$SAVED/older.bmp"
    # The schedule's command brings it back above the main window.
    mv_click_button 13 || return 1
    sleep 1
    chrono || return 1
    field 9 00 && field 10 0100 && count_field 20 || return 1
    chrono_click 1300 3100 || return 1 # jpg
    sleep 0.5
    wh_screenshot burst-planned.png
    chrono_click 1050 4310 || return 1 # Start
    wh_mouse_move 1200 950
    wh_wait_for "the end of the burst" 40 eval 'wh_find_window "^Mirovanta$" 1' || return 1
    local box=$WH_WID
    wh_screenshot burst-done.png
    wh_key "$box" Return || return 1
    wh_wait_window_gone "$box" 10 || return 1
    # Its own bitmaps go once the box is answered.
    wh_wait_for "the burst's bitmaps to go" 10 eval '[[ -z $(saved bmp) ]]' || return 1
    local files
    files=$(saved jpg)
    [[ $(wc -l <<<"$files") == 20 ]] || { wh_reason "$(wc -l <<<"$files") JPEG files"; return 1; }
    [[ $(basename "$(head -1 <<<"$files")") =~ ^Capt_[0-9]{6}_001\.jpg$ ]] ||
        { wh_reason "name: $(head -1 <<<"$files")"; return 1; }
    [[ -z $(saved bmp) ]] || { wh_reason "the burst's bitmaps stay: $(saved bmp)"; return 1; }
    [[ -f $SAVED/older.bmp ]] || { wh_reason "the older bitmap was deleted"; return 1; }
    local f counts=()
    for f in $files; do counts+=("$(centre_count "$f")"); done
    local distinct
    distinct=$(printf '%s\n' "${counts[@]}" | sort -un | wc -l)
    ((distinct >= 10)) || { wh_reason "the images did not follow the screen: ${counts[*]}"; return 1; }
    kill -0 "$WH_PID_PROGRAM" 2>/dev/null || { wh_reason "the program ended"; return 1; }
}

# Files/Fichiers opens the side window of the save folder; its Close button closes it.
check_files_window() {
    [[ -n $CHRONO ]] || { wh_reason "no schedule"; return 1; }
    chrono_click 4750 4310 || return 1
    wh_find_window 'Documents$' 10 || return 1
    local side=$WH_WID
    sleep 1
    wh_screenshot files-window.png
    wh_window_geometry "$side" || return 1
    # Under Wine a tool window carries its own caption bar inside its X window.
    wh_click root $((WH_X + 3250 / TPP)) $((WH_Y + 4450 / TPP)) || return 1
    wh_wait_window_gone "$side" 10
}

wh_check "the schedule opens over a zone with its clock in the caption" check_dialog
wh_check "a slow run of 2 s for 3 images writes three PNG files that follow the screen" check_slow_run
wh_check "a burst of 100 ms for 20 images in JPEG removes its bitmaps and no other" check_burst
wh_check "Files/Fichiers shows the save folder beside the schedule" check_files_window
wh_finish
