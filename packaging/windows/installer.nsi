; The installer of the Windows program. Given by the script that runs makensis:
;   VERSION   2.0.1
;   STAGE     the folder with what is installed: hct.exe, Modems, licences
;   OUTPUT    the installer's path

Unicode true
Target amd64-unicode
SetCompressor /SOLID lzma
ManifestDPIAware true
ManifestSupportedOS all

!define PRODUCT "Control Equipo HCT"
!define UNINSTALL_KEY "Software\Microsoft\Windows\CurrentVersion\Uninstall\ControlEquipoHCT"

!define MULTIUSER_EXECUTIONLEVEL Highest
!define MULTIUSER_MUI
!define MULTIUSER_INSTALLMODE_COMMANDLINE
!define MULTIUSER_USE_PROGRAMFILES64
!define MULTIUSER_INSTALLMODE_INSTDIR "Control Equipo HCT"
!define MULTIUSER_INSTALLMODE_INSTDIR_REGISTRY_KEY "${UNINSTALL_KEY}"
!define MULTIUSER_INSTALLMODE_INSTDIR_REGISTRY_VALUENAME "InstallLocation"
!define MULTIUSER_INSTALLMODE_DEFAULT_REGISTRY_KEY "${UNINSTALL_KEY}"
!define MULTIUSER_INSTALLMODE_DEFAULT_REGISTRY_VALUENAME "InstallLocation"

!include MultiUser.nsh
!include MUI2.nsh
!include WinVer.nsh
!include FileFunc.nsh

Name "${PRODUCT}"
OutFile "${OUTPUT}"
BrandingText "${PRODUCT} ${VERSION}"
VIProductVersion "${VERSION}.0"
VIAddVersionKey /LANG=0 "ProductName" "${PRODUCT}"
VIAddVersionKey /LANG=0 "FileDescription" "Instalador de ${PRODUCT}"
VIAddVersionKey /LANG=0 "FileVersion" "${VERSION}"
VIAddVersionKey /LANG=0 "LegalCopyright" "Contiene Qt (LGPL 3), véase LICENCIAS.txt"

!define MUI_ICON "${STAGE}/hct.ico"
!define MUI_UNICON "${STAGE}/hct.ico"
!define MUI_ABORTWARNING
!define MUI_FINISHPAGE_RUN
!define MUI_FINISHPAGE_RUN_FUNCTION runProgram

!insertmacro MUI_PAGE_LICENSE "${STAGE}/LICENCIAS.txt"
!insertmacro MULTIUSER_PAGE_INSTALLMODE
!insertmacro MUI_PAGE_DIRECTORY
!insertmacro MUI_PAGE_INSTFILES
!insertmacro MUI_PAGE_FINISH
!insertmacro MUI_UNPAGE_CONFIRM
!insertmacro MUI_UNPAGE_INSTFILES
!insertmacro MUI_LANGUAGE "Spanish"

Function .onInit
    ${IfNot} ${AtLeastWin10}
        MessageBox MB_OK|MB_ICONSTOP "${PRODUCT} necesita Windows 10 o posterior." /SD IDOK
        Abort
    ${EndIf}
    !insertmacro MULTIUSER_INIT
FunctionEnd

Function un.onInit
    !insertmacro MULTIUSER_UNINIT
FunctionEnd

; From the folder that holds Modems, as the start-menu entry does.
Function runProgram
    SetOutPath "$INSTDIR"
    Exec '"$INSTDIR\hct.exe"'
FunctionEnd

Section
    SetOutPath "$INSTDIR"
    File "${STAGE}/hct.exe"
    File "${STAGE}/hct.ico"
    File "${STAGE}/*.txt"
    SetOutPath "$INSTDIR\Modems"
    File "${STAGE}/Modems/*.mdm"

    ; The working folder of a shortcut is the output path of the moment.
    SetOutPath "$INSTDIR"
    CreateShortcut "$SMPROGRAMS\${PRODUCT}.lnk" "$INSTDIR\hct.exe" "" "$INSTDIR\hct.ico"

    WriteUninstaller "$INSTDIR\desinstalar.exe"
    WriteRegStr SHCTX "${UNINSTALL_KEY}" "DisplayName" "${PRODUCT}"
    WriteRegStr SHCTX "${UNINSTALL_KEY}" "DisplayVersion" "${VERSION}"
    WriteRegStr SHCTX "${UNINSTALL_KEY}" "DisplayIcon" "$INSTDIR\hct.ico"
    WriteRegStr SHCTX "${UNINSTALL_KEY}" "InstallLocation" "$INSTDIR"
    WriteRegStr SHCTX "${UNINSTALL_KEY}" "UninstallString" '"$INSTDIR\desinstalar.exe" /$MultiUser.InstallMode'
    WriteRegStr SHCTX "${UNINSTALL_KEY}" "QuietUninstallString" '"$INSTDIR\desinstalar.exe" /$MultiUser.InstallMode /S'
    WriteRegDWORD SHCTX "${UNINSTALL_KEY}" "NoModify" 1
    WriteRegDWORD SHCTX "${UNINSTALL_KEY}" "NoRepair" 1
    ${GetSize} "$INSTDIR" "/S=0K" $0 $1 $2
    WriteRegDWORD SHCTX "${UNINSTALL_KEY}" "EstimatedSize" $0
SectionEnd

; Takes away what the installer brought and nothing else: the operator's settings stay in the
; registry, and so do scripts and programme files that were put beside ours.
Section "Uninstall"
    Delete "$SMPROGRAMS\${PRODUCT}.lnk"
    Delete "$INSTDIR\hct.exe"
    Delete "$INSTDIR\hct.ico"
    Delete "$INSTDIR\LICENCIAS.txt"
    Delete "$INSTDIR\LGPL-3.txt"
    Delete "$INSTDIR\GPL-3.txt"
    Delete "$INSTDIR\Qt-copyright.txt"
    Delete "$INSTDIR\MinGW-copyright.txt"
    !include "${STAGE}/uninstall-modems.nsh"
    RMDir "$INSTDIR\Modems"
    Delete "$INSTDIR\desinstalar.exe"
    RMDir "$INSTDIR"
    DeleteRegKey SHCTX "${UNINSTALL_KEY}"
SectionEnd
