#!/usr/bin/env bash
# The capture road of the program under Wine beside ImageMagick's `import -window root`
# writing a BMP, on the same 1920x1080 screen in the same run.
# Usage: bench/run_capture_bench.sh BIN_DIR [RUNS]
set -euo pipefail
here=$(cd "$(dirname "${BASH_SOURCE[0]}")" && pwd)
source "$here/../tests/wine/lib.sh"
BIN=$(cd "${1:?usage: run_capture_bench.sh BIN_DIR [RUNS]}" && pwd)
RUNS=${2:-10}

wh_init capture-bench
wh_start_xvfb 1920x1080
wh_show_picture
wh_start_wine
echo "== Mirovanta under Wine"
wh_wine "$BIN/capture_bench.exe" "$RUNS" "$(winepath -w "$WH_TMP")"
echo "== import -window root (BMP)"
times=()
for ((i = 0; i < RUNS; i++)); do
    s=$(date +%s.%N)
    import -window root "BMP3:$WH_TMP/import.bmp"
    e=$(date +%s.%N)
    times+=("$(echo "($e - $s) * 1000" | bc -l)")
done
printf '%s\n' "${times[@]}" | sort -n | awk '{a[NR]=$1} END {printf "import -window root        best %8.1f ms   median %8.1f ms\n", a[1], a[int(NR/2)+1]}'
