#!/usr/bin/env bash
# Every benchmark of bench/ in one run, each beside its reference: the native ones from a
# release tree of their own (build/native has sanitizers), the Windows ones under Wine on
# the x64 build. The output, one section a bench, goes to build/bench-results.txt; the
# README's speed table is read from it.
# Usage: bench/run_all.sh [BUILD_DIR]   (needs BUILD_DIR/win64 built; default build)
set -uo pipefail
root=$(cd "$(dirname "$0")/.." && pwd)
build=$(cd "${1:-$root/build}" && pwd)
out=$build/bench-results.txt
tree=$build/bench-release
cmake -S "$root" -B "$tree" -DCMAKE_BUILD_TYPE=Release -DMIROVANTA_WERROR=OFF >/dev/null
cmake --build "$tree" -j "$(nproc)" --target assets thumbnail_bench quantize_bench overlay_bench \
    browser_bench zoom_bench gifanim_bench >/dev/null

: >"$out"
section() {
    echo "=== $*" | tee -a "$out"
    "$@" 2>&1 | tee -a "$out"
}
for bench in thumbnail_bench quantize_bench overlay_bench browser_bench zoom_bench gifanim_bench; do
    section "$tree/bench/$bench"
done
for script in run_capture_bench run_convert_bench "run_burst_bench 200" run_browser_memory; do
    read -r name args <<<"$script"
    # shellcheck disable=SC2086 # the count, when there is one
    section bash "$root/bench/$name.sh" "$build/win64/bin" $args
done
echo "results in $out"
