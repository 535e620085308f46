#!/usr/bin/env bash
# The program's resident memory under Wine (its working set) before any capture and with
# 100 whole-screen captures of a 1920x1080 screen in the collection window.
# Usage: bench/run_browser_memory.sh BIN_DIR [CAPTURES]
set -euo pipefail
here=$(cd "$(dirname "${BASH_SOURCE[0]}")" && pwd)
source "$here/../tests/wine/lib.sh"
source "$here/../tests/wine/program.sh"
BIN=$(cd "${1:?usage: run_browser_memory.sh BIN_DIR [CAPTURES]}" && pwd)
COUNT=${2:-100}

wh_init browser-memory
wh_start_xvfb 1920x1080
wh_show_picture
wh_start_wine
mv_use_prefix

rss_mb() { awk '/^VmRSS:/ { printf "%.0f", $2 / 1024 }' "/proc/$WH_PID_PROGRAM/status"; }

mv_start "$BIN" || wh_die "no main window"
sleep 3
echo "before any capture: $(rss_mb) MB"
# A click that comes while the previous capture is still being filed is ignored (and
# Wine without a window manager takes up to 2 s to hide or show a window): click again.
capture() {
    local essai
    for essai in 1 2 3; do
        mv_click_button 1
        wh_wait_for "capture $1" 15 mv_nth_capture "$1" && return 0
    done
    return 1
}
for ((i = 1; i <= COUNT; i++)); do
    capture "$i" || { wh_screenshot missing.png; wh_die "capture $i missing"; }
    wh_wait_for "the main window" 10 wh_window_visible "$MAIN" || wh_die "no main window"
    sleep 1
    ((i % 25)) || echo "$i captures: $(rss_mb) MB"
done
sleep 3
echo "with $COUNT captures of 1920x1080: $(rss_mb) MB"
wh_finish
