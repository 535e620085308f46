#!/bin/bash
# Draws the pictures the animated-GIF builder shows for a folder with no GIF file in it
# (gifhelp_en.gif, gifhelp_fr.gif), into assets/. Needs ImageMagick and the DejaVu fonts.
# Run it again after changing a text; its output is committed.
set -euo pipefail
here=$(cd "$(dirname "$0")" && pwd)
out=${1:-$here/../../assets}
font=DejaVu-Sans
bold=DejaVu-Sans-Bold

# draw NAME TITLE LINE1 LINE2 LINE3 LINE4
draw() {
    local name=$1 title=$2
    shift 2
    local frames=() i
    for i in 0 1 2; do
        local f
        f=$(mktemp --suffix=.png)
        frames+=("$f")
        local args=(-size 360x240 xc:'#FFFFFF'
            -fill '#1F4E79' -draw 'rectangle 0,0 359,34'
            -font "$bold" -pointsize 15 -fill white -annotate +12+23 "$title"
            -font "$font" -pointsize 12 -fill '#202020')
        local y=62 line
        for line in "$@"; do
            # A line that starts with blanks continues the one above, indented.
            if [ "${line# }" != "$line" ]; then
                args+=(-annotate +30+$y "${line#"${line%%[! ]*}"}")
            else
                args+=(-annotate +14+$y "$line")
            fi
            y=$((y + 22))
        done
        # A film strip of three frames, the playing one lit in turn.
        args+=(-fill '#303030' -draw 'rectangle 90,166 270,226' -fill '#FFFFFF')
        local k
        for k in 0 1 2 3 4 5 6 7 8; do
            local x=$((96 + k * 19))
            args+=(-draw "rectangle $x,170 $((x + 8)),175" -draw "rectangle $x,217 $((x + 8)),222")
        done
        for k in 0 1 2; do
            local x=$((98 + k * 58)) colour='#9DB7CF'
            [ "$k" = "$i" ] && colour='#F2B134'
            args+=(-fill "$colour" -draw "rectangle $x,180 $((x + 48)),212")
        done
        convert "${args[@]}" "$f"
    done
    convert -delay 60 -loop 0 "${frames[@]}" -colors 64 "$out/$name"
    rm -f "${frames[@]}"
}

draw gifhelp_en.gif "No GIF image in this folder" \
    "1. Choose a folder that holds GIF images:" \
    "    they appear in the list, in order." \
    "2. Move them with the arrows, remove with Delete." \
    "3. Set the delay and the loop, then Build the GIF."
draw gifhelp_fr.gif "Aucune image GIF dans ce dossier" \
    "1. Choisissez un dossier d'images GIF :" \
    "    elles s'affichent dans la liste, dans l'ordre." \
    "2. Déplacez-les par les flèches, Suppr retire." \
    "3. Réglez le délai et la boucle, puis Créer le GIF."
