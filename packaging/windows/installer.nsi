; The installer of the Windows program. Given by the script that runs makensis:
;   VERSION   2.0.1
;   STAGE     the folder with the installer's parts, where it is put itself

Unicode true
Target amd64-unicode
SetCompressor /SOLID lzma
ManifestDPIAware true
ManifestSupportedOS all
; A file that cannot be written ends the installation, a silent one too.
AllowSkipFiles off

!define PRODUCT "Control Equipo HCT"
!define EDITOR "Editor de programas HCT"
!define MANUAL "Manual de HCT"
!define FILES "${STAGE}/${PRODUCT}"
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
!include Sections.nsh
!include search-path.nsh
!include file-type.nsh

Name "${PRODUCT}"
OutFile "${STAGE}/hct-setup.exe"
BrandingText "${PRODUCT} ${VERSION}"
VIProductVersion "${VERSION}.0"
VIAddVersionKey /LANG=0 "CompanyName" "Quorvex"
VIAddVersionKey /LANG=0 "ProductName" "${PRODUCT}"
VIAddVersionKey /LANG=0 "FileDescription" "Instalador de ${PRODUCT}"
VIAddVersionKey /LANG=0 "FileVersion" "${VERSION}"
VIAddVersionKey /LANG=0 "LegalCopyright" "Contiene Qt (LGPL 3), véase LICENCIAS.txt"

!define MUI_ICON "${STAGE}/hct.ico"
!define MUI_UNICON "${STAGE}/hct.ico"
!define MUI_WELCOMEFINISHPAGE_BITMAP "${STAGE}/last-page.bmp"
!define MUI_ABORTWARNING
!define MUI_FINISHPAGE_RUN
!define MUI_FINISHPAGE_RUN_FUNCTION runProgram

!insertmacro MUI_PAGE_LICENSE "${FILES}/licencias/LICENCIAS.txt"

!define MUI_PAGE_HEADER_TEXT "Elegir los usuarios"
!define MUI_PAGE_HEADER_SUBTEXT "¿Quién va a usar ${PRODUCT} en este ordenador?"
!define MULTIUSER_INSTALLMODEPAGE_TEXT_TOP "Elija si desea instalar ${PRODUCT} solo para usted o para todos los usuarios de este ordenador. $(^ClickNext)"
!define MULTIUSER_INSTALLMODEPAGE_TEXT_ALLUSERS "Instalar para todos los usuarios de este ordenador"
!define MULTIUSER_INSTALLMODEPAGE_TEXT_CURRENTUSER "Instalar solo para mí"
!insertmacro MULTIUSER_PAGE_INSTALLMODE

!define MUI_COMPONENTSPAGE_SMALLDESC
!insertmacro MUI_PAGE_COMPONENTS
!insertmacro MUI_PAGE_DIRECTORY
!insertmacro MUI_PAGE_INSTFILES
!insertmacro MUI_PAGE_FINISH
!insertmacro MUI_UNPAGE_CONFIRM
!insertmacro MUI_UNPAGE_INSTFILES
!insertmacro MUI_LANGUAGE "Spanish"

Function un.onInit
    !insertmacro MULTIUSER_UNINIT
FunctionEnd

; Starts the program with the user's rights, also when the installer has those of an administrator: the
; desktop's Explorer opens the start-menu entry, which starts it in the folder that holds Modems.
Function runProgram
    Exec '"$WINDIR\explorer.exe" "$SMPROGRAMS\${PRODUCT}.lnk"'
FunctionEnd

; A running program can neither be replaced nor deleted, so it must be closed before anything changes.
!macro askToClose PROGRAM NAME
    !define AGAIN "tryAgain${__LINE__}"
    ${AGAIN}:
    ${If} ${FileExists} "$INSTDIR\${PROGRAM}"
        ClearErrors
        FileOpen $0 "$INSTDIR\${PROGRAM}" a
        ${If} ${Errors}
            MessageBox MB_RETRYCANCEL|MB_ICONEXCLAMATION \
                "${NAME} está abierto. Guarde lo que esté haciendo, ciérrelo y pulse Reintentar.$\r$\n$\r$\nSi no lo está, el archivo $INSTDIR\${PROGRAM} no se puede modificar." \
                /SD IDCANCEL IDRETRY ${AGAIN}
            SetErrorLevel 2
            Abort
        ${EndIf}
        FileClose $0
    ${EndIf}
    !undef AGAIN
!macroend

; Removes the modem scripts that an installation brought and that nobody has changed since.
; Modems\originales has them as they were installed.
!macro removeScripts PREFIX
Function ${PREFIX}removeScripts
    FindFirst $0 $1 "$INSTDIR\Modems\originales\*.mdm"
    ${DoUntil} $1 == ""
        FileOpen $2 "$INSTDIR\Modems\$1" r
        FileOpen $3 "$INSTDIR\Modems\originales\$1" r
        ${Do}
            FileReadByte $2 $4
            FileReadByte $3 $5
            ${If} $4 != $5
                ${ExitDo}
            ${EndIf}
        ${LoopUntil} $5 == ""
        FileClose $2
        FileClose $3
        ${If} $4 == $5
            Delete "$INSTDIR\Modems\$1"
        ${EndIf}
        Delete "$INSTDIR\Modems\originales\$1"
        FindNext $0 $1
    ${Loop}
    FindClose $0
FunctionEnd
!macroend
!insertmacro removeScripts ""
!insertmacro removeScripts "un."

Section
    !insertmacro askToClose "hct.exe" "${PRODUCT}"
    !insertmacro askToClose "hct-editor.exe" "${EDITOR}"
    !insertmacro askToClose "hctctl.exe" "hctctl"
    SetOutPath "$INSTDIR"
    File "${FILES}/hct.exe"
    File "${FILES}/hct-editor.exe"
    File "${FILES}/hctctl.exe"
    File "${FILES}/manual.html"
    File "${FILES}/manual.pdf"
    File "${STAGE}/hct.ico"
    SetOutPath "$INSTDIR\licencias"
    File "${FILES}/licencias/*.txt"

    ; Scripts that the operator changed stay as they are. The new ones are in Modems\originales.
    Call removeScripts
    SetOutPath "$INSTDIR\Modems"
    SetOverwrite off
    File "${FILES}/Modems/*.mdm"
    SetOverwrite on
    SetOutPath "$INSTDIR\Modems\originales"
    File "${FILES}/Modems/*.mdm"

    ; A shortcut takes the current output path as its working folder.
    SetOutPath "$INSTDIR"
    CreateShortcut "$SMPROGRAMS\${PRODUCT}.lnk" "$INSTDIR\hct.exe" "" "$INSTDIR\hct.ico"
    CreateShortcut "$SMPROGRAMS\${EDITOR}.lnk" "$INSTDIR\hct-editor.exe"
    CreateShortcut "$SMPROGRAMS\${MANUAL}.lnk" "$INSTDIR\manual.html"

    WriteUninstaller "$INSTDIR\desinstalar.exe"
    WriteRegStr SHCTX "${UNINSTALL_KEY}" "DisplayName" "${PRODUCT}"
    WriteRegStr SHCTX "${UNINSTALL_KEY}" "DisplayVersion" "${VERSION}"
    WriteRegStr SHCTX "${UNINSTALL_KEY}" "Publisher" "Quorvex"
    WriteRegStr SHCTX "${UNINSTALL_KEY}" "DisplayIcon" "$INSTDIR\hct.ico"
    WriteRegStr SHCTX "${UNINSTALL_KEY}" "InstallLocation" "$INSTDIR"
    WriteRegStr SHCTX "${UNINSTALL_KEY}" "UninstallString" '"$INSTDIR\desinstalar.exe" /$MultiUser.InstallMode'
    WriteRegStr SHCTX "${UNINSTALL_KEY}" "QuietUninstallString" '"$INSTDIR\desinstalar.exe" /$MultiUser.InstallMode /S'
    WriteRegDWORD SHCTX "${UNINSTALL_KEY}" "NoModify" 1
    WriteRegDWORD SHCTX "${UNINSTALL_KEY}" "NoRepair" 1
    ${GetSize} "$INSTDIR" "/S=0K" $0 $1 $2
    WriteRegDWORD SHCTX "${UNINSTALL_KEY}" "EstimatedSize" $0
SectionEnd

; Once chosen these stay over an update that does not choose them again; uninstalling takes them away.
Section /o "Usar hctctl en cualquier consola" inSearchPath
    Call addToSearchPath
SectionEnd
Section /o "Abrir los archivos .hct con el editor" withFileType
    Call addFileType
SectionEnd
!insertmacro MUI_FUNCTION_DESCRIPTION_BEGIN
    !insertmacro MUI_DESCRIPTION_TEXT ${inSearchPath} "Añade la carpeta del programa a la variable Path, para que la orden hctctl se encuentre en cualquier consola y en las tareas programadas."
    !insertmacro MUI_DESCRIPTION_TEXT ${withFileType} "Un doble clic en un archivo de programa (.hct) lo abre en ${EDITOR}."
!insertmacro MUI_FUNCTION_DESCRIPTION_END

Function .onInit
    ; What Qt 6.4 asks for.
    ${IfNot} ${AtLeastWin10}
    ${OrIfNot} ${AtLeastBuild} 17763
        MessageBox MB_OK|MB_ICONSTOP "${PRODUCT} necesita Windows 10, versión 1809 o posterior." /SD IDOK
        SetErrorLevel 2
        Abort
    ${EndIf}
    !insertmacro MULTIUSER_INIT
    ; A silent installation has no page on which to choose.
    ${GetParameters} $0
    ClearErrors
    ${GetOptions} $0 "/PATH" $1
    ${IfNot} ${Errors}
        !insertmacro SelectSection ${inSearchPath}
    ${EndIf}
    ClearErrors
    ${GetOptions} $0 "/HCT" $1
    ${IfNot} ${Errors}
        !insertmacro SelectSection ${withFileType}
    ${EndIf}
FunctionEnd

; Removes what the installer brought and nothing else. The operator's settings stay in the registry;
; scripts and programme files that were added or changed stay in their folders.
Section "Uninstall"
    !insertmacro askToClose "hct.exe" "${PRODUCT}"
    !insertmacro askToClose "hct-editor.exe" "${EDITOR}"
    !insertmacro askToClose "hctctl.exe" "hctctl"
    Delete "$SMPROGRAMS\${PRODUCT}.lnk"
    Delete "$SMPROGRAMS\${EDITOR}.lnk"
    Delete "$SMPROGRAMS\${MANUAL}.lnk"
    Call un.removeFromSearchPath
    Call un.removeFileType
    Delete "$INSTDIR\hct.exe"
    Delete "$INSTDIR\hct-editor.exe"
    Delete "$INSTDIR\hctctl.exe"
    Delete "$INSTDIR\manual.html"
    Delete "$INSTDIR\manual.pdf"
    Delete "$INSTDIR\hct.ico"
    Delete "$INSTDIR\licencias\LICENCIAS.txt"
    Delete "$INSTDIR\licencias\LGPL-3.txt"
    Delete "$INSTDIR\licencias\GPL-3.txt"
    Delete "$INSTDIR\licencias\CLI11-copyright.txt"
    Delete "$INSTDIR\licencias\Qt-copyright.txt"
    Delete "$INSTDIR\licencias\Qt-translations-copyright.txt"
    Delete "$INSTDIR\licencias\MinGW-copyright.txt"
    Delete "$INSTDIR\licencias\GCC-copyright.txt"
    RMDir "$INSTDIR\licencias"
    Call un.removeScripts
    RMDir "$INSTDIR\Modems\originales"
    RMDir "$INSTDIR\Modems"
    Delete "$INSTDIR\desinstalar.exe"
    RMDir "$INSTDIR"
    DeleteRegKey SHCTX "${UNINSTALL_KEY}"
SectionEnd
