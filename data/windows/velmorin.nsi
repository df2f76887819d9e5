; The Windows installer: the program in Program Files, a Start menu entry, starting with Windows
; as an option, and an uninstaller that leaves the user's clippings, snippets and settings.
; Built by the "installer" target of the Windows build:
;   makensis -DVERSION=1.9.0 -DPROGRAM=velmorin.exe -DOUTFILE=Velmorin-1.9.0-setup.exe velmorin.nsi
; Silent install: Velmorin-setup.exe /S [/NOAUTOSTART] [/D=C:\folder]. Silent uninstall:
; uninstall.exe /S.

; A 64-bit installer for the 64-bit program: it needs no 32-bit subsystem.
Target amd64-unicode
SetCompressor /SOLID lzma
RequestExecutionLevel admin

!include "MUI2.nsh"
!include "FileFunc.nsh"
!include "x64.nsh"
!include "LogicLib.nsh"

!define PRODUCT "Velmorin"
!define PUBLISHER "The Velmorin developers"
; Where Windows lists installed programs, and where it looks for programs to start at log-in.
!define UNINSTALL_KEY "Software\Microsoft\Windows\CurrentVersion\Uninstall\${PRODUCT}"
!define RUN_KEY "Software\Microsoft\Windows\CurrentVersion\Run"
; The program's own settings; StartAutomatically is the choice it applies at every start.
!define SETTINGS_KEY "Software\${PRODUCT}\${PRODUCT}"

Name "${PRODUCT}"
OutFile "${OUTFILE}"
InstallDir "$PROGRAMFILES64\${PRODUCT}"
InstallDirRegKey HKLM "${UNINSTALL_KEY}" "InstallLocation"
BrandingText "${PRODUCT} ${VERSION}"

!define MUI_ICON "${__FILEDIR__}\velmorin.ico"
!define MUI_UNICON "${__FILEDIR__}\velmorin.ico"
!define MUI_COMPONENTSPAGE_NODESC
!define MUI_FINISHPAGE_RUN "$INSTDIR\velmorin.exe"
!insertmacro MUI_PAGE_WELCOME
!insertmacro MUI_PAGE_COMPONENTS
!insertmacro MUI_PAGE_DIRECTORY
!insertmacro MUI_PAGE_INSTFILES
!insertmacro MUI_PAGE_FINISH
!insertmacro MUI_UNPAGE_CONFIRM
!insertmacro MUI_UNPAGE_INSTFILES
!insertmacro MUI_LANGUAGE "English"
!insertmacro MUI_LANGUAGE "German"

LangString StartWithWindows ${LANG_ENGLISH} "Start Velmorin with Windows"
LangString StartWithWindows ${LANG_GERMAN} "Velmorin mit Windows starten"
LangString StillRunning ${LANG_ENGLISH} "Velmorin is running. Quit it from its tray icon, then choose Retry."
LangString StillRunning ${LANG_GERMAN} "Velmorin läuft. Beenden Sie es über sein Symbol im Infobereich und wählen Sie dann Wiederholen."

Section "!${PRODUCT}" SecProgram
    SectionIn RO
    SetShellVarContext all
    SetOutPath "$INSTDIR"
    ; An installed copy that is still running keeps its file open.
    retry:
    ClearErrors
    File "/oname=velmorin.exe" "${PROGRAM}"
    ${If} ${Errors}
        MessageBox MB_RETRYCANCEL|MB_ICONEXCLAMATION "$(StillRunning)" /SD IDCANCEL IDRETRY retry
        Abort
    ${EndIf}
    WriteUninstaller "$INSTDIR\uninstall.exe"
    CreateShortcut "$SMPROGRAMS\${PRODUCT}.lnk" "$INSTDIR\velmorin.exe"

    WriteRegStr HKLM "${UNINSTALL_KEY}" "DisplayName" "${PRODUCT}"
    WriteRegStr HKLM "${UNINSTALL_KEY}" "DisplayVersion" "${VERSION}"
    WriteRegStr HKLM "${UNINSTALL_KEY}" "Publisher" "${PUBLISHER}"
    WriteRegStr HKLM "${UNINSTALL_KEY}" "DisplayIcon" "$INSTDIR\velmorin.exe"
    WriteRegStr HKLM "${UNINSTALL_KEY}" "InstallLocation" "$INSTDIR"
    WriteRegStr HKLM "${UNINSTALL_KEY}" "UninstallString" '"$INSTDIR\uninstall.exe"'
    WriteRegStr HKLM "${UNINSTALL_KEY}" "QuietUninstallString" '"$INSTDIR\uninstall.exe" /S'
    WriteRegDWORD HKLM "${UNINSTALL_KEY}" "NoModify" 1
    WriteRegDWORD HKLM "${UNINSTALL_KEY}" "NoRepair" 1
    ${GetSize} "$INSTDIR" "/S=0K" $0 $1 $2
    WriteRegDWORD HKLM "${UNINSTALL_KEY}" "EstimatedSize" $0
    ; Off unless the next section turns it on; the program applies this choice when it starts.
    WriteRegStr HKCU "${SETTINGS_KEY}" "StartAutomatically" "false"
    DeleteRegValue HKCU "${RUN_KEY}" "${PRODUCT}"
SectionEnd

Section "$(StartWithWindows)" SecAutostart
    WriteRegStr HKCU "${SETTINGS_KEY}" "StartAutomatically" "true"
    WriteRegStr HKCU "${RUN_KEY}" "${PRODUCT}" '"$INSTDIR\velmorin.exe"'
SectionEnd

Function .onInit
    SetRegView 64
    ; /NOAUTOSTART on the command line leaves "start with Windows" off, also when silent.
    ${GetParameters} $0
    ClearErrors
    ${GetOptions} $0 "/NOAUTOSTART" $1
    ${IfNot} ${Errors}
        SectionSetFlags ${SecAutostart} 0
    ${EndIf}
FunctionEnd

Section "Uninstall"
    SetRegView 64
    SetShellVarContext all
    Delete "$SMPROGRAMS\${PRODUCT}.lnk"
    Delete "$INSTDIR\velmorin.exe"
    Delete "$INSTDIR\uninstall.exe"
    RMDir "$INSTDIR"
    DeleteRegValue HKCU "${RUN_KEY}" "${PRODUCT}"
    DeleteRegKey HKLM "${UNINSTALL_KEY}"
    ; The user's history, snippets, actions and settings stay, for a later install.
SectionEnd
