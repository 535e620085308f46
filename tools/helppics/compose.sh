#!/usr/bin/env bash
# Composes the pictures of the illustrated help in one language from the screenshots of
# shoot.sh: each real element cut out at 1:1 (only the toolbar's and the thumbnails'
# pictures are made smaller) and pasted on the window's own colour so that each hot zone
# of zones.sh lies over the element its text explains. Stops when a zone falls outside its
# picture, misses its element, or when two elements overlap.
# Usage: compose.sh en|fr SHOTS BIN_DIR OUT [DEBUG_DIR]
# DEBUG_DIR receives each picture as PNG with the hot zones outlined in red;
# HELPPICS_KEEP=1 keeps the cut pieces in their temporary folder.
set -euo pipefail
here=$(cd "$(dirname "${BASH_SOURCE[0]}")" && pwd)
source "$here/analyse.sh"
source "$here/zones.sh"
LNG=${1:?usage: compose.sh en|fr SHOTS BIN_DIR OUT [DEBUG_DIR]}
SHOTS=${2:?shots folder}
BIN=${3:?bin folder}
OUT=${4:?output folder}
DEBUG=${5:-}
mkdir -p "$OUT"
[[ -z $DEBUG ]] || mkdir -p "$DEBUG"
TMP=$(mktemp -d)
[[ -n ${HELPPICS_KEEP:-} ]] || trap 'rm -rf "$TMP"' EXIT

die() {
    echo "compose.sh $LNG: $*" >&2
    exit 1
}
# geo KEY: a value noted by shoot.sh.
geo() { sed -n "s/^$1=//p" "$SHOTS/geometry.txt"; }
# size FILE: "W H".
size() { identify -format '%w %h' "$1"; }
# pixel FILE X Y: the colour of one pixel.
pixel() { convert "$1" -format "%[pixel:p{$2,$3}]" info:; }
# crop_to FILE X Y W H OUT: a part of a screenshot.
crop_to() { convert "$1" -crop "$4x$5+$2+$3" +repage "$6"; }
# bbox FILE X Y W H BG: "X Y W H" of what differs from BG in that part of FILE (absolute),
# or nothing when all of it is BG.
bbox() {
    local g
    g=$(convert "$1" -crop "$4x$5+$2+$3" +repage -bordercolor "$6" -border 1 -fuzz 1% \
        -format '%@' info: 2>/dev/null)
    [[ $g =~ ^([0-9]+)x([0-9]+)\+(-?[0-9]+)\+(-?[0-9]+)$ ]] || return 0
    local w=${BASH_REMATCH[1]} h=${BASH_REMATCH[2]} x=${BASH_REMATCH[3]} y=${BASH_REMATCH[4]}
    ((w > 0 && h > 0 && w < $4 + 2)) || return 0
    echo "$(($2 + x - 1)) $(($3 + y - 1)) $w $h"
}
# cut_ink FILE X Y W H BG OUT: the part of FILE that differs from BG within that region.
cut_ink() {
    local b bx by bw bh
    b=$(bbox "$1" "$2" "$3" "$4" "$5" "$6")
    [[ -n $b ]] || die "nothing in $4x$5+$2+$3 of $(basename "$1")"
    read -r bx by bw bh <<<"$b"
    crop_to "$1" "$bx" "$by" "$bw" "$bh" "$7"
}
# bands FILE X Y W H BG AXIS GAP: the runs "FIRST LAST" (absolute) of rows (AXIS y) or
# columns (x) of that region holding something else than BG, GAP blank lines apart at most.
bands() {
    local n=$4 off=$2 scale="${4}x1!"
    if [[ $7 == y ]]; then n=$5 off=$3 scale="1x${5}!"; fi
    convert "$1" -crop "$4x$5+$2+$3" +repage -fuzz 1% -fill black -opaque "$6" -fill white \
        +opaque black -colorspace gray -filter box -resize "$scale" -depth 16 txt:- |
        awk -v axis="$7" -v off="$off" -v gap="$8" '
            NR > 1 { split($1, a, /[,:]/); i = (axis == "x") ? a[1] : a[2]
                     gsub(/[()]/, "", $2); split($2, v, ","); if (v[1] + 0 > 0) {
                         if (have && i - last > gap + 1) { print first + off, last + off; first = i }
                         else if (!have) first = i
                         have = 1; last = i } }
            END { if (have) print first + off, last + off }'
}

# ------------------------------------------------------------------ composing
# A picture is a list of pastes on a plain canvas. Each element pasted with put is noted
# with the zone it serves, for the checks at the end.
PW=0 PH=0 CANVAS="" OPS=() ELEMS=() DEBUG_EXTRA=()
canvas() {
    PW=$1 PH=$2 CANVAS=$3 OPS=() ELEMS=()
}
# put TAG FILE X Y: pastes FILE with its top left corner at X,Y; TAG names the zone it
# serves (zN, tN) or "-" for none.
put() {
    local w h
    read -r w h <<<"$(size "$2")"
    OPS+=("$2" -geometry "+$3+$4" -composite)
    ELEMS+=("$1 $3 $4 $w $h")
}
# put_centred TAG FILE "L R T B": pastes FILE centred on that zone.
put_centred() {
    local w h l r t b
    read -r w h <<<"$(size "$2")"
    read -r l r t b <<<"$3"
    put "$1" "$2" "$(((l + r + 1 - w) / 2))" "$(((t + b + 1 - h) / 2))"
}
# fill X1 Y1 X2 Y2 COLOUR: a plain rectangle under what comes later (no element).
fill() {
    OPS+=(-fill "$5" -draw "rectangle $1,$2 $3,$4")
}

# check_and_write NAME ZONE_LIST_NAME [TAG_PREFIX]: checks the zones and the elements, writes
# OUT/NAME.jpg (and the debug copy).
check_and_write() {
    local name=$1 list=$2 prefix=${3:-z}
    local -n zl=$list
    local i e a b errors=()
    # Every zone inside the picture, its middle inside the box of its elements.
    for i in "${!zl[@]}"; do
        local l r t bt
        read -r l r t bt <<<"${zl[i]}"
        ((l >= 0 && t >= 0 && r < PW && bt < PH)) || errors+=("zone $i ($l $r $t $bt) outside ${PW}x$PH")
        local cx=$(((l + r) / 2)) cy=$(((t + bt) / 2)) x1=99999 y1=99999 x2=-1 y2=-1 found=0
        for e in "${ELEMS[@]}"; do
            read -r tag ex ey ew eh <<<"$e"
            [[ $tag == "$prefix$i" ]] || continue
            found=1
            ((ex < x1)) && x1=$ex
            ((ey < y1)) && y1=$ey
            ((ex + ew - 1 > x2)) && x2=$((ex + ew - 1))
            ((ey + eh - 1 > y2)) && y2=$((ey + eh - 1))
        done
        if ((found == 0)); then
            errors+=("zone $i has no element")
        elif ((cx < x1 || cx > x2 || cy < y1 || cy > y2)); then
            # A small element (a short label in a wide row) lies mostly inside its zone.
            local ix=$(((r < x2 ? r : x2) - (l > x1 ? l : x1) + 1)) iy=$(((bt < y2 ? bt : y2) - (t > y1 ? t : y1) + 1))
            if ((ix <= 0 || iy <= 0 || ix * iy * 10 < (x2 - x1 + 1) * (y2 - y1 + 1) * 6)); then
                errors+=("zone $i ($l $r $t $bt) misses its element $x1,$y1-$x2,$y2")
            fi
        fi
    done
    # No two elements overlap, and each lies inside the picture.
    for ((a = 0; a < ${#ELEMS[@]}; a++)); do
        read -r ta xa ya wa ha <<<"${ELEMS[a]}"
        ((xa >= 0 && ya >= 0 && xa + wa <= PW && ya + ha <= PH)) ||
            errors+=("element $ta at $xa,$ya ${wa}x$ha leaves the picture")
        for ((b = a + 1; b < ${#ELEMS[@]}; b++)); do
            read -r tb xb yb wb hb <<<"${ELEMS[b]}"
            if ((xa < xb + wb && xb < xa + wa && ya < yb + hb && yb < ya + ha)); then
                errors+=("elements $ta ($xa,$ya ${wa}x$ha) and $tb ($xb,$yb ${wb}x$hb) overlap")
            fi
        done
    done
    ((${#errors[@]} == 0)) || die "$name: $(printf '%s; ' "${errors[@]}")"
    convert -size "${PW}x$PH" "xc:$CANVAS" -colorspace sRGB "${OPS[@]}" +repage -strip \
        -type TrueColor -sampling-factor 1x1 -quality 92 "$OUT/$name.jpg"
    if [[ -n $DEBUG ]]; then
        local draw=()
        for i in "${!zl[@]}" "${DEBUG_EXTRA[@]}"; do
            if [[ $i == *" "* ]]; then read -r l r t bt <<<"$i"; else read -r l r t bt <<<"${zl[i]}"; fi
            draw+=(-draw "rectangle $l,$t $r,$bt")
        done
        convert "$OUT/$name.jpg" -fill none -stroke red -strokewidth 1 "${draw[@]}" "$DEBUG/$name.png"
    fi
}

BACK=$(geo back)
[[ -n $BACK ]] || die "no window colour in $SHOTS/geometry.txt"

# ------------------------------------------------------------------ view 0: the main window
main_picture() {
    local start="$SHOTS/main-start.png" bar="$SHOTS/menubar.png" view="$SHOTS/main-view.png"
    canvas 640 330 "$BACK"
    # The menu bar: its colour as a strip, the titles cut from it, the tray icon.
    local barbg
    barbg=$(pixel "$bar" 1 1)
    fill 0 24 597 42 "$barbg"
    local titles=() t
    IFS=';' read -r -a titles <<<"$(geo titles)"
    ((${#titles[@]} >= 5)) || die "menu titles: $(geo titles)"
    # Pieces: File, Edit, Tools, and Help with Standby beside it as in the menu bar.
    local pieces=() a b
    for t in 0 1 2; do
        read -r a b <<<"${titles[t]}"
        pieces+=("$a $b")
    done
    read -r a _ <<<"${titles[3]}"
    read -r _ b <<<"${titles[4]}"
    pieces+=("$a $b")
    # Centred on their zones, pushed apart where they would come closer than 8 pixels.
    local places="" k l r
    for k in 0 1 2 3; do
        read -r a b <<<"${pieces[k]}"
        read -r l r _ <<<"${TITLE_ZONES[k]}"
        places+="$(((l + r) / 2)) $((b - a + 3))"$'\n'
    done
    local xs=()
    mapfile -t xs < <(awk 'NF { n++; c[n] = $1; w[n] = $2; x[n] = c[n] - w[n] / 2 }
        END {
              for (it = 0; it < 100; it++) for (i = 2; i <= n; i++) {
                  o = x[i - 1] + w[i - 1] + 8 - x[i]
                  if (o > 0) { x[i - 1] -= o / 2; x[i] += o / 2 } }
              if (x[1] < 2) { d = 2 - x[1]; for (i = 1; i <= n; i++) x[i] += d }
              for (i = 1; i <= n; i++) printf "%d\n", x[i] + 0.5 }' <<<"$places")
    for k in 0 1 2 3; do
        read -r a b <<<"${pieces[k]}"
        crop_to "$bar" $((a - 1)) 0 $((b - a + 3)) 19 "$TMP/title$k.png"
        put "t$k" "$TMP/title$k.png" "${xs[k]}" 24
    done
    convert "$BIN/mirovanta.ico[0]" -background "$barbg" -flatten "$TMP/trayicon.png"
    read -r l r _ <<<"${TITLE_ZONES[4]}"
    put t4 "$TMP/trayicon.png" $(((l + r + 1 - 16) / 2)) 25
    # The buttons, a little smaller so that neighbours keep apart; About smaller still.
    local x y
    for k in $(seq 0 19); do
        read -r x y _ <<<"$(geo "button$k")"
        local side=28
        ((k == 19)) && side=20
        convert "$start" -crop "32x32+$x+$y" +repage -filter Lanczos -resize "${side}x$side" \
            "$TMP/button$k.png"
        put_centred "z$k" "$TMP/button$k.png" "${ZONES_MAIN[k]}"
    done
    # The view of the capture, under the toolbar.
    local vw
    read -r vw _ <<<"$(size "$view")"
    ((vw >= 640)) || die "main window view only $vw wide"
    crop_to "$view" 0 52 640 248 "$TMP/view.png"
    put view "$TMP/view.png" 0 82
    DEBUG_EXTRA=("${TITLE_ZONES[@]}" "0 $VIEW_RIGHT $((VIEW_BOTTOM_OF_BAR + 1)) $((PH - 1))")
    check_and_write "help_main_$LNG" ZONES_MAIN z
    DEBUG_EXTRA=()
    # The titles' zones, checked apart (their tags are tN).
    check_titles
}
check_titles() {
    local i l r t b cx cy e tag ex ey ew eh ok
    for i in "${!TITLE_ZONES[@]}"; do
        read -r l r t b <<<"${TITLE_ZONES[i]}"
        cx=$(((l + r) / 2)) cy=$(((t + b) / 2)) ok=0
        for e in "${ELEMS[@]}"; do
            read -r tag ex ey ew eh <<<"$e"
            [[ $tag == "t$i" ]] || continue
            ((cx >= ex && cx < ex + ew && cy >= ey && cy < ey + eh)) && ok=1
        done
        ((ok)) || die "title zone $i misses its title"
    done
}

# ------------------------------------------------------------------ view 1: the thumbnails
thumbs_picture() {
    local plain="$SHOTS/collection-plain.png" shot="$SHOTS/collection.png"
    local W H
    read -r W H <<<"$(size "$shot")"
    canvas 200 560 "$BACK"
    # The client area starts 3 pixels right and 19 down of the X window (frame and caption).
    local CX=3 CY=19
    # The thumbnails: runs of rows in their column, below the scrolling title.
    local runs=() rects=() r a b
    mapfile -t runs < <(bands "$shot" "$CX" $((CY + 40)) 100 $((H - CY - 45)) "$BACK" y 3)
    for r in "${runs[@]}"; do
        read -r a b <<<"$r"
        ((b - a >= 20)) || continue
        rects+=("$(bbox "$shot" "$CX" "$a" 100 $((b - a + 1)) "$BACK")")
    done
    ((${#rects[@]} == 5)) || die "thumbnails found: ${#rects[@]} (${runs[*]})"

    # Per thumbnail: its picture (from the shot without marks), caption, tick box, position.
    local i tx ty tw th
    for i in 0 1 2 3 4; do
        read -r tx ty tw th <<<"${rects[i]}"
        crop_to "$plain" "$tx" "$ty" "$tw" "$th" "$TMP/thumbfull$i.png"
        convert "$TMP/thumbfull$i.png" -filter Lanczos -resize '58x100>' "$TMP/thumb$i.png"
        # Right of it: the caption's lines, then a band with the tick box and the position.
        local rb=()
        mapfile -t rb < <(bands "$shot" $((CX + 104)) $((ty - 4)) 82 80 "$BACK" y 0)
        # The box band is the first one 15 pixels high; the caption's lines come before it.
        local capt_top="" capt_bottom="" box_top="" box_bottom=""
        for r in "${rb[@]}"; do
            read -r a b <<<"$r"
            [[ -z $box_top ]] || continue
            if ((b - a >= 14)); then
                box_top=$a box_bottom=$b
            else
                [[ -n $capt_top ]] || capt_top=$a
                capt_bottom=$b
            fi
        done
        [[ -n $capt_top && -n $box_top ]] || die "thumbnail $((i + 1)): no caption or box (${rb[*]})"
        cut_ink "$shot" $((CX + 102)) "$capt_top" 84 $((capt_bottom - capt_top + 1)) "$BACK" "$TMP/caption$i.png"
        cut_ink "$shot" $((CX + 106)) "$box_top" 30 $((box_bottom - box_top + 1)) "$BACK" "$TMP/tick$i.png"
        cut_ink "$shot" $((CX + 138)) "$box_top" 50 $((box_bottom - box_top + 1)) "$BACK" "$TMP/position$i.png"
        THUMB_RECTS[i]="$tx $ty $tw $th"
    done

    # The marks, on the top left corner of the mailed thumbnails (2 and 3), exactly as drawn.
    find_mark "$shot" 1 "$BIN/marksave.bmp" 0 "$TMP/marksave.png"
    find_mark "$shot" 1 "$BIN/markmail.bmp" 16 "$TMP/markmail.png"

    # The caption strip of the window: its left part and its right end with the button.
    crop_to "$shot" 0 0 $((PW - 30)) "$CY" "$TMP/strip-left.png"
    crop_to "$shot" $((W - 30)) 0 30 "$CY" "$TMP/strip-right.png"
    put - "$TMP/strip-left.png" 0 0
    put - "$TMP/strip-right.png" $((PW - 30)) 0

    # The slider and the count under it, right of the thumbnails' strip; the slider (80
    # pixels high) on the middle of its zone, its left edge on the zone's.
    cut_ink "$shot" $((CX + 193)) $((CY + 1)) $((W - CX - 193 - 3)) 110 "$BACK" "$TMP/slider.png"
    put z1 "$TMP/slider.png" 160 $(((28 + 100) / 2 - 40))

    # The column of thumbnails: 1 zone, 2 window, 3 small zone, 4 whole screen, 5 clock.
    local thumb_tops=(50 143 248 313 470)
    for i in 0 1 2 3 4; do
        put z0 "$TMP/thumb$i.png" 41 "${thumb_tops[i]}"
    done
    # The marks at the left of the thumbnails 2, 3 (saved and mailed) and 4 (saved).
    put z17 "$TMP/marksave.png" 4 143
    put z20 "$TMP/markmail.png" 21 143
    put z18 "$TMP/marksave.png" 4 248
    put z21 "$TMP/markmail.png" 21 248
    put z19 "$TMP/marksave.png" 4 313
    # Captions (zones 9, 11, 13, 15) of thumbnails 1, 2, 4, 5; position boxes (10, 12, 14,
    # 16) of 2, 3, 4, 5; tick boxes: 1 empty, 2 and 3 mailed (grey), 4 empty, 5 ticked.
    put_caption z9 "$TMP/caption0.png" "${ZONES_THUMBS[9]}"
    put_caption z11 "$TMP/caption1.png" "${ZONES_THUMBS[11]}"
    put_caption z13 "$TMP/caption3.png" "${ZONES_THUMBS[13]}"
    put_caption z15 "$TMP/caption4.png" "${ZONES_THUMBS[15]}"
    put_centred z10 "$TMP/position1.png" "${ZONES_THUMBS[10]}"
    put_centred z12 "$TMP/position2.png" "${ZONES_THUMBS[12]}"
    put_centred z14 "$TMP/position3.png" "${ZONES_THUMBS[14]}"
    put_centred z16 "$TMP/position4.png" "${ZONES_THUMBS[16]}"
    local ticks=(0 1 1 2 3 3 4) k
    for k in 0 1 2 3 4 5 6; do
        put_centred "z$((k + 2))" "$TMP/tick${ticks[k]}.png" "${ZONES_THUMBS[k + 2]}"
    done
    check_and_write "help_thumbs_$LNG" ZONES_THUMBS z
}
THUMB_RECTS=()
# put_caption TAG FILE ZONE: a caption centred on its zone, but never left of the thumbnails'
# column end nor past the picture's right edge.
put_caption() {
    local w h l r t b x
    read -r w h <<<"$(size "$2")"
    read -r l r t b <<<"$3"
    x=$(((l + r + 1 - w) / 2))
    ((x < 101)) && x=101
    ((x + w > PW - 2)) && x=$((PW - 2 - w))
    put "$1" "$2" "$x" "$(((t + b + 1 - h) / 2))"
}
# find_mark SHOT N BMP DX OUT: the mark BMP as drawn on thumbnail N (from 0), DX right of
# its top left corner, cut from the screenshot where it matches the file exactly.
find_mark() {
    local tx ty dx dy n
    read -r tx ty _ <<<"${THUMB_RECTS[$2]}"
    for dy in 0 1 -1 2 -2; do
        for dx in 0 1 -1 2 -2; do
            crop_to "$1" $((tx + $4 + dx)) $((ty + dy)) 16 15 "$5"
            n=$(compare -metric AE "$5" "$3" null: 2>&1 || true)
            [[ $n == 0 ]] && return 0
        done
    done
    die "no $(basename "$3") on thumbnail $(($2 + 1))"
}

# ------------------------------------------------------------------ view 2: the options
options_picture() {
    local shot="$SHOTS/options.png" OB
    OB=$(pixel "$shot" 3 3)
    # The regions below are the controls' places in the dialog (its twips / 15), a little
    # wider. First the pieces, then the places: the right column moves right of long check boxes
    # and the picture widens with it (the French captions are longer).
    local row ly fy by
    for row in "folder 8 5 3" "editor 38 35 33"; do
        read -r row ly fy by <<<"$row"
        cut_ink "$shot" 4 "$ly" 200 24 "$OB" "$TMP/l-$row.png"
        cut_ink "$shot" 205 "$fy" 484 30 "$OB" "$TMP/f-$row.png"
        cut_ink "$shot" 688 "$by" 108 34 "$OB" "$TMP/b-$row.png"
    done
    # The prefix: label and box as they stand.
    cut_ink "$shot" 4 68 420 28 "$OB" "$TMP/prefix.png"
    # The check boxes: each row from its box to the end of its caption.
    local k checks=()
    for k in 0 1 2 3 4 5 6 7; do
        local b bx by bwid bht
        b=$(bbox "$shot" 4 $((208 + 20 * k)) 440 20 "$OB")
        [[ -n $b ]] || die "check box $k not found"
        checks+=("$b")
        read -r bx by bwid bht <<<"$b"
        crop_to "$shot" "$bx" "$by" "$bwid" "$bht" "$TMP/check$k.png"
    done
    # The sliders: the widest run of each row (the label's words are narrower).
    slider_of "$shot" 131 "$OB" "$TMP/slider-pause.png"
    slider_of "$shot" 164 "$OB" "$TMP/slider-quality.png"
    # The first four hotkeys with their labels.
    cut_ink "$shot" 605 208 190 88 "$OB" "$TMP/hotkeys.png"
    # The interval's box: the last run of its row.
    local runs=() a
    mapfile -t runs < <(bands "$shot" 4 100 600 26 "$OB" x 4)
    read -r a b <<<"${runs[-1]}"
    cut_ink "$shot" "$a" 100 $((b - a + 1)) 26 "$OB" "$TMP/interval.png"
    cut_ink "$shot" 583 391 104 36 "$OB" "$TMP/ok.png"
    cut_ink "$shot" 689 391 104 36 "$OB" "$TMP/cancel.png"

    # Places. Check box k: the box at x 30, its middle on the row's line.
    local centres=(132 152 172 192 212 232 250 268) tags=(z2 z3 z4 z5 z6 z7 z8 z8)
    local s1w s1h s2w s2h hw hh iw ih ow oh ch
    read -r s1w s1h <<<"$(size "$TMP/slider-pause.png")"
    read -r s2w s2h <<<"$(size "$TMP/slider-quality.png")"
    read -r hw hh <<<"$(size "$TMP/hotkeys.png")"
    read -r iw ih <<<"$(size "$TMP/interval.png")"
    read -r ow oh <<<"$(size "$TMP/ok.png")"
    read -r _ ch <<<"$(size "$TMP/cancel.png")"
    # The sliders on zone 10, right of the check boxes beside them.
    local top10=$((195 - (s1h + 4 + s2h) / 2)) bottom10 sw=$((s1w > s2w ? s1w : s2w))
    bottom10=$((top10 + s1h + 4 + s2h))
    local xsl=$((460 - sw / 2)) cx cy cwid cht
    for k in 0 1 2 3 4 5 6 7; do
        read -r cx cy cwid cht <<<"${checks[k]}"
        local top=$((centres[k] - 6))
        if ((top < bottom10 && top + cht > top10 && 30 + cwid + 10 > xsl)); then xsl=$((30 + cwid + 10)); fi
    done
    # The right column on zones 11 to 13, right of the sliders.
    local xr=$((623 - hw / 2))
    ((xr < xsl + sw + 8)) && xr=$((xsl + sw + 8))
    local pw=724
    ((xr + hw + 4 > pw)) && pw=$((xr + hw + 4))
    canvas "$pw" 330 "$OB"

    # The two rows of a folder or program: label, field, Browse. The fields start in one
    # column and end 10 pixels before their buttons, at the right of the picture; a field
    # longer than that loses part of its empty middle.
    local lw1 lw2 bw bh fw fh
    read -r lw1 _ <<<"$(size "$TMP/l-folder.png")"
    read -r lw2 _ <<<"$(size "$TMP/l-editor.png")"
    read -r bw bh <<<"$(size "$TMP/b-folder.png")"
    local xf=$((30 + (lw1 > lw2 ? lw1 : lw2) + 14)) xb=$((PW - 6 - bw))
    local want=$((xb - 10 - xf))
    for row in folder editor; do
        read -r fw fh <<<"$(size "$TMP/f-$row.png")"
        if ((fw > want)); then
            convert \( "$TMP/f-$row.png" -crop "$((want - 3))x$fh+0+0" \) \
                \( "$TMP/f-$row.png" -crop "3x$fh+$((fw - 3))+0" \) +repage +append "$TMP/f-$row.png"
        fi
    done
    place_row z0 folder 75 "$shot" "$OB" "$xf" "$xb" 8 5 3
    place_row z9 editor 297 "$shot" "$OB" "$xf" "$xb" 38 35 33
    local ph
    read -r _ ph <<<"$(size "$TMP/prefix.png")"
    put z1 "$TMP/prefix.png" 30 $((105 - ph / 2))
    for k in 0 1 2 3 4 5 6 7; do
        read -r cx _ <<<"${checks[k]}"
        put "${tags[k]}" "$TMP/check$k.png" $((30 + cx - 8)) $((centres[k] - 6))
    done
    put z10 "$TMP/slider-pause.png" "$xsl" "$top10"
    put z10 "$TMP/slider-quality.png" "$xsl" $((top10 + s1h + 4))
    put z11 "$TMP/hotkeys.png" "$xr" $((140 - hh / 2))
    local xi=$((623 - iw / 2))
    ((xi < xr)) && xi=$xr
    put z12 "$TMP/interval.png" "$xi" $((203 - ih / 2))
    # OK above Cancel.
    local xo=$((623 - ow / 2)) top13=$((244 - (oh + 4 + ch) / 2))
    ((xo < xr)) && xo=$xr
    put z13 "$TMP/ok.png" "$xo" "$top13"
    put z13 "$TMP/cancel.png" "$xo" $((top13 + oh + 4))
    check_and_write "help_options_$LNG" ZONES_OPTIONS z
}
# place_row TAG ROW CENTRE SHOT BG XF XB LY FY BY: label, field and button of a row (found
# from LY, FY and BY down in the dialog), the field's middle on CENTRE, the three keeping
# their heights in the dialog.
place_row() {
    local tag=$1 row=$2 centre=$3 shot=$4 bg=$5 xf=$6 xb=$7
    local lb fb bb ly fy by fh
    lb=$(bbox "$shot" 4 "$8" 200 24 "$bg")
    fb=$(bbox "$shot" 205 "$9" 484 30 "$bg")
    bb=$(bbox "$shot" 688 "${10}" 108 34 "$bg")
    read -r _ ly _ <<<"$lb"
    read -r _ fy _ fh <<<"$fb"
    read -r _ by _ <<<"$bb"
    local dy=$((centre - fy - fh / 2))
    put - "$TMP/l-$row.png" 30 $((ly + dy))
    put "$tag" "$TMP/f-$row.png" "$xf" $((fy + dy))
    put - "$TMP/b-$row.png" "$xb" $((by + dy))
}
# slider_of SHOT Y BG OUT: the slider of the row starting at Y (its widest run).
slider_of() {
    local runs=() r a b best="" bestw=0
    mapfile -t runs < <(bands "$1" 4 "$2" 700 36 "$3" x 2)
    for r in "${runs[@]}"; do
        read -r a b <<<"$r"
        ((b - a > bestw)) && bestw=$((b - a)) best="$a $b"
    done
    ((bestw >= 100)) || die "no slider in the row at $2"
    read -r a b <<<"$best"
    cut_ink "$1" "$a" "$2" $((b - a + 1)) 36 "$3" "$4"
}

# ------------------------------------------------------------------ the menus
# menu_items POPUP: the tops of its entries, one a line: under a 1-pixel border and 2 of
# margin, entries are 17 pixels high and separators 9, their line in the middle.
menu_items() {
    local w h y=3 k c
    read -r w h <<<"$(size "$1")"
    local bg
    bg=$(pixel "$1" 2 2)
    while ((y + 9 <= h - 3)); do
        read -r k c <<<"$(convert "$1" -crop "$((w - 12))x1+6+$((y + 4))" +repage -format '%k %[pixel:p{0,0}]' info:)"
        if ((k == 1)) && [[ $c != "$bg" ]] && ((y + 9 <= h - 3)); then
            y=$((y + 9))
        else
            echo "$y"
            y=$((y + 17))
        fi
    done
    ((y == h - 3)) || die "$(basename "$1"): entries do not fill the menu (ends at $y of $h)"
}
# text_left POPUP TOP: the first column of the letters of the entry at TOP of a menu.
text_left() {
    local w cols=() a
    read -r w _ <<<"$(size "$1")"
    # Above the underlined letters: an underline may start left of its letter.
    crop_to "$1" 0 "$2" "$w" 12 "$TMP/entry.png"
    mapfile -t cols < <(ink_columns "$TMP/entry.png" 3)
    read -r a _ <<<"${cols[0]}"
    echo "$a"
}
# menu_picture NAME ROWS...: each row "POPUP ENTRY" (the ENTRYth entry of that menu, from
# 0), "word" (the Standby title from the menu bar), "icon" (the tray icon) or "-" (empty).
menu_picture() {
    local name=$1
    shift
    local row popup entry width=0 w h ref="" tl
    local first
    read -r first _ <<<"$1"
    # Wide enough for every row once its text is aligned on the first menu's.
    for row in "$@"; do
        read -r popup entry <<<"$row"
        [[ -f $SHOTS/$popup.png ]] || continue
        read -r w h <<<"$(size "$SHOTS/$popup.png")"
        tl=$(text_left "$SHOTS/$popup.png" 3)
        [[ -n $ref ]] || ref=$tl
        w=$((w - tl + ref))
        ((w > width)) && width=$w
    done
    local border bg
    border=$(pixel "$SHOTS/$first.png" 0 0)
    bg=$(pixel "$SHOTS/$first.png" 2 2)
    canvas "$width" $((MENU_ROW * MENU_ROWS)) "$bg"
    local k=0 tops=() textleft=""
    for row in "$@"; do
        read -r popup entry <<<"$row"
        local y=$((k * MENU_ROW))
        case $popup in
        -) ;;
        word)
            local a b
            read -r a b <<<"$(geo titles | cut -d';' -f5)"
            crop_to "$SHOTS/menubar.png" "$a" 1 $((b - a + 1)) 17 "$TMP/$name-word.png"
            put "r$k" "$TMP/$name-word.png" "$textleft" "$y"
            ;;
        icon)
            convert "$BIN/mirovanta.ico[0]" -background "$bg" -flatten "$TMP/$name-icon.png"
            put "r$k" "$TMP/$name-icon.png" "$textleft" "$y"
            ;;
        *)
            mapfile -t tops < <(menu_items "$SHOTS/$popup.png")
            ((entry < ${#tops[@]})) || die "$popup has ${#tops[@]} entries"
            read -r w h <<<"$(size "$SHOTS/$popup.png")"
            # The text of every row starts where the first menu's does (a submenu keeps a
            # wider margin): the row is cut that much further right, or pasted further right.
            local tl shift
            tl=$(text_left "$SHOTS/$popup.png" "${tops[0]}")
            [[ -n $textleft ]] || textleft=$tl
            shift=$((tl - textleft))
            if ((shift >= 0)); then
                crop_to "$SHOTS/$popup.png" $((1 + shift)) "${tops[entry]}" $((w - 2 - shift)) "$MENU_ROW" "$TMP/$name-$k.png"
                put "r$k" "$TMP/$name-$k.png" 1 "$y"
            else
                crop_to "$SHOTS/$popup.png" 1 "${tops[entry]}" $((w - 2)) "$MENU_ROW" "$TMP/$name-$k.png"
                put "r$k" "$TMP/$name-$k.png" $((1 - shift)) "$y"
            fi
            ;;
        esac
        k=$((k + 1))
    done
    OPS+=(-fill none -stroke "$border" -draw "rectangle 0,0 $((width - 1)),$((MENU_ROW * MENU_ROWS - 1))" -stroke none)
    local rows=() i
    for ((i = 0; i < MENU_ROWS; i++)); do rows+=("0 $((width - 1)) $((i * MENU_ROW)) $((i * MENU_ROW + MENU_ROW - 1))"); done
    MENU_ZONES=("${rows[@]}")
    # Empty rows have no element: only the filled ones are checked.
    local filled=() tag
    for ((i = 0; i < MENU_ROWS; i++)); do
        for row in "${ELEMS[@]}"; do
            read -r tag _ <<<"$row"
            [[ $tag == "r$i" ]] && filled+=("${rows[i]}") && break
        done
    done
    MENU_ZONES=("${filled[@]}")
    check_and_write "$name" MENU_ZONES r
}
# shellcheck disable=SC2034 # read by check_and_write through its name
MENU_ZONES=()

# The entries expected in each menu of the screenshots.
expect_entries() {
    local n
    n=$(menu_items "$SHOTS/$1.png" | wc -l)
    ((n == $2)) || die "$1 has $n entries, not $2"
}

expect_entries menu-file 5
expect_entries menu-mail 4
expect_entries menu-edit 8
expect_entries menu-tools 6
expect_entries menu-tools-ticked 6
expect_entries menu-help 6
expect_entries menu-tray 3

main_picture
thumbs_picture
options_picture
menu_picture "help_menu_file_$LNG" "menu-file 0" "menu-file 1" "menu-file 2" "menu-mail 0" \
    "menu-mail 1" "menu-mail 3" "menu-file 4"
menu_picture "help_menu_edit_$LNG" "menu-edit 0" "menu-edit 1" "menu-edit 2" "menu-edit 3" \
    "menu-edit 4" "menu-edit 5" "menu-edit 7"
menu_picture "help_menu_tools_$LNG" "menu-tools 0" "menu-tools 1" "menu-tools 2" "menu-tools 3" \
    "menu-tools 4" "menu-tools 5" "menu-tools-ticked 1"
menu_picture "help_menu_help_$LNG" "menu-help 0" "menu-help 1" "menu-help 2" "menu-help 3" \
    "menu-help 4" "menu-help 5" "word"
menu_picture "help_menu_tray_$LNG" "menu-tray 0" "menu-tray 1" "menu-tray 2" "icon" - - -
echo "compose.sh $LNG: 8 pictures in $OUT"
