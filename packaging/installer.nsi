; The Windows installer, made by build.sh, which defines:
;   VERSION   as shown in the list of installed programs, e.g. 2.0.5
;   DIST      folder with the program as installed
;   NETCFG    the update server's configuration file
;   FILELIST  include file with the macros ForEachInstalledFile and RemoveInstalledFolders
;   FILESTAMP identifies the list of installed files
;   ART       folder with wizard.bmp and header.bmp
;   OUTPUT    the installer to write
;   ICON      (optional) icon of installer and uninstaller
;   QUICK    (optional) compresses fast instead of well
;   ALWAYS_SILENT (optional) asks and shows nothing, as with /S
;
; The product is 64-bit, and so is the installer itself. Exit codes are in README.md.
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
AllowSkipFiles off

!include MUI2.nsh
!include LogicLib.nsh
!include FileFunc.nsh

!define PRODUCT "QorSound Kit"
!define PRODUCT_KEY "SOFTWARE\QorSoundKit"
!define UNINSTALL_KEY "SOFTWARE\Microsoft\Windows\CurrentVersion\Uninstall\QorSoundKit"
!define FILES_KEY "${UNINSTALL_KEY}\Files" ; a value for each installed file, with its package's FILESTAMP
!define PANEL "QorSoundKit.exe"
!define EXIT_IN_USE 2
!define EXIT_NO_COPY 3

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
!define MUI_WELCOMEFINISHPAGE_BITMAP "${ART}\wizard.bmp"
!define MUI_HEADERIMAGE
!define MUI_HEADERIMAGE_RIGHT
!define MUI_HEADERIMAGE_BITMAP "${ART}\header.bmp"
!define MUI_HEADERIMAGE_UNBITMAP "${ART}\header.bmp"
!define MUI_BGCOLOR 262626
!define MUI_TEXTCOLOR FFFFFF
!define MUI_FORCECLASSICCONTROLS ; those of Windows' theme stay black on the dark ground
!define MUI_ABORTWARNING
!define MUI_WELCOMEPAGE_TEXT "$(Welcome)"
!insertmacro MUI_PAGE_WELCOME
!insertmacro MUI_PAGE_DIRECTORY
!insertmacro MUI_PAGE_INSTFILES
!define MUI_FINISHPAGE_RUN "$INSTDIR\${PANEL}"
!insertmacro MUI_PAGE_FINISH
!insertmacro MUI_UNPAGE_CONFIRM
!insertmacro MUI_UNPAGE_INSTFILES
!insertmacro MUI_LANGUAGE "English"
!insertmacro MUI_LANGUAGE "SimpChinese"

SetFont /LANG=${LANG_SIMPCHINESE} "Microsoft YaHei" 9 ; the panel's own; NSIS would take SimSun

LangString Welcome ${LANG_ENGLISH} "This installs ${PRODUCT} ${VERSION}, the control panel of your headset.$\n$\nA panel that is running is ended first. Your settings and equalizer curves stay as they are.$\n$\nClick Next to continue."
LangString Welcome ${LANG_SIMPCHINESE} "即将安装耳机控制面板 ${PRODUCT} ${VERSION}。$\n$\n正在运行的面板会先自动退出，您的设置和均衡器曲线都会保留。$\n$\n单击“下一步”继续。"
LangString InUse ${LANG_ENGLISH} "This file is in use:$\n$\n$LockedFile$\n$\nClose the program that uses it and try again. Nothing has been changed so far."
LangString InUse ${LANG_SIMPCHINESE} "文件正在使用中：$\n$\n$LockedFile$\n$\n请关闭使用它的程序后重试。目前尚未作任何更改。"
LangString NoBackup ${LANG_ENGLISH} "The installed package could not be kept for the update check."
LangString NoBackup ${LANG_SIMPCHINESE} "无法保存安装包副本，软件更新检查将不可用。"
LangString KeepCurves ${LANG_ENGLISH} "Keep your own equalizer curves for a later installation?"
LangString KeepCurves ${LANG_SIMPCHINESE} "是否保留您自己的均衡器曲线，以便以后重新安装时使用？"

Var LockedFile ; one that cannot be replaced now; empty: none

!include "${FILELIST}"

; Actions for ForEachInstalledFile.
!macro RecordFile name
    WriteRegStr HKLM "${FILES_KEY}" "${name}" "${FILESTAMP}"
!macroend
!macro DeleteFile name
    Delete "$INSTDIR\${name}"
!macroend
!macro CheckFile name
    Push "$INSTDIR\${name}"
    Call CheckFile
!macroend
!macro un.CheckFile name
    Push "$INSTDIR\${name}"
    Call un.CheckFile
!macroend

!macro DefineEndingPrograms un
; Takes a path from the stack; a file that cannot be written to becomes $LockedFile.
Function ${un}CheckFile
    Exch $0
    ${If} ${FileExists} $0
        Push $1
        ClearErrors
        FileOpen $1 $0 a
        ${If} ${Errors}
            StrCpy $LockedFile $0
        ${Else}
            FileClose $1
        ${EndIf}
        Pop $1
    ${EndIf}
    Pop $0
FunctionEnd

; A running panel ends itself within 100 ms when it finds exitCmd set; its file can be written to afterwards.
Function ${un}EndPanel
    Push $0
    StrCpy $0 0
    ${Do}
        StrCpy $LockedFile ""
        Push "$INSTDIR\${PANEL}"
        Call ${un}CheckFile
        ${If} $LockedFile == ""
        ${OrIf} $0 >= 50
            ${ExitDo}
        ${EndIf}
        WriteRegDWORD HKLM "${PRODUCT_KEY}" "exitCmd" 1
        Sleep 200
        IntOp $0 $0 + 1
    ${Loop}
    ${If} $0 > 0
        WriteRegDWORD HKLM "${PRODUCT_KEY}" "exitCmd" 0
    ${EndIf}
    Pop $0
FunctionEnd

; Ends the helper programs that run from the installation folder, such as normal.exe after a panel that was killed.
Function ${un}EndHelpers
    System::Store S
    StrLen $7 "$INSTDIR\"
    System::Call 'kernel32::GetCurrentProcessId() i .r8'
    System::Call 'kernel32::CreateToolhelp32Snapshot(i 2, i 0) p .r0' ; TH32CS_SNAPPROCESS
    System::Alloc 568 ; PROCESSENTRY32W: its size, a count, the process id
    Pop $1
    System::Call '*$1(i 568)'
    System::Call 'kernel32::Process32FirstW(p r0, p r1) i .r2'
    ${DoWhile} $2 != 0
        System::Call '*$1(i, i, i .r3)'
        System::Call 'kernel32::OpenProcess(i 0x101001, i 0, i r3) p .r4' ; query, wait for, end
        ${If} $4 <> 0
            StrCpy $5 ""
            System::Call 'kernel32::QueryFullProcessImageNameW(p r4, i 0, w .r5, *i ${NSIS_MAX_STRLEN}) i'
            StrCpy $6 $5 $7
            ${If} $6 == "$INSTDIR\"
            ${AndIf} $5 != "$INSTDIR\${PANEL}"
            ${AndIf} $3 <> $8
                System::Call 'kernel32::TerminateProcess(p r4, i 0)'
                System::Call 'kernel32::WaitForSingleObject(p r4, i 5000)'
            ${EndIf}
            System::Call 'kernel32::CloseHandle(p r4)'
        ${EndIf}
        System::Call 'kernel32::Process32NextW(p r0, p r1) i .r2'
    ${Loop}
    System::Free $1
    System::Call 'kernel32::CloseHandle(p r0)'
    System::Store L
FunctionEnd

; Goes on when all installed files can be replaced or deleted, and ends before anything is changed when one cannot.
Function ${un}EndPrograms
    ${Do}
        Call ${un}EndPanel
        Call ${un}EndHelpers
        !insertmacro ForEachInstalledFile ${un}CheckFile
        !insertmacro ${un}CheckFile "qor_netcfg.fsc"
        ${If} $EXEPATH != "$INSTDIR\backup\setup_backup.exe"
            !insertmacro ${un}CheckFile "backup\setup_backup.exe"
        ${EndIf}
        ${If} $LockedFile == ""
            Return
        ${EndIf}
        MessageBox MB_RETRYCANCEL|MB_ICONEXCLAMATION "$(InUse)" /SD IDCANCEL IDRETRY again
        SetErrorLevel ${EXIT_IN_USE}
        Abort "$LockedFile"
        again:
    ${Loop}
FunctionEnd
!macroend
!insertmacro DefineEndingPrograms ""
!insertmacro DefineEndingPrograms "un."

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

; Files that an earlier version brought and this one no longer has, and folders that they leave empty.
Function RemoveOutdatedFiles
    StrCpy $0 0
    ${Do}
        EnumRegValue $1 HKLM "${FILES_KEY}" $0
        ${If} $1 == ""
            Return
        ${EndIf}
        ReadRegStr $2 HKLM "${FILES_KEY}" $1
        ${If} $2 == "${FILESTAMP}"
            IntOp $0 $0 + 1
        ${Else}
            Delete /REBOOTOK "$INSTDIR\$1"
            DeleteRegValue HKLM "${FILES_KEY}" $1
            ${DoUntil} $1 == ""
                ${GetParent} $1 $1
                RMDir "$INSTDIR\$1"
            ${Loop}
        ${EndIf}
    ${Loop}
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
        SetErrorLevel ${EXIT_NO_COPY}
    ${EndIf}
FunctionEnd

Section "Program"
    Call EndPrograms
    SetOutPath "$INSTDIR"
    SetOverwrite on
    File /r /x config "${DIST}/*.*" ; without the curves of whoever tried the program out there
    File "/oname=qor_netcfg.fsc" "${NETCFG}"
    Call KeepPackage
    WriteUninstaller "$INSTDIR\uninst.exe"
    !insertmacro ForEachInstalledFile RecordFile
    Call RemoveOutdatedFiles

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
    Call un.EndPrograms
    !insertmacro ForEachInstalledFile DeleteFile
    !insertmacro RemoveInstalledFolders
    Delete "$INSTDIR\qor_netcfg.fsc"
    Delete "$INSTDIR\backup\setup_backup.exe"
    RMDir "$INSTDIR\backup"
    ${If} ${FileExists} "$INSTDIR\config\eqs.bin"
        MessageBox MB_YESNO|MB_ICONQUESTION "$(KeepCurves)" /SD IDNO IDYES keep
        Delete "$INSTDIR\config\eqs.bin"
        keep:
    ${EndIf}
    Delete "$INSTDIR\config\eqs.bin.new"
    RMDir "$INSTDIR\config"
    Delete "$INSTDIR\uninst.exe"
    RMDir "$INSTDIR"
    Delete "$TEMP\qor_setup.exe" ; what the panel leaves there: a downloaded installer and the log
    Delete "$TEMP\QorSoundKit.log"

    Delete "$SMPROGRAMS\${PRODUCT}.lnk"
    Delete "$DESKTOP\${PRODUCT}.lnk"
    DeleteRegKey HKLM "${UNINSTALL_KEY}"
    DeleteRegKey HKLM "${PRODUCT_KEY}"
    DeleteRegKey HKCU "${PRODUCT_KEY}"
SectionEnd
