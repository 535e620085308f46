# shellcheck shell=bash disable=SC2034,SC2030,SC2031
# Harness for checking the Windows build under Wine in a private Xvfb, driven by xdotool.
#
# Usage from a check script (bash, set -euo pipefail is fine):
#   source "$(dirname "${BASH_SOURCE[0]}")/lib.sh"
#   wh_init my-check            # temp folder, artifacts folder, cleanup at exit
#   wh_start_xvfb 1280x1024     # private X server, exports DISPLAY
#   wh_show_picture             # known picture full screen: do it before any Wine window
#   wh_start_wine               # fresh copy of the cached prefix, wineserver kept up
#   wh_check "name" my_check_function args...
#   wh_finish                   # prints the summary, exits 1 if a check failed
#
# Functions that find something set a global instead of printing, so that the failure
# reason survives (no subshell): WH_WID, WH_X/WH_Y/WH_W/WH_H, WH_PID, WH_EXIT_CODE,
# WH_DIFF, WH_SHOT. On failure they return 1 and append the reason to WH_REASON, which
# wh_check reports. Paths given to wh_screenshot and the diff helpers that are not absolute
# are taken in the artifacts folder.
#
# Environment: MIROVANTA_WINE_CACHE (ready prefix, default ~/.cache/mirovanta-wineprefix),
# MIROVANTA_WINE_ARTIFACTS (default <repo>/build/wine-artifacts; one sub-folder a script),
# MIROVANTA_WINE_KEEP=1 keeps the temp folder (prefix copy, home) after the run,
# MIROVANTA_WINE_VERBOSE=1 echoes the harness log on stderr (always in harness.log).
#
# What was measured on this machine (Wine 8.0 Debian, 2 cores) and why the code is so:
# - Making the prefix the first time (wineboot -i, wineserver -w, two reg adds) takes
#   13-15 s. It is ~700 MB (system32 holds real PE files); cp -a takes 0.3 s warm, 1.4 s
#   cold. The cache is keyed by `wine --version`, built under a lock, moved in atomically.
# - The prefix is made with no DISPLAY and works on any later Xvfb and screen size
#   (GetSystemMetrics reports the Xvfb size). With a DISPLAY, wineboot only adds a
#   progress window. Mono/Gecko and menu entries are switched off while booting.
# - wineboot links the profile folders (Documents, Desktop, ...) to $HOME. The cache
#   turns those links into real folders and Wine runs with a private HOME, so nothing a
#   run writes lands in the real home. The private HOME has an ALSA device that plays into nothing and records the samples.
# - Keys: Wine sends every key, whichever X window it was addressed to, to the Win32
#   foreground window. With no window manager and Wine's default UseTakeFocus=Y, an X
#   focus change does not activate a window (Wine waits for WM_TAKE_FOCUS), so once
#   another Wine window or process took the foreground, keys go astray. The cached prefix
#   sets HKCU\Software\Wine\X11 Driver\UseTakeFocus=N: then `xdotool windowfocus --sync
#   WID` activates WID and plain `xdotool key/type` (XTEST) reach it, capitals included.
#   `xdotool key --window WID` (XSendEvent) is no substitute: it reaches WID only when
#   WID is already foreground, and drops Shift ("T1" arrives as "t1"). GetAsyncKeyState
#   sees XTEST keys only while a Wine window has the X focus (a key sent while the picture
#   window has it reaches no Wine program).
# - A click does not move the X focus (no window manager): focus before typing. Keys
#   that reach the picture window are commands of ImageMagick's display ("q" quits it,
#   "c" starts a crop that grabs the pointer), so every key helper focuses its target.
# - Geometry: nobody draws a title bar or frame. A top-level Wine window's X window is
#   its Win32 window rectangle minus caption and frame: notepad, GetWindowRect
#   0,0-972,729, is an X window 964x702 at +4+23 (frame 4, caption 19). The X window
#   includes the menu bar; the client area starts below it (notepad: ClientToScreen(0,0)
#   = 4,42, menu 19 high). For a window without a menu the X origin is the client origin,
#   so wh_click coordinates are client coordinates; with a menu add its height (19).
# - A new X window maps on top (no window manager): show the picture before starting
#   Wine programs. The first Wine process paints the root black; the picture covers it,
#   and a screenshot outside Wine windows equals the picture exactly. Screenshots never
#   contain the pointer.
# - `wine prog.exe` keeps its pid for the Windows process and exits with its exit code
#   (mod 256), so a launched program can be waited for (wh_wait_exit).
# - Wine's helper processes (wineserver, services.exe, explorer.exe ...) are daemons;
#   after `wineserver -k` they may stay as zombies of pid 1 for a while until it reaps
#   them (`pgrep -a wine` shows them as <defunct>); other users may run Wine too, so our
#   own processes are found by the WINEPREFIX in their environment (wh_own_processes).

WH_LIB_DIR=$(cd "$(dirname "${BASH_SOURCE[0]}")" && pwd)
WH_REPO=$(cd "$WH_LIB_DIR/../.." && pwd)
# Bump when the cached prefix is to be made differently.
WH_PREFIX_RECIPE=1

WH_NAME=""
WH_TMP=""
WH_ART=""
WH_HOME=""
WH_PREFIX=""
WH_XVFB_PID=""
WH_XEPHYR_PID=""
WH_SCREEN_W=0
WH_SCREEN_H=0
WH_PICTURE=""
WH_PICTURE_PID=""
WH_PICTURE_WID=""
WH_PIDS=()
WH_PASSED=0
WH_FAILED=0
WH_REASON=""
WH_WID=""
WH_X=0
WH_Y=0
WH_W=0
WH_H=0
WH_PID=""
WH_EXIT_CODE=""
WH_DIFF=""
WH_SHOT=""
_WH_CLEANED=0
_WH_FINISHED=0
_WH_WATCHDOG_PID=""

# wh_log MESSAGE: appends a timestamped line to harness.log (and stderr when verbose).
wh_log() {
  local line
  line="$(date +%H:%M:%S.%3N) $*"
  if [[ -n $WH_ART && -d $WH_ART ]]; then printf '%s\n' "$line" >>"$WH_ART/harness.log"; fi
  if [[ ${MIROVANTA_WINE_VERBOSE:-0} == 1 ]]; then printf '[wine] %s\n' "$line" >&2; fi
  return 0
}

# wh_reason MESSAGE: records why the current check fails (reported by wh_check); returns 1.
wh_reason() {
  WH_REASON="${WH_REASON:+$WH_REASON; }$*"
  wh_log "fail: $*"
  return 1
}

# wh_die MESSAGE: the harness itself cannot go on (missing tool, no display...): stops the script.
wh_die() {
  printf 'FAIL %s: harness: %s\n' "${WH_NAME:-wine}" "$*"
  wh_log "die: $*"
  WH_FAILED=$((WH_FAILED + 1))
  _WH_FINISHED=1 # already reported
  exit 2
}

# wh_init NAME: makes the temp and artifacts folders and installs the cleanup at exit.
wh_init() {
  WH_NAME=${1:?wh_init needs a name}
  local tool
  for tool in Xvfb Xephyr xdotool xwininfo xdpyinfo import convert compare identify display \
    wine wineserver wineboot flock timeout setsid; do
    command -v "$tool" >/dev/null 2>&1 || wh_die "missing tool: $tool"
  done
  local base=${MIROVANTA_WINE_ARTIFACTS:-$WH_REPO/build/wine-artifacts}
  mkdir -p "$base"
  WH_ART="$(cd "$base" && pwd)/$WH_NAME"
  rm -rf "$WH_ART"
  mkdir -p "$WH_ART"
  WH_TMP=$(mktemp -d "${TMPDIR:-/tmp}/mirovanta-wine.XXXXXX")
  : >"$WH_TMP/pids"
  setsid bash -c "$(declare -f _wh_alive _wh_watchdog); _wh_watchdog $$ '$WH_TMP'" \
    </dev/null >/dev/null 2>&1 &
  _WH_WATCHDOG_PID=$!
  trap '_wh_on_exit' EXIT
  trap 'exit 129' HUP
  trap 'exit 130' INT
  trap 'exit 143' TERM
  wh_log "init $WH_NAME tmp=$WH_TMP artifacts=$WH_ART"
}

_wh_on_exit() {
  local rc=$?
  set +e
  wh_cleanup
  if ((_WH_FINISHED == 0)); then
    if ((rc != 0)); then
      printf 'FAIL %s: script stopped early (exit %d), see %s\n' "$WH_NAME" "$rc" "$WH_ART"
    elif ((WH_FAILED > 0)); then
      rc=1
    fi
  fi
  exit "$rc"
}

# _wh_alive PID: true while PID exists and is not a zombie.
_wh_alive() {
  local stat
  stat=$(cat "/proc/$1/stat" 2>/dev/null) || return 1
  stat=${stat##*) }
  [[ ${stat:0:1} != Z ]]
}

# _wh_watchdog PARENT TMP: runs detached (own session) from wh_init. If the script dies
# without cleaning up (SIGKILL, e.g. a test runner's timeout), it stops that run's Wine,
# Xvfb and picture viewer and removes TMP, so that no 700 MB prefix copy is left behind.
_wh_watchdog() {
  local parent=$1 tmp=$2 pid comm sig
  while _wh_alive "$parent" && [[ -d $tmp && ! -e $tmp/cleaned ]]; do sleep 1; done
  [[ -d $tmp && ! -e $tmp/cleaned ]] || return 0
  [[ -d $tmp/prefix ]] && WINEPREFIX=$tmp/prefix timeout 20 wineserver -k
  for sig in TERM KILL; do # TERM lets Xvfb remove its lock file
    while read -r pid comm; do
      [[ $(cat "/proc/$pid/comm" 2>/dev/null) == "$comm" ]] && kill "-$sig" "$pid"
    done <"$tmp/pids"
    sleep 1
  done
  rm -rf "$tmp"
}

# _wh_remember PID: notes a process for the watchdog (with its name, against pid reuse).
_wh_remember() {
  printf '%s %s\n' "$1" "$(cat "/proc/$1/comm" 2>/dev/null || echo '?')" >>"$WH_TMP/pids"
}

# _wh_stop PID: ends one of our own background children (TERM, then KILL) and reaps it.
_wh_stop() {
  local pid=$1 i
  [[ -n $pid ]] || return 0
  if _wh_alive "$pid"; then
    kill -TERM "$pid" 2>/dev/null || true
    for ((i = 0; i < 50; i++)); do
      _wh_alive "$pid" || break
      sleep 0.1
    done
    if _wh_alive "$pid"; then kill -KILL "$pid" 2>/dev/null || true; fi
  fi
  wait "$pid" 2>/dev/null || true
  return 0
}

# wh_own_processes: prints "pid command" of live processes of this run (Wine processes with
# our WINEPREFIX, our Xvfb and picture viewer); prints nothing once all is stopped.
wh_own_processes() {
  local f pid pids=()
  if [[ -n $WH_PREFIX ]]; then
    while IFS= read -r f; do
      pid=${f#/proc/}
      pid=${pid%/environ}
      pids+=("$pid")
    done < <(grep -lszxF "WINEPREFIX=$WH_PREFIX" /proc/[0-9]*/environ || true)
  fi
  for pid in "${pids[@]}"; do
    # Every Wine process runs a wine binary (wine64, wine64-preloader, wineserver64);
    # the harness shell and the tools it runs also carry WINEPREFIX and are left out.
    [[ $(readlink "/proc/$pid/exe" 2>/dev/null) == */wine* ]] || continue
    if _wh_alive "$pid"; then
      printf '%s %s\n' "$pid" "$(tr '\0' ' ' <"/proc/$pid/cmdline" 2>/dev/null || true)"
    fi
  done
  for pid in "$WH_XEPHYR_PID" "$WH_XVFB_PID" "$WH_PICTURE_PID"; do
    [[ -n $pid ]] || continue
    if _wh_alive "$pid"; then
      printf '%s %s\n' "$pid" "$(tr '\0' ' ' <"/proc/$pid/cmdline" 2>/dev/null || true)"
    fi
  done
  return 0
}

# wh_cleanup: stops Wine (wineserver -k), the picture viewer and Xvfb, removes the temp
# folder. Runs at exit; safe to call earlier and more than once.
wh_cleanup() {
  ((_WH_CLEANED)) && return 0
  _WH_CLEANED=1
  local pid i left wine_pids=()
  if [[ -n $WH_PREFIX ]]; then
    while read -r pid _; do wine_pids+=("$pid"); done < <(wh_own_processes)
    WINEPREFIX=$WH_PREFIX timeout 20 wineserver -k >>"$WH_ART/wine.log" 2>&1 || true
    for ((i = 0; i < 100; i++)); do
      left=$(wh_own_processes | grep -v -e "^$WH_XEPHYR_PID " -e "^$WH_XVFB_PID " -e "^$WH_PICTURE_PID " || true)
      [[ -z $left ]] && break
      sleep 0.1
    done
    if [[ -n $left ]]; then
      wh_log "still running after wineserver -k, killing: $left"
      while read -r pid _; do kill -KILL "$pid" 2>/dev/null || true; done <<<"$left"
    fi
  fi
  for pid in "${WH_PIDS[@]}"; do _wh_stop "$pid"; done
  _wh_stop "$WH_PICTURE_PID"
  _wh_stop "$WH_XEPHYR_PID"
  _wh_stop "$WH_XVFB_PID"
  # Wine's daemons end as zombies of pid 1; give it a moment to reap them so that
  # `pgrep wine` right after the run shows none of ours.
  for ((i = 0; i < 50; i++)); do
    left=""
    for pid in "${wine_pids[@]}"; do [[ -e /proc/$pid ]] && left+=" $pid"; done
    [[ -z $left ]] && break
    sleep 0.1
  done
  [[ -z $left ]] || wh_log "not reaped yet:$left"
  if [[ -n $WH_TMP && -d $WH_TMP ]]; then
    : >"$WH_TMP/cleaned"
    if [[ -n $_WH_WATCHDOG_PID ]]; then
      kill -KILL "$_WH_WATCHDOG_PID" 2>/dev/null || true
      wait "$_WH_WATCHDOG_PID" 2>/dev/null || true
    fi
    if [[ ${MIROVANTA_WINE_KEEP:-0} == 1 ]]; then
      wh_log "kept $WH_TMP"
    else
      rm -rf "$WH_TMP"
    fi
  fi
  wh_log "cleaned up"
  return 0
}

# ---------------------------------------------------------------- X server

# _wh_x_server PROGRAM ARGS...: starts PROGRAM :N ARGS on the first free display N of
# :90..:99 and waits until it answers; sets WH_SERVER_PID and WH_SERVER_DISPLAY.
_wh_x_server() {
  local prog=$1 n pid lockpid i
  shift
  for n in 90 91 92 93 94 95 96 97 98 99; do
    # A lock whose server is gone (killed hard) does not hold: the server replaces it.
    lockpid=$(tr -d ' \n' 2>/dev/null <"/tmp/.X$n-lock" || true)
    [[ -n $lockpid ]] && kill -0 "$lockpid" 2>/dev/null && continue
    "$prog" ":$n" "$@" -nolisten tcp -noreset >>"$WH_ART/xvfb.log" 2>&1 &
    pid=$!
    for ((i = 0; i < 100; i++)); do
      _wh_alive "$pid" || break
      lockpid=$(tr -d ' \n' 2>/dev/null <"/tmp/.X$n-lock" || true)
      if [[ $lockpid == "$pid" ]] && xdpyinfo -display ":$n" >/dev/null 2>&1; then
        WH_SERVER_PID=$pid
        WH_SERVER_DISPLAY=":$n"
        _wh_remember "$pid"
        return 0
      fi
      sleep 0.1
    done
    _wh_stop "$pid" # lost the race for this display, or it did not come up
  done
  wh_die "no free display in :90..:99 for $prog (see $WH_ART/xvfb.log)"
}

# wh_start_xvfb [WxH] [MONITORS]: starts a private Xvfb with a 24-bit screen of WxH
# (default 1280x1024), exports DISPLAY, sets WH_SCREEN_W/H (the primary monitor) and
# WH_VIRTUAL_W. With MONITORS 2, DISPLAY is a Xephyr inside that Xvfb showing two
# monitors of WxH side by side as one Xinerama screen; its RandR is off, so that Wine
# takes its monitors from Xinerama (with RandR it sees one).
wh_start_xvfb() {
  local size=${1:-1280x1024} monitors=${2:-1}
  [[ $size =~ ^([0-9]+)x([0-9]+)$ ]] || wh_die "bad screen size: $size"
  WH_SCREEN_W=${BASH_REMATCH[1]}
  WH_SCREEN_H=${BASH_REMATCH[2]}
  WH_VIRTUAL_W=$WH_SCREEN_W
  _wh_x_server Xvfb -screen 0 "${size}x24"
  WH_XVFB_PID=$WH_SERVER_PID
  export DISPLAY=$WH_SERVER_DISPLAY
  if ((monitors == 2)); then
    _wh_x_server Xephyr -screen "${size}x24" -screen "${size}x24" +xinerama \
      -extension RANDR -ac
    WH_XEPHYR_PID=$WH_SERVER_PID
    export DISPLAY=$WH_SERVER_DISPLAY
    WH_VIRTUAL_W=$((2 * WH_SCREEN_W))
  fi
  wh_log "X server $DISPLAY: $monitors monitor(s) of $size"
  # Keep the pointer off the middle of the screen, where windows open.
  xdotool mousemove "$((WH_SCREEN_W - 1))" "$((WH_SCREEN_H - 1))" 2>>"$WH_ART/xdotool.log" || true
}

# ---------------------------------------------------------------- Wine prefix

_wh_cache_dir() {
  printf '%s' "${MIROVANTA_WINE_CACHE:-$HOME/.cache/mirovanta-wineprefix}"
}

_wh_cache_stamp() {
  printf 'recipe=%s %s' "$WH_PREFIX_RECIPE" "$(WINEDEBUG=-all wine --version 2>/dev/null)"
}

# _wh_build_cache DIR: makes DIR/prefix from scratch. Caller holds the exclusive lock.
_wh_build_cache() {
  local cache=$1 new="$1/prefix.new.$$" home="$1/home" t0 link
  rm -rf "$cache"/prefix.new.* "$home"
  mkdir -p "$home"
  t0=$(date +%s%N)
  printf 'building %s\n' "$(_wh_cache_stamp)" >"$cache/build.log"
  wh_log "building the Wine prefix cache in $cache (once, about 15 s)"
  (
    unset DISPLAY WAYLAND_DISPLAY
    export WINEPREFIX=$new WINEDEBUG=-all HOME=$home
    export WINEDLLOVERRIDES="mscoree,mshtml,winemenubuilder.exe=d"
    wineboot -i && wineserver -w &&
      wine reg add 'HKCU\Software\Wine\WineDbg' /v ShowCrashDialog /t REG_DWORD /d 0 /f &&
      wine reg add 'HKCU\Software\Wine\X11 Driver' /v UseTakeFocus /t REG_SZ /d N /f &&
      wineserver -w
  ) >>"$cache/build.log" 2>&1 || {
    rm -rf "$new"
    wh_die "making the Wine prefix failed, see $cache/build.log"
  }
  # Profile folders linked into the builder's home become plain folders of the prefix.
  while IFS= read -r -d '' link; do
    case $(readlink "$link") in
    /*) rm "$link" && mkdir "$link" ;;
    esac
  done < <(find "$new/drive_c/users" -type l -print0)
  if ! grep -q ShowCrashDialog "$new/user.reg" || ! grep -q UseTakeFocus "$new/user.reg"; then
    wh_die "registry settings missing in the new prefix, see $cache/build.log"
  fi
  _wh_cache_stamp >"$new/.mirovanta-stamp"
  rm -rf "$cache/prefix" "$home"
  mv "$new" "$cache/prefix"
  t0=$((($(date +%s%N) - t0) / 1000000))
  printf 'built in %d.%03d s\n' $((t0 / 1000)) $((t0 % 1000)) >>"$cache/build.log"
  wh_log "prefix cache built in $((t0 / 1000)) s"
}

# wh_start_wine: copies the cached prefix (made once, see above) to a fresh WINEPREFIX in
# the temp folder, exports WINEPREFIX/WINEDEBUG and starts a persistent wineserver.
wh_start_wine() {
  local cache fd
  cache=$(_wh_cache_dir)
  mkdir -p "$cache"
  exec {fd}>"$cache/lock"
  flock -s "$fd"
  if [[ "$(cat "$cache/prefix/.mirovanta-stamp" 2>/dev/null)" != "$(_wh_cache_stamp)" ]]; then
    flock -x "$fd"
    if [[ "$(cat "$cache/prefix/.mirovanta-stamp" 2>/dev/null)" != "$(_wh_cache_stamp)" ]]; then
      _wh_build_cache "$cache"
    fi
    flock -s "$fd"
  fi
  WH_PREFIX="$WH_TMP/prefix"
  cp -a "$cache/prefix" "$WH_PREFIX"
  exec {fd}>&-
  WH_HOME="$WH_TMP/home"
  mkdir -p "$WH_HOME"
  # The default sound device plays into nothing and records what it played in WH_SOUND.
  WH_SOUND="$WH_HOME/played.raw"
  : >"$WH_SOUND"
  printf 'pcm.!default { type file slave.pcm "null" file "%s" format "raw" }\nctl.!default { type null }\n' \
    "$WH_SOUND" >"$WH_HOME/.asoundrc"
  export WINEPREFIX=$WH_PREFIX WINEDEBUG=-all
  export WINEDLLOVERRIDES="winemenubuilder.exe=d${WINEDLLOVERRIDES:+;$WINEDLLOVERRIDES}"
  HOME=$WH_HOME wineserver -p >>"$WH_ART/wine.log" 2>&1 || wh_die "wineserver -p failed"
  wh_log "wine prefix $WH_PREFIX ready"
}

# wh_wine ARGS...: runs wine in the foreground with the run's private HOME (e.g. wh_wine reg add ...).
wh_wine() {
  HOME=$WH_HOME wine "$@" 2>>"$WH_ART/wine.log"
}

# wh_launch [-C DIR] [-l LOGNAME] EXE [ARGS...]: starts `wine EXE ARGS` in the background,
# in DIR (default: the folder of EXE), output to artifacts/LOGNAME (default: EXE's name
# .log). Sets WH_PID, the Windows process (wine keeps the pid).
wh_launch() {
  local dir="" log=""
  while [[ $# -gt 0 ]]; do
    case $1 in
    -C) dir=$2; shift 2 ;;
    -l) log=$2; shift 2 ;;
    *) break ;;
    esac
  done
  local exe=${1:?wh_launch needs a program}
  shift
  # A relative path would no longer hold once in DIR.
  if [[ $exe == */* && $exe != /* ]]; then exe="$(cd "$(dirname "$exe")" && pwd)/$(basename "$exe")"; fi
  if [[ -z $dir ]]; then
    if [[ $exe == */* ]]; then dir=$(dirname "$exe"); else dir=$PWD; fi
  fi
  [[ -n $log ]] || log="$(basename "$exe").log"
  [[ $log == /* ]] || log="$WH_ART/$log"
  (cd "$dir" && HOME=$WH_HOME exec wine "$exe" "$@") </dev/null >>"$log" 2>&1 &
  WH_PID=$!
  WH_PIDS+=("$WH_PID")
  wh_log "launched $exe $* in $dir: pid $WH_PID"
}

# wh_launch_driver BIN_DIR SCRIPT: starts the test flavour of the program (mirovanta_drv.exe)
# with SCRIPT as its driver script (see src/app/test_driver.h); output to driver.log.
wh_launch_driver() {
  export MIROVANTA_DRIVER
  MIROVANTA_DRIVER=$(winepath -w "$2")
  wh_launch -l driver.log "$1/mirovanta_drv.exe"
  unset MIROVANTA_DRIVER
}

# wh_wait_exit PID [TIMEOUT=10]: waits for a launched program to end; sets WH_EXIT_CODE.
wh_wait_exit() {
  local pid=$1 timeout=${2:-10} rc=0
  wh_wait_for "process $pid to exit" "$timeout" _wh_not_alive "$pid" || return 1
  wait "$pid" 2>/dev/null || rc=$?
  WH_EXIT_CODE=$rc
  wh_log "pid $pid exited with $rc"
}

_wh_not_alive() { ! _wh_alive "$1"; }

# Waiting, windows and input; screenshots and pixel comparisons.
source "$(dirname "${BASH_SOURCE[0]}")/lib_windows.sh"
source "$(dirname "${BASH_SOURCE[0]}")/lib_pictures.sh"

# ---------------------------------------------------------------- reporting

# wh_pass NAME: reports a passed check.
wh_pass() {
  WH_PASSED=$((WH_PASSED + 1))
  printf 'PASS %s\n' "$1"
  wh_log "PASS $1"
}

# wh_fail NAME REASON: reports a failed check.
wh_fail() {
  WH_FAILED=$((WH_FAILED + 1))
  printf 'FAIL %s: %s\n' "$1" "$2"
  wh_log "FAIL $1: $2"
}

# wh_check NAME COMMAND...: runs COMMAND (usually a function of the script, in this shell)
# and reports PASS, or FAIL with the reasons recorded by the helpers (or its exit status).
# Inside COMMAND, end at the first hard failure with `|| return 1`.
wh_check() {
  local name=$1 rc=0
  shift
  WH_REASON=""
  wh_log "check $name"
  "$@" || rc=$?
  if ((rc == 0)) && [[ -z $WH_REASON ]]; then
    wh_pass "$name"
  else
    wh_fail "$name" "${WH_REASON:-returned $rc}"
  fi
  WH_REASON=""
  return 0
}

# wh_finish: stops everything, prints the summary and exits (1 if any check failed).
wh_finish() {
  _WH_FINISHED=1
  wh_cleanup
  printf '%s: %d passed, %d failed%s\n' "$WH_NAME" "$WH_PASSED" "$WH_FAILED" \
    "$( ((WH_FAILED)) && printf ' (artifacts: %s)' "$WH_ART")"
  ((WH_FAILED == 0)) && exit 0
  exit 1
}
