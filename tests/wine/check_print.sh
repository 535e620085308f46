#!/usr/bin/env bash
# Checks of printing in the real program under Wine: a PostScript printer whose jobs land
# in a file, the title box and the printer dialog answered with keys, the page rendered by
# Ghostscript and judged by its pixels.
# Usage: check_print.sh BIN_DIR
set -euo pipefail
here=$(cd "$(dirname "${BASH_SOURCE[0]}")" && pwd)
source "$here/lib.sh"
source "$here/program.sh"
BIN=$(cd "${1:?usage: check_print.sh BIN_DIR}" && pwd)

wh_init print
wh_start_xvfb 1280x1024
wh_show_picture
wh_start_wine
mv_use_prefix
mv_choose_english
PRINTED="$WH_TMP/printed.ps"
PPD=$(find /usr/share/ghostscript -name ghostpdf.ppd 2>/dev/null | head -1)
[[ -n $PPD ]] || wh_die "ghostpdf.ppd not found (ghostscript)"

printed() { [ -s "$PRINTED" ] && grep -aq '%%EOF' "$PRINTED"; }

start_and_capture() {
    wh_launch "$BIN/mirovanta.exe"
    PROGRAM=$WH_PID
    wh_find_window '^Mirovanta - ' 20 || return 1
    MAIN=$WH_WID
    sleep 1.5
    mv_click_button 1
    wh_wait_for "a temporary BMP" 15 has_temp_file || return 1
    sleep 1
    CAPTURE=$(temp_files | head -1)
}

# Print button, then the title box: types TITLE and OK.
ask_title() {
    mv_click_button 6
    wh_find_window '^Mirovanta$' 10 || return 1
    local box=$WH_WID
    sleep 0.5
    wh_screenshot title-box.png
    wh_type "$box" "$1" || return 1
    wh_key "$box" Return || return 1
    wh_wait_window_gone "$box" 5
}

check_print_page() {
    rm -f "$PRINTED"
    ask_title "Print check 42" || return 1
    wh_find_window '^Print$' 10 || return 1
    local dialog=$WH_WID
    sleep 0.5
    wh_screenshot print-dialog.png
    # Alt+C goes to the number of copies.
    wh_key "$dialog" alt+c || return 1
    wh_type "$dialog" 2 || return 1
    wh_key "$dialog" Return || return 1
    wh_wait_for "the printed document" 20 printed || return 1
    grep -aq '^%cupsJobTicket: copies=2' "$PRINTED" || { wh_reason "not 2 copies"; return 1; }

    # The page at 144 dpi: one pixel for 10 twips.
    gs -q -dSAFER -dNOPAUSE -dBATCH -sDEVICE=png16m -r144 -sOutputFile="$WH_ART/page.png" \
        "$PRINTED" || { wh_reason "gs could not render the document"; return 1; }
    # The title: ink from x 300 (3000 twips), starting at y 100 (1000 twips), none to its left.
    local ink left
    ink=$(convert "$WH_ART/page.png" -crop 500x30+300+100 -threshold 50% -negate -format '%[fx:mean]' info:)
    left=$(convert "$WH_ART/page.png" -crop 290x30+0+100 -threshold 50% -negate -format '%[fx:mean]' info:)
    awk -v i="$ink" -v l="$left" 'BEGIN { exit !(i > 0.02 && l == 0) }' ||
        { wh_reason "title ink $ink, left of it $left"; return 1; }
    # The picture: 10000 twips wide at (800, 2000), the capture in the screen's proportions.
    convert "$WH_ART/page.png" -crop 1000x800+80+200 +repage "$WH_ART/printed-picture.png"
    # Compared at a quarter of the size, where the fine patterns of the picture average out.
    convert "$WH_ART/printed-picture.png" -resize 250x200! "$WH_TMP/a.png"
    convert "$CAPTURE" -resize 250x200! "$WH_TMP/b.png"
    local rmse
    rmse=$(compare -metric RMSE "$WH_TMP/a.png" "$WH_TMP/b.png" null: 2>&1 | sed -E 's/.*\((.*)\)/\1/')
    awk -v r="$rmse" 'BEGIN { exit !(r < 0.04) }' || { wh_reason "picture RMSE $rmse"; return 1; }
    # Nothing left of, right of or below the picture.
    local box beyond
    for box in 75x800+0+200 80x800+1085+200 1000x100+80+1005; do
        beyond=$(convert "$WH_ART/page.png" -crop "$box" -threshold 99% -negate -format '%[fx:mean]' info:)
        awk -v b="$beyond" 'BEGIN { exit !(b == 0) }' || { wh_reason "ink outside the picture in $box: $beyond"; return 1; }
    done
}

check_cancel_prints_nothing() {
    rm -f "$PRINTED"
    ask_title "Cancelled" || return 1
    wh_find_window '^Print$' 10 || return 1
    wh_key "$WH_WID" Escape || return 1
    wh_wait_window_gone "$WH_WID" 5 || return 1
    sleep 2
    [[ ! -e $PRINTED ]] || { wh_reason "a document was printed"; return 1; }
    # No message: the only window of the program with a title is the main one.
    if xdotool search --onlyvisible --name '^Mirovanta$' >/dev/null 2>&1; then
        wh_reason "a box came up"
        return 1
    fi
    kill -0 "$PROGRAM" 2>/dev/null || { wh_reason "the program ended"; return 1; }
}

# A fresh prefix has no printer: the title box comes, then nothing.
check_no_printer_is_silent() {
    start_and_capture || return 1
    ask_title "No printer" || return 1
    sleep 2
    if xdotool search --onlyvisible --name '^(Mirovanta|Print)$' >/dev/null 2>&1; then
        wh_screenshot no-printer.png
        wh_reason "a dialog or box came up"
        return 1
    fi
    kill -0 "$PROGRAM" 2>/dev/null || { wh_reason "the program ended"; return 1; }
}

install_printer() {
    wh_wine "$BIN/addprinter.exe" MirovantaPS "$PRINTED" "$PPD" >>"$WH_ART/addprinter.log" ||
        { wh_reason "could not install the PostScript printer"; return 1; }
}

wh_check "with no printer, Print ends without a word after the title" check_no_printer_is_silent
wh_check "a PostScript file printer installs" install_printer
wh_check "the printed page holds the typed title and the capture at 10000 twips, 2 copies" check_print_page
wh_check "Cancel in the printer dialog prints nothing and shows nothing" check_cancel_prints_nothing
wh_finish
