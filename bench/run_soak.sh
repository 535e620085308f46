#!/usr/bin/env bash
# A long run of the real program under Wine: CYCLES times a whole-screen, a window and a
# zone capture (the zone through the frozen screen and Enter), each deleted at once. The
# process's GDI and USER objects, handles and working set are read after a warm-up and at
# the end; the aim is objects and handles within 10 of the start, memory within 10 %.
# Usage: bench/run_soak.sh BIN_DIR [CYCLES]   (default 1000)
set -euo pipefail
here=$(cd "$(dirname "${BASH_SOURCE[0]}")" && pwd)
source "$here/../tests/wine/lib.sh"
source "$here/../tests/wine/program.sh"
BIN=$(cd "${1:?usage: run_soak.sh BIN_DIR [CYCLES]}" && pwd)
CYCLES=${2:-1000}

wh_init soak
wh_start_xvfb 1280x1024
wh_show_picture
wh_start_wine
mv_use_prefix
mv_choose_english
counts=$WH_TMP/counts.txt done=$WH_TMP/done.txt
cycle='click 1
wait 30
key 46 0
wait 30
click 2
wait 30
key 46 0
wait 30
click 0
wait 1200
zonekey 13 0
wait 400
key 46 0
wait 30'
# One capture stays in the list throughout: without a window manager Wine holds each hide
# of the collection for up to 2 s, and the run is about what a capture holds.
cat >"$WH_TMP/soak.txt" <<SCRIPT
wait 1500
keepwindows
click 1
wait 300
repeat 10
$cycle
end
wait 500
gui $(winepath -w "$counts")
time $(winepath -w "$counts") start
repeat $CYCLES
$cycle
end
wait 500
gui $(winepath -w "$counts")
time $(winepath -w "$counts") end
mark $(winepath -w "$done") done
saveall bmp
key 81 2
SCRIPT
wh_launch_driver "$BIN" "$WH_TMP/soak.txt"
program=$WH_PID
# Wine counts no kernel handles (GetProcessHandleCount gives 0): the files and sockets the
# process holds on the Linux side stand in for them.
descriptors() { find "/proc/$program/fd" -mindepth 1 2>/dev/null | wc -l; }
started() { grep -q '^start ' "$counts" 2>/dev/null; }
wh_wait_for "the warm-up" 300 started || exit 1
fd0=$(descriptors)
wh_wait_file "$done" $((CYCLES * 15 + 180)) || { cat "$WH_ART/driver.log" >&2; exit 1; }
fd1=$(descriptors)
wh_wait_exit "$program" 30 || true
cp "$counts" "$WH_ART/counts.txt"
echo "after the warm-up / after $CYCLES cycles: GDI USER handles working-set-KB"
echo "file descriptors: $fd0 / $fd1"
grep -Ev '^(start|end) ' "$counts" | tr -d '\r'
grep -E '^(start|end) ' "$counts" | tr -d '\r'
left=$(temp_files | wc -l)
echo "temporary files left after the quit: $left"
read -r g0 u0 h0 w0 < <(head -1 "$counts" | tr -d '\r')
read -r g1 u1 h1 w1 < <(grep -Ev '^(start|end) ' "$counts" | tail -1 | tr -d '\r')
ok=1
((g1 - g0 <= 10 && u1 - u0 <= 10 && h1 - h0 <= 10 && fd1 - fd0 <= 10)) || ok=0
((w1 * 10 <= w0 * 11)) || ok=0
((ok)) && echo "within the aim" || { echo "OUTSIDE the aim"; exit 1; }
