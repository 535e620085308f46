; The Windows installer: the program and its installation files into Program Files, a
; Start menu folder, an entry in Windows' list of programs, and an uninstaller that takes
; away what was installed and leaves the user's captures and settings (AppData\Mirovanta).
; Built by packaging/make_dist.sh, which defines:
;   VERSION   1.2.3
;   ARCH      x64 or x86
;   STAGE     the folder holding the files to install
;   FILES     an include with a File line per file of STAGE
;   UNFILES   an include with a Delete line per file of STAGE
;   ICON      the program's icon
;   OUTFILE   the installer to write
Unicode true
!if ${ARCH} == x64
  Target amd64-unicode
  !define PROGRAMS_FOLDER "$PROGRAMFILES64"
!else
  Target x86-unicode
  !define PROGRAMS_FOLDER "$PROGRAMFILES"
!endif
SetCompressor /SOLID lzma

!define UNINST_KEY "Software\Microsoft\Windows\CurrentVersion\Uninstall\Mirovanta"

Name "Mirovanta ${VERSION}"
OutFile "${OUTFILE}"
InstallDir "${PROGRAMS_FOLDER}\Mirovanta"
InstallDirRegKey HKLM "${UNINST_KEY}" "InstallLocation"
RequestExecutionLevel admin
ShowInstDetails nevershow
ShowUninstDetails nevershow

!include "MUI2.nsh"
!define MUI_ICON "${ICON}"
!define MUI_UNICON "${ICON}"
!define MUI_ABORTWARNING
!define MUI_FINISHPAGE_RUN "$INSTDIR\mirovanta.exe"
!insertmacro MUI_PAGE_WELCOME
!insertmacro MUI_PAGE_DIRECTORY
!insertmacro MUI_PAGE_INSTFILES
!insertmacro MUI_PAGE_FINISH
!insertmacro MUI_UNPAGE_CONFIRM
!insertmacro MUI_UNPAGE_INSTFILES
!insertmacro MUI_LANGUAGE "English"
!insertmacro MUI_LANGUAGE "French"
; The pages speak the language of Windows when it is French, English otherwise.

LangString UninstallLink ${LANG_ENGLISH} "Uninstall Mirovanta"
LangString UninstallLink ${LANG_FRENCH} "Désinstaller Mirovanta"

VIProductVersion "${VERSION}.0"
VIFileVersion "${VERSION}.0"
VIAddVersionKey /LANG=${LANG_ENGLISH} "ProductName" "Mirovanta"
VIAddVersionKey /LANG=${LANG_ENGLISH} "CompanyName" "Mirovanta"
VIAddVersionKey /LANG=${LANG_ENGLISH} "FileDescription" "Mirovanta ${VERSION} setup (${ARCH})"
VIAddVersionKey /LANG=${LANG_ENGLISH} "FileVersion" "${VERSION}"
VIAddVersionKey /LANG=${LANG_ENGLISH} "ProductVersion" "${VERSION}"
VIAddVersionKey /LANG=${LANG_ENGLISH} "LegalCopyright" "Copyright (C) 2026 the Mirovanta developers"

Function .onInit
  !if ${ARCH} == x64
    SetRegView 64
  !endif
FunctionEnd

Function un.onInit
  !if ${ARCH} == x64
    SetRegView 64
  !endif
FunctionEnd

Section "Mirovanta"
  SetShellVarContext all
  SetOutPath "$INSTDIR"
  !include "${FILES}"
  WriteUninstaller "$INSTDIR\uninstall.exe"

  CreateDirectory "$SMPROGRAMS\Mirovanta"
  CreateShortcut "$SMPROGRAMS\Mirovanta\Mirovanta.lnk" "$INSTDIR\mirovanta.exe"
  CreateShortcut "$SMPROGRAMS\Mirovanta\$(UninstallLink).lnk" "$INSTDIR\uninstall.exe"

  WriteRegStr HKLM "${UNINST_KEY}" "DisplayName" "Mirovanta"
  WriteRegStr HKLM "${UNINST_KEY}" "DisplayVersion" "${VERSION}"
  WriteRegStr HKLM "${UNINST_KEY}" "Publisher" "Mirovanta"
  WriteRegStr HKLM "${UNINST_KEY}" "DisplayIcon" "$INSTDIR\mirovanta.exe"
  WriteRegStr HKLM "${UNINST_KEY}" "InstallLocation" "$INSTDIR"
  WriteRegStr HKLM "${UNINST_KEY}" "UninstallString" '"$INSTDIR\uninstall.exe"'
  WriteRegStr HKLM "${UNINST_KEY}" "QuietUninstallString" '"$INSTDIR\uninstall.exe" /S'
  WriteRegDWORD HKLM "${UNINST_KEY}" "NoModify" 1
  WriteRegDWORD HKLM "${UNINST_KEY}" "NoRepair" 1
SectionEnd

Section "Uninstall"
  SetShellVarContext all
  ; Only the files the installer put there: captures saved by the user into the program's
  ; folder stay, and so does the folder then.
  !include "${UNFILES}"
  Delete "$INSTDIR\uninstall.exe"
  RMDir "$INSTDIR"

  Delete "$SMPROGRAMS\Mirovanta\Mirovanta.lnk"
  Delete "$SMPROGRAMS\Mirovanta\Uninstall Mirovanta.lnk"
  Delete "$SMPROGRAMS\Mirovanta\Désinstaller Mirovanta.lnk"
  RMDir "$SMPROGRAMS\Mirovanta"

  DeleteRegKey HKLM "${UNINST_KEY}"
SectionEnd
