# shellcheck shell=bash disable=SC2034
# The hot zones of the illustrated help (FrmAideStd): "left right top bottom" in pixels of
# each picture, in the order of their texts. A point is in a zone when left <= x <= right
# and top <= y <= bottom; of two zones the later one wins.

# View 0, the main window: the 20 toolbar buttons from left to right (the last, About, on
# the row of the menu titles), then the five menu titles (File, Edit, Tools, Help and the
# tray icon's menu).
ZONES_MAIN=(
    "0 35 50 78" "40 68 50 78" "70 96 50 78" "100 128 50 78" "131 160 50 78"
    "161 190 50 78" "195 220 50 78" "225 255 50 78" "260 286 50 78" "290 316 50 78"
    "320 348 50 78" "350 375 50 78" "381 410 50 78" "415 440 50 78" "445 470 50 78"
    "475 505 50 78" "510 535 50 78" "540 565 50 78" "570 595 50 78" "600 630 30 50"
)
TITLE_ZONES=("0 50 20 50" "65 100 20 50" "110 135 20 50" "141 260 20 50" "270 300 20 50")
# Below this line and left of this column the view of the capture is explained.
VIEW_BOTTOM_OF_BAR=78
VIEW_RIGHT=560

# View 1, the thumbnails: the column of thumbnails, the slider, seven tick boxes, the
# captions and position boxes taking turns, three saved marks and two mailed marks.
ZONES_THUMBS=(
    "40 100 50 550" "160 180 28 100"
    "130 140 65 75" "130 140 165 175" "130 140 215 225" "130 140 275 285"
    "130 140 335 345" "130 140 395 405" "130 140 495 505"
    "100 160 45 60" "100 160 145 155" "100 160 195 205" "100 160 250 265"
    "100 160 315 330" "100 160 375 390" "100 160 475 490" "100 160 535 550"
    "10 20 145 155" "10 20 250 260" "10 20 315 325"
    "20 38 145 155" "20 38 250 260"
)

# View 2, the options: save folder, prefix, six check boxes, the two rectangle check boxes,
# the image editor, the sliders, the hotkeys, the interval, OK and Cancel.
ZONES_OPTIONS=(
    "30 680 65 85" "30 360 95 115"
    "30 300 125 140" "30 300 145 165" "30 300 166 185" "30 300 186 205" "30 300 206 225"
    "30 300 226 239" "30 450 240 270" "30 680 275 320"
    "360 560 160 230" "565 680 100 180" "565 680 185 220" "565 680 222 265"
)

# The menus: rows of this height, this many, each explained by its own text.
MENU_ROW=17
MENU_ROWS=7
