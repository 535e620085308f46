# shellcheck shell=bash
# What the checks know of the program: where it keeps its files in the prefix, the menu
# bar's height under Wine and where each toolbar button stands. Source after lib.sh; MAIN
# holds the main window.

MV_DPI=96  # Windows' scaling of the run (mv_set_dpi)
MENU_H=19 # Wine's menu bar: the client area starts below it (at 96 DPI)

# mv_button_x N: left edge in pixels of toolbar button N, from the toolbar's order and
# gaps (twips), rounded to the nearest pixel as the program places it.
mv_button_x() {
    local order=(0 19 1 2 11 12 13 3 9 10 4 5 6 7 8 16 17 15 14 18)
    local gaps=(0 20 20 20 60 20 20 70 20 20 60 20 20 20 70 20 20 60 20 20)
    local left=60 k
    for k in "${!order[@]}"; do
        ((k > 0)) && left=$((left + 480 + gaps[k]))
        if ((order[k] == $1)); then echo $(((left * MV_DPI + 720) / 1440)); return; fi
    done
}

# mv_click_button N: clicks toolbar button N of the main window (its middle).
mv_click_button() {
    local half=$((240 * MV_DPI / 1440))
    wh_click "$MAIN" $(($(mv_button_x "$1") + half)) $((MENU_H + half))
}

# mv_use_prefix: sets APPDATA, the program's folder in the prefix made by wh_start_wine,
# and turns the tip of the day off.
mv_use_prefix() {
    APPDATA="$WINEPREFIX/drive_c/users/$(id -un)/AppData/Roaming/Mirovanta"
    # The tip of the day stays away, except where a check asks for it.
    mv_tips 0
}

# mv_tips 0|1: the program's "Show Tips at Startup" setting in the registry.
mv_tips() {
    wh_wine reg add 'HKCU\Software\Mirovanta\Options' /v 'Show Tips at Startup' /t REG_SZ /d "$1" /f >/dev/null
}

# mv_set_dpi DPI: Windows' scaling (96 = 100 %, 144 = 150 % ...) for the programs started
# after it; the Wine session is restarted so that it reads the setting anew.
mv_set_dpi() {
    MV_DPI=$1
    MENU_H=$((19 * $1 / 96))
    wh_wine reg add 'HKCU\Control Panel\Desktop' /v LogPixels /t REG_DWORD /d "$1" /f >/dev/null
    wh_wine reg add 'HKLM\System\CurrentControlSet\Hardware Profiles\Current\Software\Fonts' \
        /v LogPixels /t REG_DWORD /d "$1" /f >/dev/null
    HOME=$WH_HOME wineserver -k >>"$WH_ART/wine.log" 2>&1 || true
    HOME=$WH_HOME wineserver -w >>"$WH_ART/wine.log" 2>&1 || true
    HOME=$WH_HOME wineserver -p >>"$WH_ART/wine.log" 2>&1
}

# mv_choose_english: the language is chosen already, so the chooser does not come up.
mv_choose_english() { mkdir -p "$APPDATA" && printf 'ConstPRJA\r\n' >"$APPDATA/spoken.txt"; }

# temp_files: the program's temporary captures, sorted; has_temp_file: true when any.
temp_files() { find "$APPDATA" -name 'Captprov_*.bmp' 2>/dev/null | sort; }
has_temp_file() { [ -n "$(temp_files)" ]; }

# mv_tray_box: the geometry WxH+X+Y of Wine's tray window, which the screen holds besides
# the known picture (0x0+0+0 when there is none).
mv_tray_box() {
    local w
    w=$(xdotool search --onlyvisible --name '^Wine System Tray$' | head -1)
    [[ -n "$w" ]] || { echo 0x0+0+0; return; }
    wh_window_geometry "$w" && echo "${WH_W}x$WH_H+$WH_X+$WH_Y"
}

# mv_start BIN_DIR: starts the program in English (the chooser has checks of its own) and
# waits for its main window. Sets WH_PID_PROGRAM and MAIN.
mv_start() {
    mv_choose_english
    wh_launch "$1/mirovanta.exe"
    WH_PID_PROGRAM=$WH_PID
    wh_find_window '^Mirovanta - ' 20 || return 1
    MAIN=$WH_WID
    sleep 2 # the opening animation
}

# mv_overlay_wid: the program's window with no title over the whole screen, into OVERLAY.
# mv_overlay_up: the same window anywhere, also while it slides in.
mv_overlay_wid() { _mv_overlay 1; }
mv_overlay_up() { _mv_overlay 0; }
_mv_overlay() {
    local w
    for w in $(xdotool search --onlyvisible --pid "$WH_PID_PROGRAM" 2>/dev/null); do
        [[ -z "$(xdotool getwindowname "$w" 2>/dev/null)" ]] || continue
        wh_window_geometry "$w" || continue
        ((WH_W == WH_VIRTUAL_W)) || continue
        if (($1 == 0 || (WH_X == 0 && WH_Y == 0))); then OVERLAY=$w; return 0; fi
    done
    return 1
}

# mv_open_overlay: Control+Z, then waits for the overlay to slide in. The cursor of the
# key press is stamped into the frozen screen: it is kept near the right edge, 300 pixels
# down, clear of the zones that the checks compare.
# mv_patience: seconds to wait for a grab, more on big screens (a second a megapixel).
mv_patience() { echo $((15 + WH_SCREEN_W * WH_SCREEN_H / 1000000)); }
mv_open_overlay() {
    sleep 0.5
    wh_mouse_move $((WH_SCREEN_W - 40)) 300
    wh_key_hold "$MAIN" ctrl+z 0.4 || return 1
    wh_wait_for "the overlay" "$(mv_patience)" mv_overlay_wid || return 1
    sleep 1 # sliding in
}

# mv_new_capture N NAME: waits for the Nth temporary BMP and copies the newest to the
# artifacts as NAME.bmp.
mv_nth_capture() { [ "$(temp_files | wc -l)" -ge "$1" ]; }
mv_new_capture() {
    wh_wait_for "capture $1" "$(mv_patience)" mv_nth_capture "$1" || { wh_screenshot "no-capture-$1.png"; return 1; }
    sleep 0.5
    local newest # the folder's name may hold spaces
    newest=$(find "$APPDATA" -name 'Captprov_*.bmp' -printf '%T@ %p\n' | sort -n | tail -1)
    cp "${newest#* }" "$WH_ART/$2.bmp"
}

# mv_window_capture WID NAME N: Control+F on window WID must give capture N, the window
# pixel for pixel inside its frame (saved as artifacts/NAME.bmp). Wine draws no frame
# without a window manager: the window rectangle is the X window with the frame around it
# and the caption above it.
mv_window_capture() {
    wh_window_geometry "$1" || return 1
    local box="${WH_W}x$WH_H+$WH_X+$WH_Y" w=$WH_W h=$WH_H bw bh
    wh_mouse_move $((WH_SCREEN_W - 280)) $((WH_SCREEN_H - 124))
    wh_screenshot "before-$2.png" "$box"
    wh_key_hold "$1" ctrl+f 0.3 || return 1
    mv_new_capture "$3" "$2" || return 1
    read -r bw bh < <(identify -format '%w %h' "$WH_ART/$2.bmp")
    local frame=$(((bw - w) / 2)) caption=$((bh - h - (bw - w) / 2))
    ((frame >= 0 && frame <= 8 * MV_DPI / 96 && caption >= 15 && caption <= 40 * MV_DPI / 96)) ||
        { wh_reason "window capture is ${bw}x$bh for a window of ${w}x$h"; return 1; }
    convert "$WH_ART/$2.bmp" -crop "${w}x$h+$frame+$caption" +repage "$WH_ART/$2-inside.png"
    wh_assert_same "$2" "$WH_ART/$2-inside.png" "$WH_ART/before-$2.png"
}

# mv_crop W H X Y NAME: that part of the known picture, as artifacts/NAME.png.
mv_crop() { convert "$WH_PICTURE" -crop "$1x$2+$3+$4" +repage "$WH_ART/$5.png"; }

# mv_set_column COL TEXT: puts TEXT over the settings line from column COL (from 1).
mv_set_column() {
    local line
    line=$(head -1 "$APPDATA/params.txt" | tr -d '\r')
    { printf '%s\r\n' "${line:0:$(($1 - 1))}$2${line:$(($1 - 1 + ${#2}))}"; sed -n 2p "$APPDATA/params.txt"; } > "$APPDATA/params.tmp"
    mv "$APPDATA/params.tmp" "$APPDATA/params.txt"
}

# mv_catch_shutter NAME: waits up to 10 s for the shutter window (the program's window of
# the size of fcam.bmp), screenshots it as NAME.png and checks that it shows fcam.bmp.
_mv_shutter_up() {
    local w
    for w in $(xdotool search --onlyvisible --pid "$WH_PID_PROGRAM" 2>/dev/null); do
        wh_window_geometry "$w" || continue
        if ((WH_W == _MV_CAM_W && WH_H == _MV_CAM_H)); then
            wh_screenshot "$1" "${WH_W}x$WH_H+$WH_X+$WH_Y"
            return 0
        fi
    done
    return 1
}
mv_catch_shutter() {
    read -r _MV_CAM_W _MV_CAM_H < <(identify -format '%w %h' "$BIN/fcam.bmp")
    local t
    for t in $(seq 1 250); do
        _mv_shutter_up "$1.png" && { wh_assert_same "$1" "$WH_SHOT" "$BIN/fcam.bmp"; return; }
        sleep 0.02
    done
    wh_reason "no shutter window came up"
    return 1
}

# mv_sound_bytes: how many bytes the sound device has played since the run began.
mv_sound_bytes() { stat -c %s "$WH_SOUND"; }
# The sample bytes of the shutter sound: its WAV file less the 44-byte header.
mv_shutter_sound_bytes() { echo $(($(stat -c %s "$BIN/camera.wav") - 44)); }

# mv_back_to_main: waits for the overlay to go and the main window to come back.
mv_back_to_main() {
    wh_wait_window_gone "$OVERLAY" 10 || return 1
    wh_wait_for "the main window" 10 wh_window_visible "$MAIN"
}
