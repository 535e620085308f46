#!/usr/bin/env bash
# Checks of the collection window under Wine: three captures of three kinds, the enlarged
# picture under the mouse, choosing and moving a capture, the see-through background, the
# window sliding away and back, a bad position that costs no capture, the external
# editor: its edits coming back, and its end when another capture is chosen; the uploader
# and the mail client given the current capture as a JPEG; and the animated-GIF builder
# on the captures and on a folder holding a stray file.
# Usage: check_browser.sh BIN_DIR
set -euo pipefail
here=$(cd "$(dirname "${BASH_SOURCE[0]}")" && pwd)
source "$here/lib.sh"
source "$here/program.sh"
BIN=$(cd "${1:?usage: check_browser.sh BIN_DIR}" && pwd)

wh_init browser
wh_start_xvfb 1280x1024
wh_show_picture
wh_start_wine
mv_use_prefix

TPP=15 # twips per pixel at 96 DPI

# list_origin: the top left corner of the collection window's client area, into LX LY.
# Wine draws the tool window's own frame (3 pixels) and caption inside its X window.
list_origin() {
    LIST=$(xdotool search --onlyvisible --name '^Collection$' | head -1)
    [[ -n "$LIST" ]] || { wh_reason "no collection window"; return 1; }
    wh_window_geometry "$LIST" || return 1
    LX=$((WH_X + 3)) LY=$((WH_Y + 19))
}
# thumb_centre N: the middle of thumbnail N of an unscrolled column, into TX TY.
thumb_centre() {
    TX=$((LX + (40 + 1450 / 2) / TPP))
    TY=$((LY + (840 + ($1 - 1) * 1600 + 300) / TPP))
}

check_three_kinds() {
    # Wine's mail client traces the calls that reach it.
    WINEDEBUG=-all,+mapi,+winemapi mv_start "$BIN" || return 1
    # The whole screen, a zone (the default rectangle), the window of notepad.
    mv_click_button 1
    mv_new_capture 1 kind-e || return 1
    wh_wait_for "the main window" 10 wh_window_visible "$MAIN" || return 1
    mv_open_overlay || return 1
    wh_key "$OVERLAY" Return || return 1
    mv_new_capture 2 kind-z || return 1
    wh_wait_window_gone "$OVERLAY" 10 || return 1
    wh_wait_for "the main window" 10 wh_window_visible "$MAIN" || return 1
    wh_launch -l winemine.log winemine
    wh_find_window 'Mine' 20 || return 1
    MINE=$WH_WID
    _wh_xdo windowmove "$MINE" 600 500
    sleep 1
    wh_key_hold "$MINE" ctrl+f 0.4 || return 1
    mv_new_capture 3 kind-f || return 1
    wh_wait_for "the main window" 10 wh_window_visible "$MAIN" || return 1
    sleep 1
    list_origin || return 1
    wh_screenshot three.png
}

# The enlarged picture of the zone: the capture shrunk by averaging into 1.7 times the
# thumbnail (97 x 60 pixels), 400 twips above the thumbnail. Averaging differs from
# ImageMagick's box filter by a unit here and there.
check_hover() {
    thumb_centre 2
    wh_mouse_move "$TX" "$TY"
    sleep 0.7
    wh_screenshot hover.png
    local w=$((97 * 17 / 10)) h=$((60 * 17 / 10))
    convert "$WH_ART/kind-z.bmp" -filter box -resize "${w}x$h!" "$WH_ART/want-enlarged.png"
    wh_screenshot enlarged.png "${w}x$h+$((LX + 3))+$((LY + (840 + 1600 - 400) / TPP))"
    # Its caption stands over the picture's top right corner.
    wh_diff_count "$WH_ART/enlarged.png" "$WH_ART/want-enlarged.png" --fuzz 4% \
        --exclude 70x8+100+0 || return 1
    ((WH_DIFF * 50 < w * h)) || { wh_reason "$WH_DIFF pixels of the enlarged picture differ"; return 1; }
}

# main_shows_zone NAME [PICTURE]: the main window's view holds the zone capture (or
# PICTURE) pixel for pixel.
main_shows_zone() {
    wh_window_geometry "$MAIN" || return 1
    wh_screenshot "$1.png" "420x260+$((WH_X + 3))+$((WH_Y + MENU_H + 500 / TPP))"
    wh_assert_same "$1" "$WH_SHOT" "${2:-$WH_ART/kind-z.bmp}"
}

# A click on the enlarged picture makes the zone current: the main window shows it.
check_click_makes_current() {
    wh_click root "$TX" "$TY" || return 1
    sleep 1
    main_shows_zone current-zone
}

# clear_hover: the mouse on the strip, under the hint and right of the marquee: every
# thumbnail small again.
clear_hover() {
    wh_mouse_move $((LX + 150)) $((LY + 52))
    sleep 0.3
}

# position_box N TEXT: types TEXT and Enter in the position box of thumbnail N.
position_box() {
    clear_hover
    local x=$((LX + (2160 + 250) / TPP)) y=$((LY + (840 + ($1 - 1) * 1600 + 450 + 140) / TPP))
    wh_click root "$x" "$y" || return 1
    # The keys go where the X focus is: on the window, whose box has the click's focus.
    wh_focus "$LIST" || return 1
    _wh_xdo key --delay 30 End BackSpace BackSpace || return 1
    _wh_xdo type --delay 30 "$2" || return 1
    _wh_xdo key Return
}

# Typing 1 in the zone's box moves it first: thumbnail 1 now opens the zone.
check_move_first() {
    position_box 2 1 || return 1
    sleep 1
    wh_screenshot moved.png
    thumb_centre 1
    wh_mouse_move "$TX" "$TY"
    sleep 0.5
    wh_click root "$TX" "$TY" || return 1
    sleep 1
    main_shows_zone moved-zone
}

# "x" in a position box: the run-time error box; its OK, and the program goes on with its
# three captures.
error_box() { wh_find_window '^Mirovanta$' 1 && ERROR_BOX=$WH_WID; }
check_bad_position() {
    position_box 3 x || return 1
    wh_wait_for "the error box" 10 error_box || return 1
    wh_screenshot error-box.png
    wh_key "$ERROR_BOX" Return || return 1
    wh_wait_window_gone "$ERROR_BOX" 10 || return 1
    sleep 1
    kill -0 "$WH_PID_PROGRAM" 2>/dev/null || { wh_reason "the program ended"; return 1; }
    (($(temp_files | wc -l) == 3)) || { wh_reason "$(temp_files | wc -l) captures left"; return 1; }
}

# Right of the strip the window is see-through: the screen shows the desktop there, and
# the mouse is over the window below.
check_see_through() {
    local x=$((LX + 195)) y=$((LY + 300)) under
    wh_mouse_move 640 900
    sleep 0.5
    wh_screenshot see-through.png "30x40+$x+$y"
    convert "$WH_PICTURE" -crop "30x40+$x+$y" +repage "$WH_ART/want-see-through.png"
    wh_assert_same see-through "$WH_SHOT" "$WH_ART/want-see-through.png" || return 1
    wh_mouse_move $((x + 20)) $((y + 20))
    sleep 0.3
    under=$(xdotool getmouselocation --shell | sed -n 's/^WINDOW=//p')
    [[ "$under" != "$LIST" ]] || { wh_reason "the collection window takes the mouse there"; return 1; }
}

# Left alone, the window slides away to its strip 40 s after the last capture; the mouse on
# the strip brings it back. (Once a thumbnail had the mouse, the window stays until the next
# capture.)
list_away() { wh_window_geometry "$LIST" && ((WH_X < 0)); }
list_back() { wh_window_geometry "$LIST" && ((WH_X >= 0)); }
check_slides_away() {
    wh_mouse_move 640 900
    wh_wait_for "the window to slide away" 50 list_away || return 1
    wh_screenshot slid-away.png
    wh_mouse_move 1 300
    wh_wait_for "the window to come back" 5 list_back || return 1
}

# The test editor stands in the prefix as the system's paint program; the setting names
# "mspaint.exe", so the program finds it there.
PAINT="$WH_PREFIX/drive_c/windows/system32/mspaint.exe"
# Wine shows a process by the command it was started with; only this prefix's count.
paints() { wh_own_processes | grep -c 'mspaint\.exe' || true; }
paint_runs() { (($(paints) >= 1)); }
paint_given_capture() { grep -qsF '\Captprov_' "$PAINT.log"; }
# box_up: a message box of the program is on the screen (probing, no failure recorded).
box_up() { xdotool search --onlyvisible --name '^Mirovanta$' >/dev/null 2>&1; }
caption_is() { [[ "$(wh_window_title "$MAIN")" == "$1" ]]; }
EDITING="Mirovanta - capture open in Mspaint"

# No paint program at all: one warning box, no other after its OK, the caption unchanged.
check_no_editor() {
    [[ ! -e "$PAINT" ]] || { wh_reason "the prefix has a paint program"; return 1; }
    local titre
    titre=$(wh_window_title "$MAIN")
    mv_click_button 7
    wh_wait_for "the warning box" 10 error_box || return 1
    wh_screenshot no-editor.png
    wh_key "$ERROR_BOX" Return || return 1
    wh_wait_window_gone "$ERROR_BOX" 10 || return 1
    sleep 2
    ! box_up || { wh_reason "a second box"; return 1; }
    caption_is "$titre" || { wh_reason "caption $(wh_window_title "$MAIN")"; return 1; }
}

# The Edit button opens the zone in the editor, which paints a red square and saves: the
# view shows it within a tick of 5 s, and the caption comes back once the editor exits.
check_editor_edits() {
    cp "$BIN/testeditor.exe" "$PAINT"
    echo 8 >"$PAINT.secs"
    local titre
    titre=$(wh_window_title "$MAIN")
    convert "$WH_ART/kind-z.bmp" -fill red -draw 'rectangle 10,10 49,49' "$WH_ART/want-edited.png"
    mv_click_button 7
    wh_wait_for "the editing caption" 5 caption_is "$EDITING" || return 1
    wh_wait_for "the editor" 5 paint_runs || return 1
    # Wine lists the process before its first line has run: wait for the command line it writes.
    wh_wait_for "the editor's command line" 5 paint_given_capture || {
        wh_reason "editor given $(cat "$PAINT.log" 2>/dev/null)"
        return 1
    }
    wh_wait_for "the edit in the view" 12 main_shows_zone edited "$WH_ART/want-edited.png" || return 1
    wh_wait_for "the caption back" 20 caption_is "$titre" || return 1
}

# Choosing another capture ends the editor the program started, and only that one: a paint
# program started by someone else goes on.
check_choice_ends_editor() {
    # An editor left by a failed case above would be counted as ours.
    wh_wait_for "no editor running" 15 eval '(($(paints) == 0))' || return 1
    echo 120 >"$PAINT.secs"
    convert "$WH_ART/kind-z.bmp" "BMP3:$WH_TMP/other.bmp"
    wh_launch -l other-paint.log "$PAINT" "$(winepath -w "$WH_TMP/other.bmp")"
    local autre=$WH_PID
    mv_click_button 7
    wh_wait_for "our editor" 10 eval '(($(paints) >= 2))' || return 1
    thumb_centre 2
    clear_hover
    wh_mouse_move "$TX" "$TY"
    sleep 0.5
    wh_click root "$TX" "$TY" || return 1
    wh_wait_for "our editor to end" 5 eval '(($(paints) == 1))' || return 1
    kill -0 "$autre" 2>/dev/null || { wh_reason "the other paint program ended"; return 1; }
    # The edit is over: its caption has gone (the other paint program keeps the old one).
    ! caption_is "$EDITING" || { wh_reason "still the editing caption"; return 1; }
    kill "$autre" 2>/dev/null || true
}

# The uploader beside the program (the test editor stands in: it writes its command line
# and leaves a file that is no BMP alone) gets the current capture's JPEG path behind one
# blank, unquoted; the JPEG is the capture's picture.
UPLOADER="$BIN/prjForum.exe"
uploader_logged() { [[ -s "$UPLOADER.log" ]]; }
check_upload() {
    cp "$BIN/testeditor.exe" "$UPLOADER"
    rm -f "$UPLOADER.log"
    wh_key "$MAIN" alt+f || return 1
    sleep 0.5
    _wh_xdo key m u || return 1
    wh_wait_for "the uploader" 15 uploader_logged || { rm -f "$UPLOADER"; return 1; }
    rm -f "$UPLOADER"
    local ligne jpeg
    ligne=$(tr -d '\r\n' <"$UPLOADER.log")
    rm -f "$UPLOADER.log"
    wh_log "uploader command line: $ligne"
    [[ $ligne == \"*prjForum.exe\"\ [A-Z]:* ]] || { wh_reason "command line $ligne"; return 1; }
    jpeg=$(winepath -u "${ligne#*prjForum.exe\" }")
    [[ $jpeg == *-2.jpg ]] || { wh_reason "not capture 2's JPEG: $jpeg"; return 1; }
    [[ $(identify -format %m "$jpeg" 2>/dev/null) == JPEG ]] || { wh_reason "$jpeg is no JPEG"; return 1; }
    cp "$jpeg" "$WH_ART/uploaded.jpg"
    # Capture 2's file holds the editor's red square by now; JPEG keeps it within noise.
    local f psnr best=0
    for f in $(temp_files); do
        [[ $(identify -format %wx%h "$f") == $(identify -format %wx%h "$jpeg") ]] || continue
        psnr=$(compare -metric PSNR "$f" "$jpeg" null: 2>&1 | cut -d. -f1) || true
        [[ $psnr == inf ]] && psnr=99
        ((psnr > best)) && best=$psnr
    done
    ((best >= 30)) || { wh_reason "the JPEG matches no capture (PSNR $best)"; return 1; }
}

# File > Mail > Send the current capture: the JPEG reaches Wine's MAPISendMail, no box
# comes, and the attachment stays for the client; Help > Write to us reaches it too.
mapi_sends() { (($(grep -c 'winemapi:MAPISendMail Executing' "$WH_ART/mirovanta.exe.log") >= $1)); }
check_mail() {
    local avant
    avant=$(grep -c 'winemapi:MAPISendMail Executing' "$WH_ART/mirovanta.exe.log" || true)
    wh_key "$MAIN" alt+f || return 1
    sleep 0.5
    _wh_xdo key m c || return 1
    wh_wait_for "MAPISendMail" 15 mapi_sends $((avant + 1)) || return 1
    sleep 2
    ! box_up || { wh_reason "a box after the send"; return 1; }
    # The mailed mark stands on the thumbnail once the mouse is off the thumbnails.
    list_origin && clear_hover
    wh_screenshot mailed.png "120x600+$LX+$LY"
    compare -subimage-search -metric AE "$WH_SHOT" "$BIN/markmail.bmp" null: >/dev/null 2>&1 ||
        { wh_reason "no mailed mark in the collection"; return 1; }
    local piece
    piece=$(grep -A1 'Ignoring 1 attachments' "$WH_ART/mirovanta.exe.log" | tail -1 | sed 's/.*"\(.*\)".*/\1/;s/\\\\/\\/g')
    [[ $piece == *-2.jpg ]] || { wh_reason "attachment '$piece'"; return 1; }
    [[ -s $(winepath -u "$piece") ]] || { wh_reason "the attachment is gone"; return 1; }
    wh_key "$MAIN" alt+h || return 1
    sleep 0.5
    _wh_xdo key w || return 1
    wh_wait_for "the mail to us" 15 mapi_sends $((avant + 2)) || return 1
    grep -q 'mailto:.*support@mirovanta.app' "$WH_ART/mirovanta.exe.log" || { wh_reason "no support address"; return 1; }
    sleep 2
    ! box_up || { wh_reason "a box after writing to us"; return 1; }
}

# The builder, opened by the collection's marquee: the default delay of half a second, a
# build into the save folder read by gifsicle and ImageMagick, and a preview that plays.
SAVED="$WINEPREFIX/drive_c/users/$(id -un)/Documents"
TEMP_DIR="$APPDATA/tempocapt"
builder() { wh_find_window '^Animated GIF - maximum 50 images$' 1 && BUILDER=$WH_WID; }
# builder_click X Y: a click at twips X Y of the builder's client area.
builder_click() {
    wh_window_geometry "$BUILDER" || return 1
    wh_click root $((WH_X + $1 / TPP)) $((WH_Y + $2 / TPP))
}
BUILDER=""
check_gif_build() {
    # The collection may have slid away meanwhile: the strip brings it back.
    wh_mouse_move 1 300
    wh_wait_for "the collection" 5 list_back || return 1
    list_origin || return 1
    # Off the thumbnails the hint over the marquee goes.
    clear_hover
    wh_click root $((LX + 1040 / TPP)) $((LY + 340 / TPP)) || return 1
    wh_wait_for "the builder" 30 builder || { wh_screenshot no-builder.png; return 1; }
    sleep 1
    wh_screenshot builder-captures.png
    rm -f "$SAVED"/animgif*.gif
    builder_click 7550 320 || return 1
    wh_wait_for "the box of the finished build" 30 error_box || return 1
    wh_screenshot builder-done.png
    wh_key "$ERROR_BOX" Return || return 1
    local anim
    anim=$(ls "$SAVED"/animgif*.gif 2>/dev/null | head -1)
    [[ -s $anim ]] || { wh_reason "no animgif file in $SAVED"; return 1; }
    cp "$anim" "$WH_ART/anim.gif"
    local info
    info=$(gifsicle --info "$anim" 2>&1) || { wh_reason "gifsicle: $info"; return 1; }
    grep -q '3 images' <<<"$info" && grep -q 'loop' <<<"$info" &&
        [[ $(grep -c 'delay 0.50s' <<<"$info") == 3 ]] || { wh_reason "gifsicle: $info"; return 1; }
    # Each frame equals one of the captures' single GIFs, pixel for pixel.
    local k f n found
    for k in 0 1 2; do
        convert "$anim[$k]" +repage -alpha off "$WH_ART/frame-$k.png"
        found=""
        for f in "$TEMP_DIR"/Captprov_*.gif; do
            convert "$f" -alpha off "$WH_ART/single.png"
            n=$(compare -metric AE "$WH_ART/frame-$k.png" "$WH_ART/single.png" null: 2>&1) || true
            [[ $n == 0 ]] && found=$f
        done
        [[ -n $found ]] || { wh_reason "frame $k matches no capture's GIF"; return 1; }
    done
    # The preview plays: within a few seconds (delays of 0.5 s) a shot shows another frame.
    wh_window_geometry "$BUILDER" || return 1
    local region="300x200+$((WH_X + 200 / TPP))+$((WH_Y + 1100 / TPP))"
    wh_screenshot play-1.png "$region"
    for _ in $(seq 1 25); do
        sleep 0.3
        wh_screenshot play-2.png "$region"
        [[ "$(compare -metric AE "$WH_ART/play-1.png" "$WH_ART/play-2.png" null: 2>&1)" == 0 ]] || break
    done
    wh_assert_differs play "$WH_ART/play-1.png" "$WH_ART/play-2.png"
}

# builder_on_folder PATH: opens the builder from Tools > Animated GIF from files on the folder
# of PATH (a file name typed in the open dialog).
builder_on_folder() {
    wh_key "$MAIN" alt+t || return 1
    sleep 0.5
    _wh_xdo key g || return 1
    wh_find_window '^Animated GIF from files$' 10 || return 1
    wh_key "$WH_WID" Return || return 1
    wh_find_window '^Open any GIF file' 15 || return 1
    local dialog=$WH_WID
    sleep 1
    wh_key "$dialog" End $(printf 'BackSpace %.0s' {1..10}) || return 1
    wh_paste "$dialog" "$1" || return 1
    wh_key "$dialog" Return || return 1
    wh_wait_for "the builder" 20 builder || return 1
    sleep 1
}

# Folder mode on a folder with a file that is no GIF: entry 223, and the program goes on.
# The folder's name needs Unicode.
check_gif_folder() {
    # (xwininfo with no window id would wait for a click.)
    [[ -n $BUILDER ]] || { wh_reason "no builder open"; return 1; }
    local dossier="$WINEPREFIX/drive_c/gifs é 截图 📷"
    mkdir -p "$dossier"
    ls "$TEMP_DIR"/Captprov_*.gif | head -2 | { read -r a; read -r c; cp "$a" "$dossier/a.gif"; cp "$c" "$dossier/c.gif"; }
    echo "not a picture" >"$dossier/b.gif"
    # Closing the builder takes its frame GIFs away.
    builder_click 9350 320 || return 1
    wh_wait_window_gone "$BUILDER" 10 || return 1
    ! ls "$TEMP_DIR"/*.gif >/dev/null 2>&1 || { wh_reason "frame GIFs left: $(ls "$TEMP_DIR")"; return 1; }
    builder_on_folder 'C:\gifs é 截图 📷\a.gif' || return 1
    wh_screenshot builder-files.png
    builder_click 7550 320 || return 1
    wh_wait_for "entry 223" 20 error_box || return 1
    wh_screenshot builder-not-gif.png
    wh_key "$ERROR_BOX" Return || return 1
    sleep 1
    kill -0 "$WH_PID_PROGRAM" 2>/dev/null || { wh_reason "the program ended"; return 1; }
    builder || { wh_reason "the builder closed"; return 1; }
}

# Folder mode on a folder with no GIF: the page beside the program, playing, at its size.
check_gif_empty_folder() {
    [[ -n $BUILDER ]] || { wh_reason "no builder open"; return 1; }
    mkdir -p "$WINEPREFIX/drive_c/nogif"
    builder_click 9350 320 || return 1
    wh_wait_window_gone "$BUILDER" 10 || return 1
    builder_on_folder 'C:\nogif\navigate' || return 1
    wh_screenshot builder-empty.png
    wh_window_geometry "$BUILDER" || return 1
    local region="360x240+$((WH_X + 200 / TPP))+$((WH_Y + 1100 / TPP))" k try
    for k in 0 1 2; do
        convert "$BIN/gifhelp_en.gif[$k]" +repage -alpha off "$WH_ART/page-frame-$k.png"
    done
    # page_frame SHOT: the shot shows one of the page's frames, pixel for pixel.
    page_frame() {
        local k
        for k in 0 1 2; do
            [[ "$(compare -metric AE "$WH_ART/$1" "$WH_ART/page-frame-$k.png" null: 2>&1)" == 0 ]] && return 0
        done
        return 1
    }
    wh_screenshot page-1.png "$region"
    page_frame page-1.png || { wh_reason "the preview shows none of the page's frames"; return 1; }
    # Frames last 0.6 s: within a few seconds a shot shows another whole one (on a loaded
    # machine Wine's 2-s hold at a window's showing may come first).
    for try in $(seq 1 25); do
        sleep 0.3
        wh_screenshot page-2.png "$region"
        if [[ "$(compare -metric AE "$WH_ART/page-1.png" "$WH_ART/page-2.png" null: 2>&1)" != 0 ]] &&
            page_frame page-2.png; then
            break
        fi
    done
    wh_assert_differs "the page plays" "$WH_ART/page-1.png" "$WH_ART/page-2.png" || return 1
    page_frame page-2.png || { wh_reason "the preview's next shot shows none of the page's frames"; return 1; }
    # Help/Aide explains the builder in a box.
    builder_click 9350 760 || return 1
    wh_find_window '^Animated GIF$' 10 || return 1
    wh_screenshot builder-help.png
    wh_key "$WH_WID" Return
}

wh_check "three captures of three kinds stand in the collection" check_three_kinds
wh_check "the window slides away and the strip brings it back" check_slides_away
wh_check "the mouse over a thumbnail enlarges it" check_hover
wh_check "a click on it makes the capture current in the main window" check_click_makes_current
wh_check "1 and Enter in its position box moves the capture first" check_move_first
wh_check "x and Enter in a position box: the error box, and the run goes on" check_bad_position
wh_check "the background is see-through and lets the mouse through" check_see_through
wh_check "Edit with no paint program: one warning, the caption unchanged" check_no_editor
wh_check "the editor's red square comes back into the view" check_editor_edits
wh_check "choosing another capture ends our editor and no other" check_choice_ends_editor
wh_check "the uploader gets the current capture as a JPEG" check_upload
wh_check "mail hands the current capture to the mail client, without a box" check_mail
wh_check "the marquee's builder makes a playing GIF of the captures" check_gif_build
wh_check "a folder with a stray file: entry 223 and the program goes on" check_gif_folder
wh_check "a folder with no GIF shows the page that says how" check_gif_empty_folder
wh_finish
