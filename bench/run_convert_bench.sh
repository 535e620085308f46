#!/usr/bin/env bash
# The program's conversion of a 1920x1080 capture to JPEG, PNG and GIF under Wine, beside
# ImageMagick's `convert` on the same BMP in the same run, and the GIF's closeness (PSNR)
# to the source next to `convert -colors 256`.
# Usage: bench/run_convert_bench.sh BIN_DIR [RUNS]
set -euo pipefail
here=$(cd "$(dirname "${BASH_SOURCE[0]}")" && pwd)
source "$here/../tests/wine/lib.sh"
BIN=$(cd "${1:?usage: run_convert_bench.sh BIN_DIR [RUNS]}" && pwd)
RUNS=${2:-5}

wh_init convert-bench
wh_start_xvfb 1920x1080
wh_show_picture
wh_start_wine
# The source: the screen as a capture would hold it.
import -window root "BMP3:$WH_TMP/source.bmp"
wh_wine "$BIN/convert_bench.exe" "$(winepath -w "$WH_TMP/source.bmp")" "$(winepath -w "$WH_TMP")" "$RUNS"
for ext in jpg png gif; do
    times=()
    for ((i = 0; i < RUNS; i++)); do
        s=$(date +%s.%N)
        convert "$WH_TMP/source.bmp" -quality 70 "$WH_TMP/im.$ext"
        e=$(date +%s.%N)
        times+=("$(echo "($e - $s) * 1000" | bc -l)")
    done
    printf '%s\n' "${times[@]}" | sort -n |
        awk -v x="$ext" '{a[NR]=$1} END {printf "convert   %-4s  best %7.1f ms   median %7.1f ms\n", x, a[1], a[int(NR/2)+1]}'
done
convert "$WH_TMP/source.bmp" -colors 256 "$WH_TMP/im256.gif"
printf 'GIF PSNR against the source: Mirovanta %s dB, convert -colors 256 %s dB\n' \
    "$(compare -metric PSNR "$WH_TMP/source.bmp" "$WH_TMP/bench.gif" null: 2>&1)" \
    "$(compare -metric PSNR "$WH_TMP/source.bmp" "$WH_TMP/im256.gif" null: 2>&1)"
