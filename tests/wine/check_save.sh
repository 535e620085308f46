#!/usr/bin/env bash
# Checks of saving in the real program under Wine: the exit question's Yes, the formats of
# save-all, the GIF's block structure, unwritable targets. (Wine's JPEG encoder ignores the
# quality parameter; the quality the program passes is checked headless.)
# Usage: check_save.sh BIN_DIR
set -euo pipefail
here=$(cd "$(dirname "${BASH_SOURCE[0]}")" && pwd)
source "$here/lib.sh"
source "$here/program.sh"
BIN=$(cd "${1:?usage: check_save.sh BIN_DIR}" && pwd)

wh_init save
wh_start_xvfb 1280x1024
wh_show_picture
wh_start_wine
mv_use_prefix
SAVED="$WINEPREFIX/drive_c/users/$(id -un)/Documents"
mv_choose_english

saved() { find "$SAVED" -maxdepth 1 -name "Capt_*.$1" 2>/dev/null | sort; }

# Starts the program, captures the screen with Control+E, answers the exit question Yes.
# With an argument, a box is expected at start-up: it is photographed under that name and
# closed with Enter. YES_KEY answers the question (default y; Enter where Yes is not "Yes").
capture_and_quit_yes() {
    wh_launch "$BIN/mirovanta.exe"
    local program=$WH_PID
    if [[ -n ${1:-} ]]; then
        wh_find_window '^Mirovanta$' 20 || return 1
        sleep 0.5
        wh_screenshot "$1"
        wh_key "$WH_WID" Return || return 1
    fi
    wh_find_window '^Mirovanta - ' 20 || return 1
    local main=$WH_WID
    sleep 2
    # The program polls the keys every 100 ms: a press it missed while busy is pressed again.
    local try
    for try in 1 2 3; do
        wh_key_hold "$main" ctrl+e 0.6 || return 1
        wh_wait_for "a temporary BMP" 8 has_temp_file && break
        ((try < 3)) || return 1
    done
    sleep 1
    cp "$(temp_files | head -1)" "$WH_ART/temporary.bmp"
    wh_key "$main" ctrl+q || return 1
    wh_find_window '^Mirovanta - quit$' 10 || return 1
    wh_key "$WH_WID" "${YES_KEY:-y}" || return 1
    wh_wait_exit "$program" 20
}

check_exit_yes_saves_jpeg() {
    capture_and_quit_yes || return 1
    local files
    files=$(saved jpg)
    [[ $(wc -l <<<"$files") -eq 1 && -n "$files" ]] || { wh_reason "saved: $(ls "$SAVED")"; return 1; }
    [[ "$(identify -format '%m %wx%h' "$files")" == "JPEG 1280x1024" ]] ||
        { wh_reason "$(identify "$files")"; return 1; }
}

check_exit_yes_saves_bmp_copy() {
    # Column 108 of the settings line: automatic saves as BMP.
    local line
    line=$(head -1 "$APPDATA/params.txt" | tr -d '\r')
    printf '%s\r\n' "${line:0:107}1${line:108}" > "$APPDATA/params.tmp"
    sed -n 2p "$APPDATA/params.txt" >> "$APPDATA/params.tmp"
    mv "$APPDATA/params.tmp" "$APPDATA/params.txt"
    capture_and_quit_yes || return 1
    local files
    files=$(saved bmp)
    [[ -n "$files" ]] || { wh_reason "no BMP saved"; return 1; }
    cmp -s "$files" "$WH_ART/temporary.bmp" || { wh_reason "the BMP differs from the temporary file"; return 1; }
}

# The driver flavour saves one capture again in each format.
check_save_all_formats() {
    rm -f "$SAVED"/Capt_*
    local script="$WH_TMP/save.txt" done="$WH_TMP/save-done.txt"
    cat > "$script" <<SCRIPT
wait 1500
keepwindows
click 1
wait 500
saveall png
saveall gif
saveall bmp
saveall jpg
quality 0
saveall jpg
quality 100
saveall jpg
mark $(winepath -w "$done") done
waitfile $(winepath -w "$WH_TMP/save-all-quit")
key 81 2
SCRIPT
    wh_launch_driver "$BIN" "$script"
    local program=$WH_PID
    wh_wait_file "$done" 120 || return 1
    sleep 1
    local f
    for f in png gif bmp; do
        [[ "$(identify -format '%wx%h\n' "$(saved $f)" | head -1)" == 1280x1024 ]] ||
            { wh_reason "$f: $(identify "$(saved $f)" 2>&1)"; return 1; }
    done
    cmp -s "$(saved bmp)" "$(temp_files | tail -1)" || { wh_reason "the BMP is not a copy"; return 1; }
    # One image, a global colour table right after the header, no local table.
    local gif flags next image
    gif=$(saved gif)
    [[ $(identify "$gif" | wc -l) -eq 1 ]] || { wh_reason "more than one image"; return 1; }
    flags=$(od -An -tu1 -j10 -N1 "$gif" | tr -d ' ')
    ((flags & 128)) || { wh_reason "no global table"; return 1; }
    local table=$((3 * (2 << (flags & 7))))
    next=$(od -An -tu1 -j$((13 + table)) -N1 "$gif" | tr -d ' ')
    [[ $next == 44 ]] || { wh_reason "no image right after the global table ($next)"; return 1; }
    image=$(od -An -tu1 -j$((13 + table + 9)) -N1 "$gif" | tr -d ' ')
    ((!(image & 128))) || { wh_reason "the image has a local table"; return 1; }
    [[ "$(identify -format '%m %wx%h' "$(saved jpg | head -1)")" == "JPEG 1280x1024" ]] ||
        { wh_reason "no JPEG of the capture's size"; return 1; }
    # Quality 0 never gives a larger file than 100. (Wine 8's encoder ignores the quality
    # and writes the same file; Windows' makes the first much smaller.)
    local q0 q100
    q0=$(stat -c %s "$(saved jpg | sed -n 2p)")
    q100=$(stat -c %s "$(saved jpg | sed -n 3p)")
    wh_log "JPEG sizes: quality 0 $q0 bytes, quality 100 $q100 bytes"
    ((q0 <= q100)) || { wh_reason "quality 0 gave $q0 bytes, quality 100 $q100"; return 1; }
    # The script's Control+Q ends it: every capture is saved, so without a question.
    touch "$WH_TMP/save-all-quit"
    wh_wait_exit "$program" 20
}

# A save-all target locked by another program, then a folder name Windows refuses: each
# time entry 117 and no mark; once the folder is right again the capture is saved.
check_locked_and_forbidden_targets() {
    rm -f "$SAVED"/Capt_*
    local script="$WH_TMP/locked.txt" sign="$WH_TMP/locked-sign.txt" marks="$WH_TMP/marks.txt"
    local go="$WH_TMP/go" released="$WH_TMP/released" release="$WH_TMP/release"
    rm -f "$sign" "$marks" "$go" "$released" "$release"
    cat > "$script" <<SCRIPT
wait 1500
keepwindows
click 1
wait 500
saveall bmp
mark $(winepath -w "$sign") captured
waitfile $(winepath -w "$go")
saveall bmp
marks $(winepath -w "$marks")
savefolder C:\\bad|name
saveall bmp
marks $(winepath -w "$marks")
waitfile $(winepath -w "$released")
savefolder $(winepath -w "$SAVED")
saveall bmp
marks $(winepath -w "$marks")
mark $(winepath -w "$sign") done
key 81 2
SCRIPT
    # The folder exists on the Unix side, so only the name's '|' can make the save fail.
    mkdir -p "$WINEPREFIX/drive_c/bad|name"
    wh_launch_driver "$BIN" "$script"
    local program=$WH_PID
    wh_wait_for "the capture" 30 grep -q captured "$sign" 2>/dev/null || return 1
    # A first save-all wrote file 001; the next one goes to 002.
    local temp="$WH_TMP/locked-capture.bmp" first stem target
    cp "$(temp_files | tail -1)" "$temp"
    first=$(saved bmp | head -1)
    [[ $first == *_001.bmp ]] || { wh_reason "no first file: $(ls "$SAVED")"; return 1; }
    stem=${first%_001.bmp}
    target="${stem}_002.bmp"
    wh_launch -l holdfile.log "$BIN/holdfile.exe" "$(winepath -w "$target")" "$(winepath -w "$release")"
    wh_wait_for "the lock" 10 grep -q holding "$WH_ART/holdfile.log" || return 1
    touch "$go"
    local n
    for n in 1 2; do
        wh_find_window '^Mirovanta$' 20 || return 1
        sleep 0.5
        wh_screenshot "save-failure-$n.png"
        wh_key "$WH_WID" Return || return 1
        wh_wait_window_gone "$WH_WID" 5 || return 1
    done
    touch "$release" "$released"
    wh_wait_for "the end of the script" 30 grep -q done "$sign" || return 1
    wh_wait_exit "$program" 20 || return 1
    [[ "$(tr -d '\r' < "$marks" | paste -sd' ')" == "0 0 1" ]] ||
        { wh_reason "marks after each save-all: $(tr -d '\r' < "$marks" | paste -sd' ')"; return 1; }
    [[ ! -s "$target" ]] || { wh_reason "the locked file was written"; return 1; }
    [[ -z "$(ls -A "$WINEPREFIX/drive_c/bad|name")" ]] || { wh_reason "a file was written under the forbidden name"; return 1; }
    cmp -s "${stem}_004.bmp" "$temp" ||
        { wh_reason "no copy saved once the folder was right: $(ls "$SAVED")"; return 1; }
}

# overwrite_question KEY: the save dialog again, its proposed name taken, and the question
# about replacing the file answered with KEY.
overwrite_question() {
    mv_click_button 4
    wh_find_window '^Save the capture as$' 15 || return 1
    sleep 1
    wh_key "$WH_WID" Return || return 1
    wh_find_window '^Mirovanta$' 15 || return 1
    sleep 0.5
    wh_screenshot "overwrite-question-$1.png"
    wh_key "$WH_WID" "$1" || return 1
    wh_wait_window_gone "$WH_WID" 5
}

# The save dialog: the proposed name, a name typed with another extension saved in the
# filter's format, then the same name again answered No, then Yes, at the overwrite question.
check_save_dialog() {
    rm -f "$SAVED"/shot*
    wh_launch "$BIN/mirovanta.exe"
    local program=$WH_PID
    wh_find_window '^Mirovanta - ' 20 || return 1
    MAIN=$WH_WID
    sleep 1.5
    mv_click_button 1
    wh_wait_for "a temporary BMP" 15 has_temp_file || return 1
    sleep 1
    mv_click_button 4
    wh_find_window '^Save the capture as$' 15 || return 1
    local dialog=$WH_WID
    sleep 1
    wh_screenshot save-dialog.png
    # The name field holds "Capture 01": replaced by a name with a .png ending.
    wh_key "$dialog" End $(printf 'BackSpace %.0s' {1..12}) || return 1
    wh_type "$dialog" "shot.png" || return 1
    wh_key "$dialog" Return || return 1
    wh_wait_for "shot.jpg" 20 test -s "$SAVED/shot.jpg" || return 1
    sleep 1
    [[ "$(identify -format '%m %wx%h' "$SAVED/shot.jpg")" == "JPEG 1280x1024" ]] ||
        { wh_reason "$(identify "$SAVED/shot.jpg" 2>&1)"; return 1; }
    [[ ! -e $SAVED/shot.png && ! -e $SAVED/shot_temp.bmp ]] ||
        { wh_reason "stray files: $(ls "$SAVED")"; return 1; }
    local before
    before=$(md5sum < "$SAVED/shot.jpg")

    # Again: the dialog proposes "shot" in the last folder; the target exists, No keeps it.
    overwrite_question n || return 1
    [[ "$(md5sum < "$SAVED/shot.jpg")" == "$before" ]] || { wh_reason "shot.jpg was replaced"; return 1; }
    # The scratch copy beside the target stays behind on No.
    [[ -e $SAVED/shot_temp.bmp ]] || { wh_reason "no scratch file: $(ls "$SAVED")"; return 1; }

    # Once more, answered Yes: the target is replaced by the capture, the scratch copy goes.
    printf 'not a picture' >"$SAVED/shot.jpg"
    overwrite_question y || return 1
    wh_wait_for "shot.jpg replaced" 20 \
        test "$(identify -format '%m %wx%h' "$SAVED/shot.jpg" 2>/dev/null)" == "JPEG 1280x1024" || return 1
    [[ ! -e $SAVED/shot_temp.bmp ]] || { wh_reason "the scratch file stayed: $(ls "$SAVED")"; return 1; }
    # Control+Q; a capture left unsaved would bring the question, answered No.
    wh_key "$MAIN" ctrl+q || return 1
    local quit
    for _ in {1..50}; do
        _wh_alive "$program" || break
        quit=$(xdotool search --onlyvisible --name '^Mirovanta - quit$' 2>/dev/null | head -1)
        if [[ -n $quit ]]; then wh_key "$quit" n || return 1; fi
        sleep 0.2
    done
    wh_wait_exit "$program" 20
}

# The settings file is in the system code page. Ł has a byte in Windows-1250 (Polish
# Wine): the save folder survives the file. In Windows-1252 it has none: each start says
# so once and the captures still go to the Personal folder.
check_code_page_folder() {
    local perso="$WINEPREFIX/drive_c/users/Łukasz/Documents" n
    mkdir -p "$perso"
    wh_wine reg add 'HKCU\Software\Microsoft\Windows\CurrentVersion\Explorer\Shell Folders' \
        /v Personal /t REG_SZ /d 'C:\users\Łukasz\Documents' /f || return 1
    rm -f "$APPDATA/params.txt"
    for n in 1 2; do
        # Wine's own buttons are Polish here: Enter takes the default, Yes.
        YES_KEY=Return LC_ALL=pl_PL.UTF-8 capture_and_quit_yes 2>/dev/null || return 1
        [[ $(find "$perso" -name 'Capt_*.jpg' | wc -l) -eq $n ]] ||
            { wh_reason "Polish start $n saved: $(ls "$perso")"; return 1; }
    done
    [[ "$(sed -n 2p "$APPDATA/params.txt" | tr -d '\r' | od -An -tx1 | tr -d ' \n')" == \
        "$(printf 'C:\\users\\\xa3ukasz\\Documents' | od -An -tx1 | tr -d ' \n')"* ]] ||
        { wh_reason "line 2: $(sed -n 2p "$APPDATA/params.txt" | od -c | head -2)"; return 1; }
    rm -f "$APPDATA/params.txt"
    for n in 3 4; do
        LC_ALL=en_US.UTF-8 capture_and_quit_yes "folder-box-$n.png" 2>/dev/null || return 1
        [[ $(find "$perso" -name 'Capt_*.jpg' | wc -l) -eq $n ]] ||
            { wh_reason "English start $n saved: $(ls "$perso")"; return 1; }
    done
    [[ "$(sed -n 2p "$APPDATA/params.txt" | tr -d '\r')" == 'C:\users\?ukasz\Documents'* ]] ||
        { wh_reason "line 2: $(sed -n 2p "$APPDATA/params.txt")"; return 1; }
}

wh_check "Control+Q answered Yes saves the capture as JPEG" check_exit_yes_saves_jpeg
wh_check "with BMP chosen in the settings the saved file is the temporary file" check_exit_yes_saves_bmp_copy
wh_check "a locked target and a forbidden name give entry 117 and mark nothing" check_locked_and_forbidden_targets
wh_check "save-all writes PNG, GIF, BMP and JPEG the size of the capture" check_save_all_formats
wh_check "the save dialog writes the filter's format and asks before replacing" check_save_dialog
wh_check "the save folder travels in the system code page, or falls back with one box" check_code_page_folder
wh_finish
