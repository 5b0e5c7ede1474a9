; The Windows installer, made by build.sh, which defines:
;   VERSION   as shown in the list of installed programs, e.g. 2.0.5
;   DIST      folder with the program as installed
;   NETCFG    the update server's configuration file
;   FILELIST  include file with the macro DeleteInstalledFiles
;   OUTPUT    the installer to write
;   ICON      (optional) icon of installer and uninstaller
;   QUICK    (optional) compresses fast instead of well
;   ALWAYS_SILENT (optional) asks and shows nothing, as with /S
;
; The product is 64-bit, and so is the installer itself.
Target amd64-unicode
!pragma warning disable 9000 ; the update server knows the installer as setup.exe
Unicode true
ManifestDPIAware true
!ifdef QUICK
    SetCompressor zlib
!else
    SetCompressor /SOLID lzma
!endif
RequestExecutionLevel admin

!include MUI2.nsh
!include LogicLib.nsh

!define PRODUCT "QorSound Kit"
!define PRODUCT_KEY "SOFTWARE\QorSoundKit"
!define UNINSTALL_KEY "SOFTWARE\Microsoft\Windows\CurrentVersion\Uninstall\QorSoundKit"
!define PANEL "QorSoundKit.exe"

Name "${PRODUCT}"
OutFile "${OUTPUT}"
BrandingText "${PRODUCT} ${VERSION}"
InstallDir "$PROGRAMFILES64\QorSoundKit"
InstallDirRegKey HKLM "${PRODUCT_KEY}" "InstallPath"
VIProductVersion "${VERSION}.0"
VIAddVersionKey ProductName "${PRODUCT}"
VIAddVersionKey FileDescription "${PRODUCT} Setup"
VIAddVersionKey FileVersion "${VERSION}"
VIAddVersionKey LegalCopyright ""

!ifdef ICON
    !define MUI_ICON "${ICON}"
    !define MUI_UNICON "${ICON}"
!endif
!define MUI_ABORTWARNING
!insertmacro MUI_PAGE_WELCOME
!insertmacro MUI_PAGE_DIRECTORY
!insertmacro MUI_PAGE_INSTFILES
!define MUI_FINISHPAGE_RUN "$INSTDIR\${PANEL}"
!insertmacro MUI_PAGE_FINISH
!insertmacro MUI_UNPAGE_CONFIRM
!insertmacro MUI_UNPAGE_INSTFILES
!insertmacro MUI_LANGUAGE "English"
!insertmacro MUI_LANGUAGE "SimpChinese"

LangString StillRuns ${LANG_ENGLISH} "${PRODUCT} is still running. Close it and try again."
LangString StillRuns ${LANG_SIMPCHINESE} "${PRODUCT} 仍在运行，请关闭后重试。"
LangString NoBackup ${LANG_ENGLISH} "The installed package could not be kept for the update check."
LangString NoBackup ${LANG_SIMPCHINESE} "无法保存安装包副本，软件更新检查将不可用。"

!include "${FILELIST}"

; A running panel ends itself within 100 ms when it finds exitCmd set; its file can be written to afterwards.
!macro DefineEndRunningPanel prefix
Function ${prefix}EndRunningPanel
    ${IfNot} ${FileExists} "$INSTDIR\${PANEL}"
        Return
    ${EndIf}
    Push $0
    Push $1
    ${Do}
        StrCpy $1 0
        ${Do}
            ClearErrors
            FileOpen $0 "$INSTDIR\${PANEL}" a
            ${IfNot} ${Errors}
                FileClose $0
                ${ExitDo}
            ${EndIf}
            WriteRegDWORD HKLM "${PRODUCT_KEY}" "exitCmd" 1
            Sleep 200
            IntOp $1 $1 + 1
        ${LoopUntil} $1 >= 50
        ${If} $1 > 0
            WriteRegDWORD HKLM "${PRODUCT_KEY}" "exitCmd" 0
        ${EndIf}
        ${If} $1 < 50
            ${ExitDo}
        ${EndIf}
        MessageBox MB_RETRYCANCEL|MB_ICONEXCLAMATION "$(StillRuns)" /SD IDCANCEL IDRETRY again
        SetErrorLevel 2
        Quit
        again:
    ${Loop}
    Pop $1
    Pop $0
FunctionEnd
!macroend
!insertmacro DefineEndRunningPanel ""
!insertmacro DefineEndRunningPanel "un."

Function .onInit
    SetRegView 64
    SetShellVarContext all
!ifdef ALWAYS_SILENT
    SetSilent silent
!endif
FunctionEnd

Function un.onInit
    SetRegView 64
    SetShellVarContext all
FunctionEnd

; The panel knows its own version by the CRC of the package that installed it, so this very file is kept.
Function KeepPackage
    CreateDirectory "$INSTDIR\backup"
    ${If} $EXEPATH == "$INSTDIR\backup\setup_backup.exe"
        Return
    ${EndIf}
    System::Call 'kernel32::CopyFileW(w "$EXEPATH", w "$INSTDIR\backup\setup_backup.exe", i 0) i .r0'
    ${If} $0 == 0
        MessageBox MB_OK|MB_ICONEXCLAMATION "$(NoBackup)" /SD IDOK
        SetErrorLevel 3
    ${EndIf}
FunctionEnd

Section "Program"
    Call EndRunningPanel
    SetOutPath "$INSTDIR"
    SetOverwrite on
    File /r /x config "${DIST}/*.*" ; without the curves of whoever tried the program out there
    File "/oname=qor_netcfg.fsc" "${NETCFG}"
    Call KeepPackage
    WriteUninstaller "$INSTDIR\uninst.exe"

    ; What the user has chosen in an earlier version stays.
    WriteRegStr HKLM "${PRODUCT_KEY}" "DisplayName" "${PRODUCT}"
    WriteRegStr HKLM "${PRODUCT_KEY}" "InstallPath" "$INSTDIR"
    WriteRegStr HKLM "${PRODUCT_KEY}" "ConfigPath" "$INSTDIR"

    WriteRegStr HKLM "${UNINSTALL_KEY}" "DisplayName" "${PRODUCT}"
    WriteRegStr HKLM "${UNINSTALL_KEY}" "DisplayVersion" "${VERSION}"
    WriteRegStr HKLM "${UNINSTALL_KEY}" "Publisher" "QorSound"
    WriteRegStr HKLM "${UNINSTALL_KEY}" "DisplayIcon" "$INSTDIR\${PANEL}"
    WriteRegStr HKLM "${UNINSTALL_KEY}" "InstallLocation" "$INSTDIR"
    WriteRegStr HKLM "${UNINSTALL_KEY}" "UninstallString" '"$INSTDIR\uninst.exe"'
    WriteRegStr HKLM "${UNINSTALL_KEY}" "QuietUninstallString" '"$INSTDIR\uninst.exe" /S'
    WriteRegDWORD HKLM "${UNINSTALL_KEY}" "EstimatedSize" ${SIZE_KB}
    WriteRegDWORD HKLM "${UNINSTALL_KEY}" "NoModify" 1
    WriteRegDWORD HKLM "${UNINSTALL_KEY}" "NoRepair" 1

    CreateShortcut "$SMPROGRAMS\${PRODUCT}.lnk" "$INSTDIR\${PANEL}"
    CreateShortcut "$DESKTOP\${PRODUCT}.lnk" "$INSTDIR\${PANEL}"
SectionEnd

Section "Uninstall"
    Call un.EndRunningPanel
    !insertmacro DeleteInstalledFiles
    Delete "$INSTDIR\qor_netcfg.fsc"
    Delete "$INSTDIR\backup\setup_backup.exe"
    RMDir "$INSTDIR\backup"
    Delete "$INSTDIR\config\eqs.bin" ; the user's equalizer curves
    RMDir "$INSTDIR\config"
    Delete "$INSTDIR\uninst.exe"
    RMDir "$INSTDIR"

    Delete "$SMPROGRAMS\${PRODUCT}.lnk"
    Delete "$DESKTOP\${PRODUCT}.lnk"
    DeleteRegKey HKLM "${UNINSTALL_KEY}"
    DeleteRegKey HKLM "${PRODUCT_KEY}"
    DeleteRegKey HKCU "${PRODUCT_KEY}"
SectionEnd
