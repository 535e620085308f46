# shellcheck shell=bash disable=SC2034,SC2030,SC2031
# Waiting, windows and input of the Wine harness; sourced by lib.sh, never alone.

# ---------------------------------------------------------------- waiting

# wh_wait_for DESCRIPTION TIMEOUT COMMAND...: polls COMMAND every 0.1 s until it succeeds;
# after TIMEOUT seconds records "timed out after Ns waiting for DESCRIPTION" and returns 1.
wh_wait_for() {
  local what=$1 timeout=$2
  shift 2
  local deadline saved=$WH_REASON last=""
  deadline=$(($(date +%s%N) + $(awk -v t="$timeout" 'BEGIN { printf "%d", t * 1000 }') * 1000000))
  while true; do
    # A failed attempt is not a failure yet: keep its reason only for the timeout message.
    WH_REASON=""
    if "$@"; then
      WH_REASON=$saved
      return 0
    fi
    last=$WH_REASON
    (($(date +%s%N) < deadline)) || break
    sleep 0.1
  done
  WH_REASON=$saved
  wh_reason "timed out after ${timeout}s waiting for $what${last:+ (last: $last)}"
}

# _wh_file_ready PATH: PATH exists, is not empty, and its size held still for 0.2 s.
_wh_file_ready() {
  [[ -s $1 ]] || return 1
  local s1 s2
  s1=$(stat -c %s "$1")
  sleep 0.2
  s2=$(stat -c %s "$1" 2>/dev/null) || return 1
  [[ $s1 == "$s2" ]]
}

# wh_wait_file PATH [TIMEOUT=10]: waits until PATH exists, is not empty and stops growing.
wh_wait_file() {
  wh_wait_for "file $1" "${2:-10}" _wh_file_ready "$1"
}

# ---------------------------------------------------------------- windows and input

_wh_xdo() {
  xdotool "$@" 2>>"$WH_ART/xdotool.log"
}

# wh_find_window [-a] TITLE_REGEX [TIMEOUT=10]: waits for a mapped window whose title
# matches (extended regex, case-insensitive, as xdotool search --name); -a also accepts
# unmapped windows. Sets WH_WID (the first found).
wh_find_window() {
  local only=(--onlyvisible)
  if [[ ${1:-} == -a ]]; then only=(); shift; fi
  local re=$1 timeout=${2:-10} out left
  # xdotool can give up at once (a window going while it reads the tree): ask again until
  # the time is out.
  local deadline=$((SECONDS + ${timeout%.*} + 1))
  while true; do
    left=$((deadline - SECONDS))
    ((left > 0)) || break
    if out=$(timeout "$left" xdotool search --sync "${only[@]}" --name "$re" 2>>"$WH_ART/xdotool.log"); then
      WH_WID=${out%%$'\n'*}
      wh_log "window /$re/: $WH_WID"
      return 0
    fi
    sleep 0.2
  done
  wh_reason "no window titled /$re/ within ${timeout}s"
}

# wh_window_visible WID: true while WID exists and is mapped.
wh_window_visible() {
  xwininfo -id "$1" 2>/dev/null | grep -q 'Map State: IsViewable'
}

# wh_window_title WID: prints the title of WID.
wh_window_title() {
  _wh_xdo getwindowname "$1"
}

# wh_wait_window_gone WID [TIMEOUT=10]: waits until WID is destroyed or unmapped.
wh_wait_window_gone() {
  wh_wait_for "window $1 to close" "${2:-10}" _wh_window_hidden "$1"
}

_wh_window_hidden() { ! wh_window_visible "$1"; }

# wh_window_geometry WID: sets WH_X WH_Y (absolute position of the X window) and WH_W WH_H.
# For a Wine top-level window that is the Win32 window minus caption and frame (see top).
wh_window_geometry() {
  local info
  info=$(xwininfo -id "$1" 2>/dev/null) || {
    wh_reason "window $1 does not exist"
    return 1
  }
  WH_X=$(sed -n 's/^ *Absolute upper-left X: *//p' <<<"$info")
  WH_Y=$(sed -n 's/^ *Absolute upper-left Y: *//p' <<<"$info")
  WH_W=$(sed -n 's/^ *Width: *//p' <<<"$info")
  WH_H=$(sed -n 's/^ *Height: *//p' <<<"$info")
}

# wh_focus WID: gives WID the X focus and waits for it; with UseTakeFocus=N (set in the
# cached prefix) this also makes a Wine window the Win32 foreground window.
wh_focus() {
  timeout 5 xdotool windowfocus --sync "$1" 2>>"$WH_ART/xdotool.log" ||
    wh_reason "could not focus window $1"
}

# wh_raise WID: puts WID on top of the other windows.
wh_raise() {
  _wh_xdo windowraise "$1" || wh_reason "could not raise window $1"
}

# wh_key WID KEY...: focuses WID, then sends the keys (xdotool names: ctrl+s Return F12).
wh_key() {
  local wid=$1
  shift
  wh_focus "$wid" || return 1
  _wh_xdo key --delay 30 "$@" || wh_reason "xdotool key $* failed"
}

# wh_type WID TEXT: focuses WID, then types TEXT.
wh_type() {
  wh_focus "$1" || return 1
  _wh_xdo type --delay 20 -- "$2" || wh_reason "xdotool type failed"
}

# wh_paste WID TEXT: puts TEXT on the clipboard and pastes it into WID with Control+V.
# Characters outside the keyboard map (CJK, emoji) arrive whole this way: xdotool types
# them by remapping a key, which Wine can read before the new map has reached it.
wh_paste() {
  printf '%s' "$2" | xclip -selection clipboard -i || { wh_reason "xclip failed"; return 1; }
  wh_key "$1" ctrl+v
}

# wh_key_hold WID KEY SECONDS: focuses WID, holds KEY down for SECONDS (for programs that
# poll GetAsyncKeyState on a timer), then releases it.
wh_key_hold() {
  wh_focus "$1" || return 1
  _wh_xdo keydown "$2" || {
    wh_reason "keydown $2 failed"
    return 1
  }
  sleep "$3"
  _wh_xdo keyup "$2" || wh_reason "keyup $2 failed"
}

# _wh_origin WID: sets _WH_OX/_WH_OY to the origin of WID ("root": 0,0).
_wh_origin() {
  if [[ $1 == root ]]; then
    _WH_OX=0
    _WH_OY=0
  else
    wh_window_geometry "$1" || return 1
    _WH_OX=$WH_X
    _WH_OY=$WH_Y
  fi
}

# wh_click WID X Y [BUTTON=1]: moves the pointer to X,Y relative to WID (or to the screen
# with WID "root") and clicks. A click does not move the X focus.
wh_click() {
  _wh_origin "$1" || return 1
  _wh_xdo mousemove "$((_WH_OX + $2))" "$((_WH_OY + $3))" click "${4:-1}" ||
    wh_reason "click at $2,$3 of $1 failed"
}

# wh_drag WID X1 Y1 X2 Y2 [BUTTON=1] [STEPS=4]: presses at X1,Y1 relative to WID ("root":
# screen), moves in STEPS steps to X2,Y2 and releases there.
wh_drag() {
  _wh_origin "$1" || return 1
  local x1=$((_WH_OX + $2)) y1=$((_WH_OY + $3)) x2=$((_WH_OX + $4)) y2=$((_WH_OY + $5)) b=${6:-1}
  local n=${7:-4} i
  _wh_xdo mousemove "$x1" "$y1" mousedown "$b" || {
    wh_reason "drag start failed"
    return 1
  }
  for ((i = 1; i <= n; i++)); do
    _wh_xdo mousemove "$((x1 + (x2 - x1) * i / n))" "$((y1 + (y2 - y1) * i / n))" || true
    sleep 0.05
  done
  _wh_xdo mouseup "$b" || wh_reason "drag end failed"
}

# wh_mouse_move X Y: moves the pointer to screen coordinates X,Y.
wh_mouse_move() {
  _wh_xdo mousemove "$1" "$2"
}
