; The installer for one user. packaging/windows/build calls it with VERSION, FOLDER (what is installed), LISTS (the folder of
; install.nsh and remove.nsh), SETUP (the file to make) and KBYTES (how much it installs).
; Exit status of a silent run (/S): 0 done, 2 the program is running or Windows is too old, 3 a file could not be written.
Unicode true
Target amd64-unicode
SetCompressor /SOLID lzma
RequestExecutionLevel user
ManifestDPIAware true

!include MUI2.nsh
!include LogicLib.nsh
!include FileFunc.nsh
!include WinVer.nsh

!define NAME "Orvanexe Service"
!define KEY "Software\Microsoft\Windows\CurrentVersion\Uninstall\Orvanexe Service"
!define UNINSTALLER "Deinstallieren.exe"
!define LINK "$SMPROGRAMS\${NAME}.lnk"
!define WORK "$DOCUMENTS\Orvanexe"

!define STATUS_REFUSED 2
!define STATUS_FAILED 3

Name "${NAME} ${VERSION}"
BrandingText " " ; not the name of what made the installer
OutFile "${SETUP}"
InstallDir "$LOCALAPPDATA\Programs\${NAME}"
InstallDirRegKey HKCU "${KEY}" "InstallLocation"
ShowInstDetails nevershow
ShowUninstDetails nevershow
AllowSkipFiles off

!define MUI_ICON "src/desktop/win32/oxservice.ico"
!define MUI_UNICON "src/desktop/win32/oxservice.ico"
!define MUI_ABORTWARNING
!define MUI_FINISHPAGE_RUN
!define MUI_FINISHPAGE_RUN_TEXT "${NAME} starten"
!define MUI_FINISHPAGE_RUN_FUNCTION StartProgram
!insertmacro MUI_PAGE_DIRECTORY
!insertmacro MUI_PAGE_INSTFILES
!insertmacro MUI_PAGE_FINISH
!insertmacro MUI_UNPAGE_CONFIRM
!insertmacro MUI_UNPAGE_INSTFILES
!insertmacro MUI_LANGUAGE German

VIProductVersion "${VERSION}.0"
VIFileVersion "${VERSION}.0"
VIAddVersionKey /LANG=${LANG_GERMAN} ProductName "${NAME}"
VIAddVersionKey /LANG=${LANG_GERMAN} ProductVersion "${VERSION}"
VIAddVersionKey /LANG=${LANG_GERMAN} FileVersion "${VERSION}"
VIAddVersionKey /LANG=${LANG_GERMAN} FileDescription "${NAME} einrichten"
VIAddVersionKey /LANG=${LANG_GERMAN} CompanyName "${NAME} Team"
VIAddVersionKey /LANG=${LANG_GERMAN} LegalCopyright "2026 ${NAME} Team"

; For installer and uninstaller: RefuseWhileRunning ends them when a program in the folder $0 is running, since Windows lets
; nobody write a program that runs.
!macro RefuseWhileRunning un
  Function ${un}RefuseWhileRunning
    ${For} $2 1 2
      StrCpy $3 "$0\oxservice.exe"
      ${If} $2 = 2
        StrCpy $3 "$0\oxtool.exe"
      ${EndIf}
      ${Do}
        ${IfNot} ${FileExists} "$3"
          ${ExitDo}
        ${EndIf}
        ClearErrors
        FileOpen $1 "$3" a
        ${IfNot} ${Errors}
          FileClose $1
          ${ExitDo}
        ${EndIf}
        MessageBox MB_RETRYCANCEL|MB_ICONEXCLAMATION \
          "Das Programm läuft noch:$\n$3$\n$\nBitte beenden Sie es und versuchen Sie es dann noch einmal." \
          /SD IDCANCEL IDRETRY +3
        SetErrorLevel ${STATUS_REFUSED}
        Quit
      ${Loop}
    ${Next}
  FunctionEnd
!macroend
!insertmacro RefuseWhileRunning ""
!insertmacro RefuseWhileRunning "un."

Function .onInit
  ${IfNot} ${AtLeastWin10}
    MessageBox MB_OK|MB_ICONSTOP "${NAME} braucht Windows 10 oder neuer." /SD IDOK
    SetErrorLevel ${STATUS_REFUSED}
    Quit
  ${EndIf}
FunctionEnd

; The version that is there takes its files away with its own uninstaller, which knows their names.
Function RemoveOlder
  ReadRegStr $0 HKCU "${KEY}" "InstallLocation"
  ${If} $0 == ""
  ${OrIfNot} ${FileExists} "$0\${UNINSTALLER}"
    Return
  ${EndIf}
  Call RefuseWhileRunning
  ClearErrors
  ExecWait '"$0\${UNINSTALLER}" /S /UPDATE _?=$0' $1
  ${If} ${Errors}
  ${OrIf} $1 <> 0
    MessageBox MB_OK|MB_ICONSTOP "Die vorhandene Fassung lässt sich nicht entfernen:$\n$0" /SD IDOK
    SetErrorLevel ${STATUS_FAILED}
    Quit
  ${EndIf}
  Delete "$0\${UNINSTALLER}"
  RMDir "$0"
FunctionEnd

Section
  StrCpy $0 $INSTDIR
  Call RefuseWhileRunning
  Call RemoveOlder
  ClearErrors
  !include "${LISTS}/install.nsh"
  WriteUninstaller "$INSTDIR\${UNINSTALLER}"
  ${If} ${Errors}
    SetErrorLevel ${STATUS_FAILED}
    Abort "Nicht alle Dateien ließen sich schreiben."
  ${EndIf}

  ; Where the program keeps settings and logs. What lies there is the user's.
  CreateDirectory "${WORK}\Protokoll"
  SetOutPath "${WORK}"
  CreateShortCut "${LINK}" "$INSTDIR\oxservice.exe"

  WriteRegStr HKCU "${KEY}" "DisplayName" "${NAME}"
  WriteRegStr HKCU "${KEY}" "DisplayVersion" "${VERSION}"
  WriteRegStr HKCU "${KEY}" "DisplayIcon" "$INSTDIR\oxservice.exe"
  WriteRegStr HKCU "${KEY}" "Publisher" "${NAME} Team"
  WriteRegStr HKCU "${KEY}" "InstallLocation" "$INSTDIR"
  WriteRegStr HKCU "${KEY}" "UninstallString" '"$INSTDIR\${UNINSTALLER}"'
  WriteRegStr HKCU "${KEY}" "QuietUninstallString" '"$INSTDIR\${UNINSTALLER}" /S'
  WriteRegDWORD HKCU "${KEY}" "EstimatedSize" ${KBYTES}
  WriteRegDWORD HKCU "${KEY}" "NoModify" 1
  WriteRegDWORD HKCU "${KEY}" "NoRepair" 1
SectionEnd

; As the start menu does, and so in the folder of the user's files.
Function StartProgram
  ExecShell "" "${LINK}"
FunctionEnd

Section un.
  StrCpy $0 $INSTDIR
  Call un.RefuseWhileRunning
  SetOutPath "$TEMP" ; a folder in which somebody works cannot be removed
  !include "${LISTS}/remove.nsh"

  ; A newer version that comes in the place of this one keeps the rest.
  ClearErrors
  ${GetParameters} $0
  ${GetOptions} $0 "/UPDATE" $1
  ${IfNot} ${Errors}
    Return
  ${EndIf}

  Delete "$INSTDIR\${UNINSTALLER}"
  RMDir "$INSTDIR"
  Delete "${LINK}"
  ; What the program keeps by itself of its windows, and its page that leads into the manual.
  Delete "$LOCALAPPDATA\oxservice\windows.ini"
  Delete "$LOCALAPPDATA\oxservice\handbuch.html"
  RMDir "$LOCALAPPDATA\oxservice"
  ; Only where nothing is in them: the rest is the user's.
  RMDir "${WORK}\Protokoll"
  RMDir "${WORK}"
  DeleteRegKey HKCU "${KEY}"
SectionEnd
