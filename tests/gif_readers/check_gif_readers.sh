#!/usr/bin/env bash
# The program's single GIFs and animated GIFs read by programs written elsewhere: gifsicle,
# giflib's giftext and ImageMagick. Every file must parse; the animation must hold its
# frames, delays and loop, and each frame's pixels must equal its single GIF's.
# Usage: check_gif_readers.sh GIFANIM_TOOL
set -euo pipefail
tool=${1:?usage: check_gif_readers.sh GIFANIM_TOOL}
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
fail() { echo "FAIL: $*"; exit 1; }

# Three pictures: thousands of colours, a few colours with black, another size.
convert -size 320x200 gradient:red-blue -swirl 90 "BMP3:$work/a.bmp"
convert -size 320x200 xc:black -fill yellow -draw 'circle 160,100 160,40' "BMP3:$work/b.bmp"
convert -size 200x260 plasma:fractal -seed 7 "BMP3:$work/c.bmp" 2>/dev/null ||
    convert -size 200x260 gradient:green-white "BMP3:$work/c.bmp"
"$tool" frames "$work" "$work/a.bmp" "$work/b.bmp" "$work/c.bmp"
for f in 0 1 2; do
    gifsicle --info "$work/$f.gif" >/dev/null || fail "gifsicle cannot read frame $f"
    giftext "$work/$f.gif" >/dev/null || fail "giftext cannot read frame $f"
done

# Loop, forward and back, 0.5 s: six frames on a canvas of the largest sides.
"$tool" build "$work/anim.gif" 1 1 5 "$work/0.gif" "$work/1.gif" "$work/2.gif"
info=$(gifsicle --info "$work/anim.gif") || fail "gifsicle cannot read the animation"
grep -q '6 images' <<<"$info" || fail "gifsicle: $info"
grep -q 'logical screen 320x260' <<<"$info" || fail "canvas: $info"
grep -q 'loop count 65535\|loop forever' <<<"$info" || fail "loop: $info"
[[ $(grep -c 'delay 0.50s' <<<"$info") == 6 ]] || fail "delays: $info"
giftext "$work/anim.gif" >/dev/null || fail "giftext cannot read the animation"
[[ $(identify "$work/anim.gif" | wc -l) == 6 ]] || fail "ImageMagick does not see six frames"
[[ $(identify -format '%T ' "$work/anim.gif") == "50 50 50 50 50 50 " ]] || fail "ImageMagick delays"
# Frame k of 0 1 2 2 1 0, pixel for pixel, nothing transparent.
order=(0 1 2 2 1 0)
for k in "${!order[@]}"; do
    convert "$work/anim.gif[$k]" +repage -alpha off "$work/frame.png"
    convert "$work/${order[$k]}.gif" -alpha off "$work/single.png"
    n=$(compare -metric AE "$work/frame.png" "$work/single.png" null: 2>&1) || true
    [[ $n == 0 ]] || fail "frame $k differs from its single GIF in $n pixels"
    [[ $(convert "$work/anim.gif[$k]" -format '%[fx:minima]' -alpha extract info:) == 1 ]] ||
        fail "frame $k has transparent pixels"
done

# No loop, one file: no application extension, and still readable.
"$tool" build "$work/once.gif" 0 0 0 "$work/1.gif"
gifsicle --info "$work/once.gif" | grep -q 'loop' && fail "a loop without Chkloop"
giftext "$work/once.gif" >/dev/null || fail "giftext cannot read the single-frame build"
echo "GIF readers: all files read, frames equal"
