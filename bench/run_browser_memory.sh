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

mv_choose_english
# The test flavour takes the captures, so that no click is lost while one is being filed;
# the windows stay up (Wine without a window manager holds each hide up to 2 s). The
# working set is read before the first capture, every 25 captures and at the end.
counts=$WH_TMP/counts.txt done=$WH_TMP/done.txt
{
    echo "wait 3000"
    echo "keepwindows"
    echo "gui $(winepath -w "$counts")"
    for ((i = 1; i <= COUNT; i++)); do
        echo "click 1"
        echo "wait 300"
        ((i % 25)) || echo "gui $(winepath -w "$counts")"
    done
    echo "wait 3000"
    echo "gui $(winepath -w "$counts")"
    echo "mark $(winepath -w "$done") done"
} >"$WH_TMP/memory.txt"
wh_launch_driver "$BIN" "$WH_TMP/memory.txt"
wh_wait_file "$done" $((COUNT * 5 + 60)) || { cat "$WH_ART/driver.log" >&2; exit 1; }
((COUNT == $(temp_files | wc -l))) || wh_die "$(temp_files | wc -l) captures instead of $COUNT"
cp "$counts" "$WH_ART/counts.txt"
n=0
while read -r _ _ _ kb; do
    kb=${kb%$'\r'}
    if ((n == 0)); then
        echo "before any capture: $((kb / 1024)) MB"
    elif ((n * 25 <= COUNT)); then
        echo "$((n * 25)) captures: $((kb / 1024)) MB"
    else
        echo "with $COUNT captures of 1920x1080, settled: $((kb / 1024)) MB"
    fi
    n=$((n + 1))
done <"$counts"
