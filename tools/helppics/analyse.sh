# shellcheck shell=bash
# Finding text in screenshots with ImageMagick, for shoot.sh and compose.sh.

# ink_profile FILE AXIS: one line "INDEX COUNT" per column (AXIS x) or row (AXIS y) of FILE:
# how many of its pixels are dark (text), after greying at 60 %.
ink_profile() {
    local w h
    read -r w h <<<"$(identify -format "%w %h" "$1")"
    if [[ $2 == x ]]; then
        convert "$1" -colorspace gray -threshold 60% -negate -filter box -resize "${w}x1!" \
            -depth 16 txt:- | awk -v n="$h" 'NR > 1 { split($1, a, /[,:]/); gsub(/[()]/, "", $2); split($2, v, ","); printf "%d %d\n", a[1], int(v[1] / 65535 * n + 0.5) }'
    else
        convert "$1" -colorspace gray -threshold 60% -negate -filter box -resize "1x${h}!" \
            -depth 16 txt:- | awk -v n="$w" 'NR > 1 { split($1, a, /[,:]/); gsub(/[()]/, "", $2); split($2, v, ","); printf "%d %d\n", a[2], int(v[1] / 65535 * n + 0.5) }'
    fi
}

# ink_columns FILE GAP: the x ranges "FIRST LAST" of text in FILE, words apart when GAP
# or more empty columns separate them.
ink_columns() {
    ink_profile "$1" x | awk -v gap="$2" '
        $2 > 0 { if (have && $1 - last > gap) { print first, last; first = $1 } else if (!have) first = $1; have = 1; last = $1 }
        END { if (have) print first, last }'
}

# ink_rows FILE GAP: the same for rows: "FIRST LAST" of each band of text.
ink_rows() {
    ink_profile "$1" y | awk -v gap="$2" '
        $2 > 0 { if (have && $1 - last > gap) { print first, last; first = $1 } else if (!have) first = $1; have = 1; last = $1 }
        END { if (have) print first, last }'
}
