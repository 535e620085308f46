#!/usr/bin/env bash
# The artefacts users download, under Wine: the x64 installer installs silently into
# Program Files with a Start menu folder and an entry in the list of programs, the
# installed program starts and captures, and its uninstaller takes away all it installed
# while the user's captures and settings stay; the portable zip runs from a folder whose
# name holds accents, CJK characters and an emoji. The version information is checked in
# the files themselves.
# Usage: check_install.sh BIN_DIR   (the installer and the zip in BIN_DIR/../../dist)
set -euo pipefail
here=$(cd "$(dirname "${BASH_SOURCE[0]}")" && pwd)
source "$here/lib.sh"
source "$here/program.sh"
BIN=$(cd "${1:?usage: check_install.sh BIN_DIR}" && pwd)
DIST=$(cd "$BIN/../.." && pwd)/dist
SETUP=$(ls "$DIST"/Mirovanta-*-x64-setup.exe 2>/dev/null | head -1)
ZIP=$(ls "$DIST"/Mirovanta-*-x64-portable.zip 2>/dev/null | head -1)
VERSION=$(basename "${SETUP:-x}" | sed -n 's/^Mirovanta-\(.*\)-x64-setup.exe$/\1/p')

wh_init install
wh_start_xvfb 1280x1024
wh_show_picture
wh_start_wine
mv_use_prefix
DRIVE_C=$WINEPREFIX/drive_c
INSTDIR="$DRIVE_C/Program Files/Mirovanta"
MENU="$DRIVE_C/ProgramData/Microsoft/Windows/Start Menu/Programs/Mirovanta"
UNINST_KEY='HKLM\Software\Microsoft\Windows\CurrentVersion\Uninstall\Mirovanta'

# The names of the files a package holds: the zip's listing, less the folder itself.
packaged_files() { unzip -Z1 "$ZIP" | sed -n 's|^Mirovanta/\(..*\)$|\1|p' | sort; }
# version_value FILE NAME: a value of FILE's version resource (UTF-16 strings).
version_value() { strings -el "$1" | grep -A1 -x "$2" | sed -n 2p; }

# run_quietly EXE ARGS...: runs a Windows program to its end; fails on a non-zero exit.
run_quietly() {
    wh_launch -l "$(basename "$1").log" "$@"
    wh_wait_exit "$WH_PID" 120 || return 1
    ((WH_EXIT_CODE == 0)) || { wh_reason "$(basename "$1") ended with $WH_EXIT_CODE"; return 1; }
}

# start_and_capture FOLDER: starts FOLDER\mirovanta.exe, makes a whole-screen capture from
# the toolbar, compares it with the screen, and quits without saving.
start_and_capture() {
    rm -rf "$APPDATA"/tempocapt*
    local before
    before=$(temp_files | wc -l)
    mv_start "$1" || return 1
    mv_click_button 1
    mv_new_capture $((before + 1)) "screen-$2" || return 1
    wh_assert_same "screen-$2" "$WH_ART/screen-$2.bmp" "$WH_PICTURE" --exclude "$(mv_tray_box)" || return 1
    wh_key "$MAIN" ctrl+q || return 1
    wh_find_window '^Mirovanta - quit$' 10 || return 1 # captures not saved: No quits
    wh_key "$WH_WID" n || return 1
    wh_wait_exit "$WH_PID_PROGRAM" 15
}

check_version_information() {
    [[ -n "$SETUP" && -n "$ZIP" ]] || { wh_reason "no installer or zip in $DIST"; return 1; }
    local exe=$WH_TMP/zip-exe/Mirovanta/mirovanta.exe f
    unzip -q -o "$ZIP" Mirovanta/mirovanta.exe -d "$WH_TMP/zip-exe"
    for f in "$exe" "$SETUP"; do
        [[ "$(version_value "$f" ProductName)" == Mirovanta ]] ||
            { wh_reason "$(basename "$f") has no product name"; return 1; }
        [[ "$(version_value "$f" ProductVersion)" == "$VERSION" ]] ||
            { wh_reason "$(basename "$f"): product version '$(version_value "$f" ProductVersion)'"; return 1; }
    done
    [[ "$(version_value "$exe" FileVersion)" == "$VERSION" ]] || { wh_reason "program's file version"; return 1; }
}

check_silent_install() {
    run_quietly "$SETUP" /S || return 1
    local missing
    missing=$(packaged_files | while read -r f; do [[ -f "$INSTDIR/$f" ]] || echo "$f"; done)
    [[ -z "$missing" ]] || { wh_reason "not installed: $(echo $missing)"; return 1; }
    [[ -f "$INSTDIR/uninstall.exe" ]] || { wh_reason "no uninstaller"; return 1; }
    [[ -f "$MENU/Mirovanta.lnk" ]] || { wh_reason "no Start menu entry: $(ls "$MENU" 2>&1)"; return 1; }
    wh_wine reg query "$UNINST_KEY" /v DisplayVersion >"$WH_ART/uninstall-key.txt" ||
        { wh_reason "no entry in the list of programs"; return 1; }
    grep -q "$VERSION" "$WH_ART/uninstall-key.txt" || { wh_reason "the entry has another version"; return 1; }
}

check_installed_program_captures() { start_and_capture "$INSTDIR" installed; }

# The user's files beside the program's: a capture saved to Documents and the settings.
check_uninstall_leaves_the_users_files() {
    local documents=$DRIVE_C/users/$(id -un)/Documents
    mkdir -p "$documents" && cp "$WH_ART/screen-installed.bmp" "$documents/Capt1.bmp"
    [[ -f "$APPDATA/params.txt" ]] || { wh_reason "the program wrote no params.txt"; return 1; }
    run_quietly "$INSTDIR/uninstall.exe" /S || return 1
    # The uninstaller copies itself away and goes on from there: wait for its work.
    wh_wait_for "the program's folder to go" 30 test ! -e "$INSTDIR" || { ls -la "$INSTDIR" >&2; return 1; }
    wh_wait_for "the Start menu folder to go" 10 test ! -e "$MENU" || return 1
    if wh_wine reg query "$UNINST_KEY" >/dev/null 2>&1; then wh_reason "the list of programs keeps it"; return 1; fi
    [[ -f "$documents/Capt1.bmp" && -f "$APPDATA/params.txt" && -f "$APPDATA/spoken.txt" ]] ||
        { wh_reason "a file of the user's went"; return 1; }
}

# The portable zip, unpacked anywhere, runs as it is: here from a folder of the Desktop
# whose name needs Unicode, for a user whose AppData (the temporary captures, the
# settings) lies in such a folder too.
check_portable_zip() {
    local folder="$DRIVE_C/users/$(id -un)/Desktop/Outils é 截图 📷"
    mkdir -p "$folder" && unzip -q "$ZIP" -d "$folder"
    local roaming='C:\users\Zoé 用户 📷\AppData\Roaming' reg=$WH_TMP/appdata.reg
    mkdir -p "$DRIVE_C/users/Zoé 用户 📷/AppData/Roaming"
    local key='HKEY_CURRENT_USER\Software\Microsoft\Windows\CurrentVersion\Explorer'
    {
        printf 'Windows Registry Editor Version 5.00\r\n'
        for folders in 'User Shell Folders' 'Shell Folders'; do
            printf '\r\n[%s\\%s]\r\n"AppData"="%s"\r\n' "$key" "$folders" "${roaming//\\/\\\\}"
        done
    } | iconv -f UTF-8 -t UTF-16 >"$reg"
    wh_wine regedit /s "$(winepath -w "$reg")" || { wh_reason "regedit failed"; return 1; }
    APPDATA="$DRIVE_C/users/Zoé 用户 📷/AppData/Roaming/Mirovanta"
    mv_choose_english
    start_and_capture "$folder/Mirovanta" portable || return 1
    [[ -f "$APPDATA/params.txt" ]] || { wh_reason "no params.txt in the moved AppData"; return 1; }
}

wh_check "the program and the installer carry their version" check_version_information
wh_check "the installer installs silently with its Start menu entry" check_silent_install
wh_check "the installed program starts and captures the screen" check_installed_program_captures
wh_check "the uninstaller takes the program away and leaves the user's files" check_uninstall_leaves_the_users_files
wh_check "the portable zip runs from a Unicode folder and captures" check_portable_zip
wh_finish
