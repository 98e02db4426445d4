; The Windows installer; scripts/package-windows.sh calls makensis with
;   VERSION      of the program
;   CONTENT      the folder to install, with installed.txt, the list of what is in it
;   FILES        the instructions that put its files down
;   ICON         the program's icon
;   PICTURE      the bitmap beside the last page, 164x314
;   KILOBYTES    what the installation takes
;   SETUP        the installer to make
;
; Everything goes to the user's own folders, so no administrator is needed. The program's folder
; belongs to the installer: an upgrade replaces what the version before has put there, and nothing
; else. Settings, logs and own skins lie in the user's other folder, %APPDATA%\Dravik.
;
;   /S               asks nothing
;   /AUTOSTART       the program starts with Windows; an upgrade keeps what was chosen
;   /D=FOLDER        installs there; the last argument, without quotes
;
; The uninstaller takes /S, too, and /SETTINGS, with which the user's own folder goes as well.
; Both end with 2 when they could not work, as while the program runs.

Target amd64-unicode
Unicode true
SetCompressor /SOLID lzma
ManifestSupportedOS Win10
ManifestDPIAware true
RequestExecutionLevel user

!include MUI2.nsh
!include LogicLib.nsh
!include FileFunc.nsh
!include WinVer.nsh

Name "Dravik"
BrandingText "Dravik ${VERSION}"
OutFile "${SETUP}"
InstallDir "$LOCALAPPDATA\Programs\Dravik"
InstallDirRegKey HKCU "Software\Dravik" "Folder"

VIProductVersion "${VERSION}.0"
VIAddVersionKey "ProductName" "Dravik"
VIAddVersionKey "ProductVersion" "${VERSION}"
VIAddVersionKey "FileVersion" "${VERSION}"
VIAddVersionKey "FileDescription" "Dravik Setup"
VIAddVersionKey "CompanyName" "The Dravik developers"
VIAddVersionKey "LegalCopyright" "MIT License"

!define UNINSTALL_KEY "Software\Microsoft\Windows\CurrentVersion\Uninstall\Dravik"
!define AUTOSTART_LINK "$SMSTARTUP\Dravik.lnk"
!define MENU_LINK "$SMPROGRAMS\Dravik.lnk"

!define MUI_ICON "${ICON}"
!define MUI_UNICON "${ICON}"
!define MUI_WELCOMEFINISHPAGE_BITMAP "${PICTURE}"
!define MUI_COMPONENTSPAGE_SMALLDESC
!define MUI_FINISHPAGE_RUN "$INSTDIR\dravik.exe"
!insertmacro MUI_PAGE_COMPONENTS
!insertmacro MUI_PAGE_DIRECTORY
!insertmacro MUI_PAGE_INSTFILES
!insertmacro MUI_PAGE_FINISH
!insertmacro MUI_UNPAGE_CONFIRM
!insertmacro MUI_UNPAGE_COMPONENTS
!insertmacro MUI_UNPAGE_INSTFILES

; The first one serves where the system speaks none of them.
!insertmacro MUI_LANGUAGE "English"
!insertmacro MUI_LANGUAGE "German"
!insertmacro MUI_LANGUAGE "French"
!insertmacro MUI_LANGUAGE "Spanish"
!insertmacro MUI_LANGUAGE "Italian"
!include "setup-texts.nsh"

; Ends the work unless the program of the installation can be replaced.
!macro RequireStopped un
Function ${un}RequireStopped
  Push "dravik.exe"
  Call ${un}RequireWritable
  Push "dravik-vehicle.exe"
  Call ${un}RequireWritable
FunctionEnd

Function ${un}RequireWritable
  Pop $1
  retry:
  ${IfNot} ${FileExists} "$INSTDIR\$1"
    Return
  ${EndIf}
  ClearErrors
  FileOpen $0 "$INSTDIR\$1" a
  ${IfNot} ${Errors}
    FileClose $0
    Return
  ${EndIf}
  MessageBox MB_RETRYCANCEL|MB_ICONEXCLAMATION "$(running)" /SD IDCANCEL IDRETRY retry
  SetErrorLevel 2
  Quit
FunctionEnd
!macroend

; Removes what the list of an installation names, and nothing else. A line is a file, or a folder
; that goes when it is empty.
!macro RemoveInstalled un
Function ${un}RemoveInstalled
  ClearErrors
  FileOpen $0 "$INSTDIR\installed.txt" r
  ${If} ${Errors}
    Return
  ${EndIf}
  ${Do}
    ClearErrors
    FileReadUTF16LE $0 $1
    ${If} ${Errors}
      ${ExitDo}
    ${EndIf}
    StrCpy $1 $1 -2  ; without the line's end
    StrCpy $2 $1 1 -1
    ${If} $2 == "\"
      RMDir "$INSTDIR\$1"
    ${Else}
      Delete "$INSTDIR\$1"
    ${EndIf}
  ${Loop}
  FileClose $0
  Delete "$INSTDIR\installed.txt"
FunctionEnd
!macroend

!insertmacro RequireStopped ""
!insertmacro RequireStopped "un."
!insertmacro RemoveInstalled ""
!insertmacro RemoveInstalled "un."

Section "Dravik" program
  SectionIn RO
  Call RequireStopped
  Call RemoveInstalled

  ; The list comes first, so that an installation that breaks off can be removed, too.
  SetOutPath "$INSTDIR"
  File "${CONTENT}\installed.txt"
  WriteUninstaller "$INSTDIR\uninstall.exe"
  WriteRegStr HKCU "Software\Dravik" "Folder" "$INSTDIR"
  WriteRegStr HKCU "${UNINSTALL_KEY}" "DisplayName" "Dravik"
  WriteRegStr HKCU "${UNINSTALL_KEY}" "DisplayVersion" "${VERSION}"
  WriteRegStr HKCU "${UNINSTALL_KEY}" "DisplayIcon" "$INSTDIR\dravik.exe"
  WriteRegStr HKCU "${UNINSTALL_KEY}" "Publisher" "The Dravik developers"
  WriteRegStr HKCU "${UNINSTALL_KEY}" "InstallLocation" "$INSTDIR"
  WriteRegStr HKCU "${UNINSTALL_KEY}" "UninstallString" '"$INSTDIR\uninstall.exe"'
  WriteRegStr HKCU "${UNINSTALL_KEY}" "QuietUninstallString" '"$INSTDIR\uninstall.exe" /S'
  WriteRegDWORD HKCU "${UNINSTALL_KEY}" "EstimatedSize" ${KILOBYTES}
  WriteRegDWORD HKCU "${UNINSTALL_KEY}" "NoModify" 1
  WriteRegDWORD HKCU "${UNINSTALL_KEY}" "NoRepair" 1

  !cd "${CONTENT}"
  !include "${FILES}"
  SetOutPath "$INSTDIR"  ; where the start menu starts the program
  CreateShortcut "${MENU_LINK}" "$INSTDIR\dravik.exe"
SectionEnd

Section /o "$(autostart)" autostart
  CreateShortcut "${AUTOSTART_LINK}" "$INSTDIR\dravik.exe"
SectionEnd

Section "-autostart off"
  ${IfNot} ${SectionIsSelected} ${autostart}
    Delete "${AUTOSTART_LINK}"
  ${EndIf}
SectionEnd

!insertmacro MUI_FUNCTION_DESCRIPTION_BEGIN
  !insertmacro MUI_DESCRIPTION_TEXT ${program} $(aboutProgram)
  !insertmacro MUI_DESCRIPTION_TEXT ${autostart} $(aboutAutostart)
!insertmacro MUI_FUNCTION_DESCRIPTION_END

Function .onInit
  ${IfNot} ${AtLeastWin10}
    MessageBox MB_OK|MB_ICONSTOP "$(tooOld)" /SD IDOK
    SetErrorLevel 2
    Quit
  ${EndIf}
  ${GetParameters} $0
  ClearErrors
  ${GetOptions} $0 "/AUTOSTART" $1
  ${IfNot} ${Errors}
  ${OrIf} ${FileExists} "${AUTOSTART_LINK}"
    !insertmacro SelectSection ${autostart}
  ${EndIf}
FunctionEnd

Section "un.Dravik"
  SectionIn RO
  Call un.RequireStopped
  Delete "${MENU_LINK}"
  Delete "${AUTOSTART_LINK}"
  Call un.RemoveInstalled
  Delete "$INSTDIR\uninstall.exe"
  SetOutPath "$TEMP"  ; a folder that is in use stays
  RMDir "$INSTDIR"
  DeleteRegKey HKCU "${UNINSTALL_KEY}"
  DeleteRegKey HKCU "Software\Dravik"
SectionEnd

Section /o "un.$(settings)" settings
  RMDir /r "$APPDATA\Dravik"
SectionEnd

Function un.onInit
  ${GetParameters} $0
  ClearErrors
  ${GetOptions} $0 "/SETTINGS" $1
  ${IfNot} ${Errors}
    !insertmacro SelectSection ${settings}
  ${EndIf}
FunctionEnd
