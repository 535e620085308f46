#!/usr/bin/env bash
# Checks of the start, the language, the settings file, the hotkeys and the exit of the
# real program under Wine, from a fresh prefix.
# Usage: check_startup.sh BIN_DIR
set -euo pipefail
here=$(cd "$(dirname "${BASH_SOURCE[0]}")" && pwd)
source "$here/lib.sh"
source "$here/program.sh"
BIN=$(cd "${1:?usage: check_startup.sh BIN_DIR}" && pwd)
LANG_DIR="$here/../../assets/lang"

wh_init startup
wh_start_xvfb 1280x1024
wh_show_picture
wh_start_wine
mv_use_prefix

# entry LANG N: the text of language entry N (ConstPRJA or ConstPRJF) from its source.
entry() { sed -n "s/^$2 [^\"]*\"\\([^\"]*\\)\".*/\\1/p" "$LANG_DIR/$1.txt"; }
temp_folders() { find "$APPDATA" -maxdepth 1 -name 'tempocapt*' 2>/dev/null; }
count_temp_files() { [ "$(temp_files | wc -l)" -ge "$1" ]; }

launch() {
    wh_launch "$BIN/mirovanta.exe"
    PROGRAM=$WH_PID
    WH_PID_PROGRAM=$WH_PID
}
wait_main() {
    wh_find_window "^Mirovanta - $(entry "$1" 210)\$" 20 || return 1
    MAIN=$WH_WID
    sleep 2 # the opening animation brings the hotkeys alive
}
quit_without_captures() {
    wh_key "$MAIN" ctrl+q || return 1
    wh_wait_exit "$PROGRAM" 15
}

check_chooser() {
    launch
    wh_find_window '^Mirovanta$' 20 || return 1
    CHOOSER=$WH_WID
    sleep 0.5
    wh_screenshot chooser.png
    [[ ! -e "$APPDATA/spoken.txt" ]] || { wh_reason "spoken.txt exists before the choice"; return 1; }
}

check_french() {
    wh_click "$CHOOSER" 82 50 # the French flag
    wait_main ConstPRJF || return 1
    wh_screenshot main-fr.png
    [[ "$(head -c 9 "$APPDATA/spoken.txt")" == ConstPRJF ]] || { wh_reason "spoken.txt: $(cat "$APPDATA/spoken.txt")"; return 1; }
}

check_first_run_settings() {
    local want line1
    want="$(printf 'X%.0s' {1..92})04200260ZMEFY00007Capt111001010000    mspaint.exe$(printf ' %.0s' {1..139})c:\\tempocapt<======="
    line1=$(head -1 "$APPDATA/params.txt" | tr -d '\r')
    [[ "$line1" == "$want" ]] || { wh_reason "line 1 of params.txt is '$line1'"; return 1; }
    [[ "$(sed -n 2p "$APPDATA/params.txt" | tr -d '\r')" == *Documents* ]] ||
        { wh_reason "line 2 is not the Personal folder"; return 1; }
}

check_quit_removes_the_temporary_folder() {
    [[ -n "$(temp_folders)" ]] || { wh_reason "no temporary folder while running"; return 1; }
    quit_without_captures || return 1
    [[ -z "$(temp_folders)" ]] || { wh_reason "left behind: $(temp_folders)"; return 1; }
}

check_second_start_skips_the_chooser() {
    launch
    wait_main ConstPRJF || return 1
    if xdotool search --onlyvisible --name '^Mirovanta$' >/dev/null 2>&1; then
        wh_reason "the chooser showed again"; return 1
    fi
    quit_without_captures
}

check_english() {
    printf 'ConstPRJA\r\n' > "$APPDATA/spoken.txt"
    launch
    wait_main ConstPRJA || return 1
    wh_screenshot main-en.png
}

# Control+E while another program is in front: the whole screen, that program included.
check_hotkey_whole_screen() {
    wh_launch -l notepad.log notepad
    wh_find_window 'Notepad' 20 || return 1
    NOTEPAD=$WH_WID
    wh_mouse_move 300 700
    sleep 0.5
    wh_window_geometry "$MAIN" || return 1
    local main_box="$((WH_W + 8))x$((WH_H + 27))+$((WH_X - 4))+$((WH_Y - 23))"
    wh_screenshot before-hotkey.png
    local played
    played=$(mv_sound_bytes)
    wh_key_hold "$NOTEPAD" ctrl+e 0.6 || return 1
    # The shutter: the camera window and the whole sound.
    mv_catch_shutter shutter || return 1
    wh_wait_for "a temporary BMP" 20 count_temp_files 1 || return 1
    (($(mv_sound_bytes) - played >= $(mv_shutter_sound_bytes))) ||
        { wh_reason "the device played $(($(mv_sound_bytes) - played)) bytes"; return 1; }
    sleep 1
    CAPTURE_E=$(temp_files | tail -1)
    cp "$CAPTURE_E" "$WH_ART/hotkey-e.bmp"
    # Equal but for the main window, which hid for the grab, the stamped cursor and
    # notepad's blinking caret.
    wh_diff_count "$CAPTURE_E" "$WH_ART/before-hotkey.png" --exclude "$main_box" \
        --exclude 48x48+292+692 --exclude 16x30+4+40 --diff "$WH_ART/hotkey-e-diff.png"
    ((WH_DIFF == 0)) || { wh_reason "$WH_DIFF pixels differ from the screen"; return 1; }
}

# Control+F: the window in front. Minesweeper stands in front this time: notepad would
# open its Find box on the same keys, sooner or later than the grab.
check_hotkey_window() {
    # Delete the first capture: the main window goes back to its strip, the thumbnails hide
    # (Wine takes up to 2 s to hide a window when no window manager answers).
    local list
    list=$(xdotool search --onlyvisible --name '^Collection$' | head -1)
    wh_key "$MAIN" Delete || return 1
    wh_wait_for "the first capture deleted" 10 test ! -f "$CAPTURE_E" || return 1
    [[ -z "$list" ]] || wh_wait_window_gone "$list" 10 || return 1
    wh_launch -l winemine.log winemine
    wh_find_window 'Mine' 20 || return 1
    local mine=$WH_WID
    sleep 1
    mv_window_capture "$mine" hotkey-f 1 || return 1
    CAPTURE_F=$(temp_files | tail -1)
}

check_exit_question_cancel() {
    wh_key "$MAIN" ctrl+q || return 1
    wh_find_window "^$(entry ConstPRJA 116)\$" 10 || return 1
    local box=$WH_WID
    wh_screenshot exit-question.png
    wh_key "$box" Escape || return 1
    wh_wait_window_gone "$box" 10 || return 1
    sleep 0.5
    kill -0 "$PROGRAM" 2>/dev/null || { wh_reason "the program ended"; return 1; }
    [[ -f "$CAPTURE_F" ]] || { wh_reason "the capture was lost"; return 1; }
}

check_exit_question_no() {
    wh_key "$MAIN" ctrl+q || return 1
    wh_find_window "^$(entry ConstPRJA 116)\$" 10 || return 1
    wh_key "$WH_WID" n || return 1
    wh_wait_exit "$PROGRAM" 15 || return 1
    [[ -z "$(temp_folders)" ]] || { wh_reason "left behind: $(temp_folders)"; return 1; }
}

# The repair question of a damaged params.txt, a box titled like the main window, which
# stands at the top right: the question is the one in the middle of the screen.
question_in_middle() {
    local w
    for w in $(xdotool search --onlyvisible --name '^Mirovanta$' 2>/dev/null); do
        wh_window_geometry "$w" || continue
        if ((WH_Y > 200)); then QUESTION=$w; QX=$WH_X; QY=$WH_Y; QW=$WH_W; QH=$WH_H; return 0; fi
    done
    return 1
}

# FIRST_LINE: line 1 as a first start writes it; REPAIR_LINE: as the repair road writes it
# (no double-height key, no placed rectangle).
FIRST_LINE="$(printf 'X%.0s' {1..92})04200260ZMEFY00007Capt111001010000    mspaint.exe$(printf ' %.0s' {1..139})c:\\tempocapt<======="
REPAIR_LINE="${FIRST_LINE:0:104}2${FIRST_LINE:105:14}0${FIRST_LINE:120}"

# A one-line params.txt asks the repair question. No ends the program at once and leaves
# the file as it was; Yes writes the repair file, says so, and ends the program.
check_repair_no() {
    printf 'ConstPRJA\r\n' > "$APPDATA/spoken.txt"
    printf 'garbage only\r\n' > "$APPDATA/params.txt"
    cp "$APPDATA/params.txt" "$WH_TMP/params-before.txt"
    launch
    wh_wait_for "the repair question" 20 question_in_middle || return 1
    sleep 1 # the splash's time runs out behind the question
    wh_screenshot repair-question.png
    # No: the right-hand button of the two, at the bottom of the box.
    wh_click root $((QX + QW / 2 + 35)) $((QY + QH - 20)) || return 1
    wh_wait_exit "$PROGRAM" 15 || return 1
    cmp -s "$APPDATA/params.txt" "$WH_TMP/params-before.txt" ||
        { wh_reason "params.txt changed: $(head -c 80 "$APPDATA/params.txt")"; return 1; }
}

check_repair_yes() {
    launch
    wh_wait_for "the repair question" 20 question_in_middle || return 1
    sleep 1
    wh_click root $((QX + QW / 2 - 35)) $((QY + QH - 20)) || return 1
    local first=$QUESTION
    wh_wait_for "the notice of the repair" 20 question_in_middle_but "$first" || return 1
    wh_screenshot repair-done.png
    wh_key "$QUESTION" Return || return 1
    wh_wait_exit "$PROGRAM" 15 || return 1
    local line1
    line1=$(head -1 "$APPDATA/params.txt" | tr -d '\r')
    [[ "$line1" == "$REPAIR_LINE" ]] || { wh_reason "line 1 is '$line1'"; return 1; }
}
question_in_middle_but() { question_in_middle && [[ $QUESTION != "$1" ]]; }

# A line 1 cut after 103 characters leaves the window and double-height keys blank: the
# program starts, no box comes for ten seconds, and Control+E still captures.
check_short_settings_line() {
    printf '%s\r\nC:\\users\r\n' "${FIRST_LINE:0:103}" > "$APPDATA/params.txt"
    launch
    wait_main ConstPRJA || return 1
    sleep 10
    if question_in_middle; then wh_reason "a box came up"; return 1; fi
    local before
    before=$(temp_files | wc -l)
    wh_key_hold "$MAIN" ctrl+e 0.6 || return 1
    wh_wait_for "a capture" 20 count_temp_files $((before + 1)) || return 1
    sleep 1
    if question_in_middle; then wh_reason "a box came up after the capture"; return 1; fi
}

# With Silence (column 121) set, the shutter window shows and nothing plays.
check_silent_shutter() {
    wh_key "$MAIN" ctrl+q || return 1
    wh_find_window "^$(entry ConstPRJA 116)\$" 10 || return 1
    wh_key "$WH_WID" n || return 1
    wh_wait_exit "$PROGRAM" 15 || return 1
    printf '%s\r\nC:\\users\r\n' "$FIRST_LINE" > "$APPDATA/params.txt"
    mv_set_column 121 1
    launch
    wait_main ConstPRJA || return 1
    local played
    played=$(mv_sound_bytes)
    wh_key_hold "$MAIN" ctrl+e 0.6 || return 1
    mv_catch_shutter silent-shutter || return 1
    sleep 1
    (($(mv_sound_bytes) == played)) || { wh_reason "a sound played"; return 1; }
}

# A run killed with two captures leaves them on the disk; the next start asks once, and Yes
# brings them back into the list, pixel for pixel, and removes the old folder.
check_killed_run_comes_back() {
    # From a clean slate, whatever the program before left.
    kill -9 "$PROGRAM" || true
    wh_wait_exit "$PROGRAM" 15 || return 1
    rm -rf "$APPDATA"/tempocapt*
    printf '%s\r\nC:\\users\r\n' "$FIRST_LINE" > "$APPDATA/params.txt"
    launch
    wait_main ConstPRJA || return 1
    local i
    for i in 1 2; do
        wh_key_hold "$MAIN" ctrl+e 0.6 || return 1
        wh_wait_for "capture $i" 20 count_temp_files "$i" || return 1
        sleep 1.5
    done
    kill -9 "$PROGRAM" || true
    wh_wait_exit "$PROGRAM" 15 || return 1
    sleep 1
    local old=() new=()
    mapfile -t old < <(temp_files)
    ((${#old[@]} == 2)) || { wh_reason "${#old[@]} temporary files after the kill"; return 1; }
    local old_dir
    old_dir=$(dirname "${old[0]}")
    cp "${old[0]}" "$WH_ART/lost-1.bmp"
    cp "${old[1]}" "$WH_ART/lost-2.bmp"
    launch
    wh_wait_for "the question of the lost captures" 20 question_in_middle || return 1
    sleep 0.5
    wh_screenshot lost-captures-question.png
    wh_key "$QUESTION" y || return 1
    wh_find_window "^$(entry ConstPRJA 111)2$(entry ConstPRJA 112)\$" 20 || return 1
    MAIN=$WH_WID
    wh_wait_for "the old folder to go" 10 test ! -d "$old_dir" || return 1
    mapfile -t new < <(temp_files)
    ((${#new[@]} == 2)) || { wh_reason "${#new[@]} temporary files: ${new[*]}"; return 1; }
    wh_screenshot lost-captures-back.png
    wh_assert_same lost-1 "${new[0]}" "$WH_ART/lost-1.bmp" || return 1
    wh_assert_same lost-2 "${new[1]}" "$WH_ART/lost-2.bmp"
}

wh_check "the first start shows the language chooser" check_chooser
wh_check "the French flag writes spoken.txt and the main window comes up in French" check_french
wh_check "params.txt holds the first-run line" check_first_run_settings
wh_check "quitting removes the temporary folder" check_quit_removes_the_temporary_folder
wh_check "a second start skips the chooser" check_second_start_skips_the_chooser
wh_check "the English file gives an English main window" check_english
wh_check "Control+E from another program captures the whole screen" check_hotkey_whole_screen
wh_check "Control+F captures the window in front" check_hotkey_window
wh_check "Control+Q with captures asks, and Cancel keeps them" check_exit_question_cancel
wh_check "answering No ends the program and removes the temporary files" check_exit_question_no
wh_check "No to the repair question ends the program and leaves params.txt as it was" check_repair_no
wh_check "Yes to the repair question writes the repair file and ends the program" check_repair_yes
wh_check "a short settings line starts without a box and Control+E captures" check_short_settings_line
wh_check "with Silence set the shutter shows and plays nothing" check_silent_shutter
wh_check "captures of a killed run come back at the next start after Yes" check_killed_run_comes_back

second_main() {
    [[ -n "$(xdotool search --all --onlyvisible --pid "$PROGRAM" --name '^Mirovanta - ' 2>/dev/null)" ]]
}
# A second copy started beside a running one does not take the running one's captures for
# a lost run's: no question, and the first keeps its files.
check_second_copy_asks_nothing() {
    local first=$PROGRAM before
    before=$(temp_files | wc -l)
    launch
    # The question would come before its main window.
    wh_wait_for "the second copy's main window" 20 second_main || return 1
    wh_screenshot second-copy.png
    kill -9 "$PROGRAM" || true
    wh_wait_exit "$PROGRAM" 15 || return 1
    PROGRAM=$first WH_PID_PROGRAM=$first
    kill -0 "$PROGRAM" 2>/dev/null || { wh_reason "the first copy ended"; return 1; }
    (($(temp_files | wc -l) == before)) || { wh_reason "the first copy's captures changed"; return 1; }
}
wh_check "a second copy asks nothing about the running one's captures" check_second_copy_asks_nothing
wh_finish
