#!/usr/bin/env bash
# shellcheck source-path=SCRIPTDIR disable=SC2317,SC2119,SC2034 # checks run through wh_check
# Proves the Wine harness on this machine without our program: Wine's notepad stands in
# for it. Known picture on a private Xvfb, notepad typed into and saved through its Save As
# dialog, screen compared with the picture pixel for pixel outside notepad, no process
# left behind.
set -euo pipefail
source "$(dirname "${BASH_SOURCE[0]}")/lib.sh"

started=$(date +%s)
wh_init selftest
wh_start_xvfb 1280x1024
wh_show_picture
wh_start_wine

OUT="$WH_TMP/out"
mkdir -p "$OUT"
LINE1='Hello, Wine! Typed by xdotool: ABC xyz 0123 (#%&*)'
LINE2='Second line.'
NOTEPAD=""
NOTEPAD_PID=""

# The comparison helper counts exactly the pixels it should, inside regions and masks.
check_diff_helper() {
  local marked="$WH_TMP/marked.png"
  # #010203 occurs nowhere in the picture: exactly the 100 pixels of the mark differ.
  convert "$WH_PICTURE" -fill '#010203' -draw 'rectangle 500,300 509,309' "$marked"
  wh_diff_count "$WH_PICTURE" "$marked" || return 1
  [[ $WH_DIFF == 100 ]] || wh_reason "whole picture: $WH_DIFF differing pixels, want 100"
  wh_diff_count "$WH_PICTURE" "$marked" --region 20x20+495+295 || return 1
  [[ $WH_DIFF == 100 ]] || wh_reason "region: $WH_DIFF differing pixels, want 100"
  wh_diff_count "$WH_PICTURE" "$marked" --region 100x100+600+300 || return 1
  [[ $WH_DIFF == 0 ]] || wh_reason "region beside the mark: $WH_DIFF differing pixels, want 0"
  wh_diff_count "$WH_PICTURE" "$marked" --exclude 10x10+500+300 || return 1
  [[ $WH_DIFF == 0 ]] || wh_reason "mark excluded: $WH_DIFF differing pixels, want 0"
  wh_diff_count "$WH_PICTURE" "$marked" --exclude 10x9+500+300 || return 1
  [[ $WH_DIFF == 10 ]] || wh_reason "mark excluded but one row: $WH_DIFF differing pixels, want 10"
  if wh_assert_same diff-helper "$WH_PICTURE" "$marked" 2>/dev/null; then
    wh_reason "wh_assert_same accepted different pictures"
  else
    WH_REASON=""
    [[ -s $WH_ART/diff-helper-diff.png ]] || wh_reason "no difference picture written"
  fi
}

# Before any Wine window the screen is the picture, pixel for pixel.
check_picture_on_screen() {
  wh_screenshot screen-before.png || return 1
  wh_assert_same picture-on-screen screen-before.png "$WH_PICTURE"
}

check_notepad_opens() {
  wh_launch -C "$OUT" notepad
  NOTEPAD_PID=$WH_PID
  wh_find_window '^Untitled - Notepad$' 20 || return 1
  NOTEPAD=$WH_WID
  wh_window_geometry "$NOTEPAD" || return 1
  # No window manager: the X window is the Win32 window less caption (19) and frame (4).
  [[ $WH_X == 4 && $WH_Y == 23 ]] || wh_reason "notepad at $WH_X,$WH_Y, expected 4,23"
}

# Keys reach the focused Wine window, capitals and punctuation included; the text is
# proven by the file notepad saves through its Save As dialog.
check_typing_and_saving() {
  local dialog want
  wh_type "$NOTEPAD" "$LINE1" || return 1
  wh_key "$NOTEPAD" Return || return 1
  wh_type "$NOTEPAD" "$LINE2" || return 1
  wh_key "$NOTEPAD" ctrl+s || return 1
  wh_find_window '^Save As$' 10 || return 1
  dialog=$WH_WID
  wh_type "$dialog" "Z:${OUT//\//\\}\\typed.txt" || return 1
  wh_key "$dialog" Return || return 1
  wh_wait_window_gone "$dialog" 10 || return 1
  wh_wait_file "$OUT/typed.txt" 10 || return 1
  want=$(printf '%s\r\n%s' "$LINE1" "$LINE2")
  [[ "$(cat "$OUT/typed.txt")" == "$want" ]] ||
    wh_reason "saved text is '$(tr '\r\n' '|~' <"$OUT/typed.txt")'"
  wh_find_window '^typed.txt - Notepad$' 5
}

# Pointer coordinates are relative to the window: a drag along the first text line (menu
# bar 19 px, then the edit box) selects that line, and typing replaces it.
check_mouse_select() {
  local want
  wh_drag "$NOTEPAD" 6 29 800 29 || return 1
  wh_type "$NOTEPAD" 'Replaced by a drag.' || return 1
  wh_key "$NOTEPAD" ctrl+s || return 1
  wh_wait_for "the saved file to change" 10 grep -q '^Replaced' "$OUT/typed.txt" || return 1
  want=$(printf 'Replaced by a drag.\r\n%s' "$LINE2")
  [[ "$(cat "$OUT/typed.txt")" == "$want" ]] ||
    wh_reason "saved text is '$(tr '\r\n' '|~' <"$OUT/typed.txt")'"
}

# Outside notepad the screen is still the picture; notepad's own area is not.
check_screen_around_notepad() {
  local geom
  geom=$(wh_geometry_of "$NOTEPAD") || return 1
  wh_screenshot screen-notepad.png || return 1
  wh_assert_same outside-notepad screen-notepad.png "$WH_PICTURE" --exclude "$geom"
  wh_assert_differs notepad-area screen-notepad.png "$WH_PICTURE" --region "$geom"
  # A region grab beside notepad equals that part of the picture.
  wh_screenshot corner.png 300x200+980+824 || return 1
  convert "$WH_PICTURE" -crop 300x200+980+824 +repage "$WH_TMP/corner.png"
  wh_assert_same region-grab corner.png "$WH_TMP/corner.png"
}

check_notepad_closes() {
  wh_key "$NOTEPAD" alt+F4 || return 1
  wh_wait_window_gone "$NOTEPAD" 10 || return 1
  wh_wait_exit "$NOTEPAD_PID" 10 || return 1
  [[ $WH_EXIT_CODE == 0 ]] || wh_reason "notepad exited with $WH_EXIT_CODE"
  wh_screenshot screen-after.png || return 1
  wh_assert_same picture-after-notepad screen-after.png "$WH_PICTURE"
}

check_nothing_left() {
  local tmp=$WH_TMP left
  wh_cleanup
  left=$(wh_own_processes)
  [[ -z $left ]] || wh_reason "still running: $left"
  [[ ! -e $tmp || ${MIROVANTA_WINE_KEEP:-0} == 1 ]] || wh_reason "temp folder $tmp is still there"
  [[ ! -e /tmp/.X${DISPLAY#:}-lock ]] || wh_reason "Xvfb lock of $DISPLAY is still there"
}

wh_check diff-helper check_diff_helper
wh_check picture-on-screen check_picture_on_screen
wh_check notepad-opens check_notepad_opens
if [[ -n $NOTEPAD ]]; then
  wh_check typing-and-saving check_typing_and_saving
  wh_check mouse-select check_mouse_select
  wh_check screen-around-notepad check_screen_around_notepad
  wh_check notepad-closes check_notepad_closes
fi
wh_check nothing-left check_nothing_left
wh_log "selftest took $(($(date +%s) - started)) s"
echo "selftest took $(($(date +%s) - started)) s"
wh_finish
