#!/usr/bin/env bash
# The burst road of the program under Wine beside ffmpeg's x11grab writing BMP frames of the
# same 800x600 zone, on the same 1920x1080 screen in the same run; then a 10-second burst at
# 50 ms. Installs ffmpeg when it is missing.
# Usage: bench/run_burst_bench.sh BIN_DIR [FRAMES]
set -euo pipefail
here=$(cd "$(dirname "${BASH_SOURCE[0]}")" && pwd)
source "$here/../tests/wine/lib.sh"
BIN=$(cd "${1:?usage: run_burst_bench.sh BIN_DIR [FRAMES]}" && pwd)
FRAMES=${2:-30}
command -v ffmpeg >/dev/null || DEBIAN_FRONTEND=noninteractive apt-get install -y -q ffmpeg >/dev/null

wh_init burst-bench
wh_start_xvfb 1920x1080
wh_show_picture
wh_start_wine
echo "== Mirovanta under Wine"
wh_wine "$BIN/burst_bench.exe" "$FRAMES" "$(winepath -w "$WH_TMP")"
echo "== ffmpeg x11grab, 800x600 at +100+100 to BMP frames, unpaced"
# The cost of a frame: the run of FRAMES+1 frames less the run of one (ffmpeg's start-up).
ffgrab() {
    rm -rf "$WH_TMP/ff" && mkdir -p "$WH_TMP/ff"
    local s e
    s=$(date +%s%N)
    ffmpeg -loglevel error -f x11grab -framerate 1000 -video_size 800x600 -i "$DISPLAY+100,100" \
        -frames:v "$1" "$WH_TMP/ff/frame_%04d.bmp"
    e=$(date +%s%N)
    echo $(((e - s) / 1000))
}
# The start-up varies by a tenth of a second: the best of three runs of each.
best() { printf '%s\n' "$@" | sort -n | head -1; }
one=$(best "$(ffgrab 1)" "$(ffgrab 1)" "$(ffgrab 1)")
many=$(best "$(ffgrab $((FRAMES + 1)))" "$(ffgrab $((FRAMES + 1)))" "$(ffgrab $((FRAMES + 1)))")
echo "ffmpeg: one frame $((one / 1000)) ms (start-up), then $(echo "scale=1; ($many - $one) / 1000 / $FRAMES" | bc -l) ms a frame"
