# shellcheck shell=bash disable=SC2034,SC2030,SC2031
# Screenshots and pixel comparisons of the Wine harness; sourced by lib.sh, never alone.

# ---------------------------------------------------------------- pictures

_wh_art_path() {
  if [[ $1 == /* ]]; then printf '%s' "$1"; else printf '%s/%s' "$WH_ART" "$1"; fi
}

# wh_make_picture FILE WxH: writes a deterministic test picture (PNG, 8-bit RGB): colour
# gradients, a 100-px grid with coordinates, coloured blocks, corner marks, a 1-px
# checkerboard, stripes, seeded noise and a caption. Every pixel follows from the command.
wh_make_picture() {
  local file=$1 size=$2 w h x y font=() draw=() labels=()
  [[ $size =~ ^([0-9]+)x([0-9]+)$ ]] || wh_die "bad picture size: $size"
  w=${BASH_REMATCH[1]}
  h=${BASH_REMATCH[2]}
  if convert -list font 2>/dev/null | grep -q 'Font: DejaVu-Sans$'; then font=(-font DejaVu-Sans); fi
  for ((x = 100; x < w; x += 100)); do
    draw+=(-draw "line $x,0 $x,$((h - 1))")
    labels+=(-annotate "+$((x + 3))+14" "$x")
  done
  for ((y = 100; y < h; y += 100)); do
    draw+=(-draw "line 0,$y $((w - 1)),$y")
    labels+=(-annotate "+3+$((y + 14))" "$y")
  done
  local blocks=(black white red lime blue cyan magenta yellow) i c
  local block_draw=()
  for i in "${!blocks[@]}"; do
    c=${blocks[i]}
    x=$((40 + i * 80))
    block_draw+=(-fill "$c" -draw "rectangle $x,40 $((x + 63)),103")
  done
  convert \
    \( -size "${h}x${w}" gradient:black-white -rotate 90 \) \
    \( -size "${w}x${h}" gradient:white-black \) \
    \( -size "${w}x${h}" -define gradient:angle=45 gradient:'#202020-#e0e0e0' \) \
    -combine -set colorspace sRGB +antialias \
    -stroke '#00000070' -fill none "${draw[@]}" -stroke none \
    "${block_draw[@]}" \
    -fill '#ff8000' -draw "rectangle 0,0 7,7" -fill '#0080ff' -draw "rectangle $((w - 8)),0 $((w - 1)),7" \
    -fill '#80ff00' -draw "rectangle 0,$((h - 8)) 7,$((h - 1))" \
    -fill '#ff0080' -draw "rectangle $((w - 8)),$((h - 8)) $((w - 1)),$((h - 1))" \
    \( -size 128x128 pattern:gray50 \) -geometry "+$((w - 168))+40" -compose over -composite \
    \( -size 128x128 pattern:vertical2 \) -geometry "+$((w - 168))+200" -composite \
    \( -size 128x128 xc:gray -seed 1234 +noise Random \) -geometry "+$((w - 168))+360" -composite \
    -antialias -fill '#101010' "${font[@]}" -pointsize 11 "${labels[@]}" \
    -fill white -pointsize 28 -annotate "+40+$((h - 40))" "Mirovanta known screen ${w}x${h}" \
    -alpha off -depth 8 -type TrueColor "png24:$file" ||
    wh_die "making the test picture failed"
}

# wh_show_picture [FILE]: shows FILE (default: a new test picture of the screen size,
# artifacts/picture.png) borderless at 0,0 and waits until the screen equals it. Call it
# before starting Wine programs: a window mapped later covers them. Sets WH_PICTURE,
# WH_PICTURE_WID. Never send keys to this window (display takes them as commands).
wh_show_picture() {
  local file=${1:-}
  if [[ -z $file ]]; then
    file="$WH_ART/picture.png"
    wh_make_picture "$file" "${WH_SCREEN_W}x${WH_SCREEN_H}"
  fi
  WH_PICTURE=$file
  display -geometry +0+0 -borderwidth 0 -immutable -title mirovanta-known-picture "$file" \
    </dev/null >>"$WH_ART/display.log" 2>&1 &
  WH_PICTURE_PID=$!
  wh_find_window '^mirovanta-known-picture$' 10 || wh_die "picture window did not appear: $WH_REASON"
  _wh_remember "$WH_PICTURE_PID"
  WH_PICTURE_WID=$WH_WID
  wh_wait_for "the screen to show the picture" 10 _wh_screen_is_picture ||
    wh_die "the screen does not show the picture: $WH_REASON"
  wh_log "picture shown: $file"
}

_wh_screen_is_picture() {
  local shot="$WH_TMP/picture-check.png"
  import -window root "$shot" 2>/dev/null || return 1
  wh_diff_count "$shot" "$WH_PICTURE" 2>/dev/null || return 1
  [[ $WH_DIFF == 0 ]]
}

# wh_screenshot FILE [GEOMETRY]: grabs the root window (or the region WxH+X+Y) into FILE;
# sets WH_SHOT to its full path.
wh_screenshot() {
  local file
  file=$(_wh_art_path "$1")
  import -window root "$file" 2>>"$WH_ART/harness.log" || {
    wh_reason "screenshot failed"
    return 1
  }
  if [[ -n ${2:-} ]]; then
    convert "$file" -crop "$2" +repage "$file" || {
      wh_reason "cropping screenshot to $2 failed"
      return 1
    }
  fi
  WH_SHOT=$file
  wh_log "screenshot $file${2:+ ($2)}"
}

# wh_diff_count A B [--region WxH+X+Y] [--fuzz F] [--exclude WxH+X+Y]... [--diff OUT]:
# counts the differing pixels of A and B (compare -metric AE) into WH_DIFF. --region
# compares that part only; --exclude blanks a rectangle in both first; --fuzz is
# ImageMagick's (e.g. 2%); --diff writes compare's difference picture.
wh_diff_count() {
  local a b region="" fuzz="" out="null:" excl=() g
  a=$(_wh_art_path "$1")
  b=$(_wh_art_path "$2")
  shift 2
  while [[ $# -gt 0 ]]; do
    case $1 in
    --region) region=$2 ;;
    --fuzz) fuzz=$2 ;;
    --exclude) excl+=("$2") ;;
    --diff) out=$(_wh_art_path "$2") ;;
    *) wh_die "wh_diff_count: unknown option $1" ;;
    esac
    shift 2
  done
  local sa sb
  sa=$(identify -format '%wx%h' "$a" 2>/dev/null) || { wh_reason "cannot read $a"; return 1; }
  sb=$(identify -format '%wx%h' "$b" 2>/dev/null) || { wh_reason "cannot read $b"; return 1; }
  if [[ $sa != "$sb" ]]; then
    wh_reason "sizes differ: $(basename "$a") $sa, $(basename "$b") $sb"
    return 1
  fi
  if ((${#excl[@]})); then
    local ops=(+antialias -fill black -stroke none) gx gy gw gh
    for g in "${excl[@]}"; do
      [[ $g =~ ^([0-9]+)x([0-9]+)\+(-?[0-9]+)\+(-?[0-9]+)$ ]] || wh_die "bad geometry: $g"
      gw=${BASH_REMATCH[1]} gh=${BASH_REMATCH[2]} gx=${BASH_REMATCH[3]} gy=${BASH_REMATCH[4]}
      ops+=(-draw "rectangle $gx,$gy $((gx + gw - 1)),$((gy + gh - 1))")
    done
    if ! convert "$a" "${ops[@]}" "$WH_TMP/diff-a.miff" || ! convert "$b" "${ops[@]}" "$WH_TMP/diff-b.miff"; then
      wh_reason "masking failed"
      return 1
    fi
    a="$WH_TMP/diff-a.miff"
    b="$WH_TMP/diff-b.miff"
  fi
  if [[ -n $region ]]; then
    a="${a}[$region]"
    b="${b}[$region]"
  fi
  local args=(-precision 15 -metric AE) res rc=0
  [[ -n $fuzz ]] && args+=(-fuzz "$fuzz")
  res=$(compare "${args[@]}" "$a" "$b" "$out" 2>&1) || rc=$?
  if ((rc > 1)) || [[ ! $res =~ ^[0-9]+$ ]]; then
    wh_reason "compare failed: $res"
    return 1
  fi
  WH_DIFF=$res
}

# wh_assert_same NAME A B [wh_diff_count options]: fails (reason recorded) unless A and B
# are equal; on failure writes artifacts/NAME-diff.png.
wh_assert_same() {
  local name=$1
  shift
  wh_diff_count "$@" || return 1
  if [[ $WH_DIFF != 0 ]]; then
    wh_diff_count "$@" --diff "$name-diff.png" || true
    wh_reason "$WH_DIFF pixels differ between $(basename "$1") and $(basename "$2") (see $WH_ART/$name-diff.png)"
    return 1
  fi
}

# wh_assert_differs NAME A B [wh_diff_count options]: fails unless A and B differ somewhere.
wh_assert_differs() {
  local name=$1
  shift
  wh_diff_count "$@" || return 1
  [[ $WH_DIFF != 0 ]] || wh_reason "$name: $(basename "$1") and $(basename "$2") are identical"
}
