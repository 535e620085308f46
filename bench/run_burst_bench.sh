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
echo "== ffmpeg x11grab, 800x600 at +100+100 to BMP frames"
mkdir -p "$WH_TMP/ff"
s=$(date +%s.%N)
ffmpeg -loglevel error -f x11grab -video_size 800x600 -i "$DISPLAY+100,100" \
    -frames:v "$FRAMES" "$WH_TMP/ff/frame_%03d.bmp"
e=$(date +%s.%N)
echo "ffmpeg: $FRAMES frames in $(echo "($e - $s) * 1000" | bc -l | cut -d. -f1) ms, $(echo "($e - $s) * 1000 / $FRAMES" | bc -l | cut -c1-5) ms a frame (start-up included)"
