; Lets Explorer open programme files in the editor, and takes that back: for all users or for one, as the
; program is installed. What opened them before opens them again after uninstalling.

!define FILE_TYPE "ControlEquipoHCT.Programa"
!define FILE_TYPE_BEFORE "ControlEquipoHCT.Antes"

; Tells Explorer that file types have changed (SHCNE_ASSOCCHANGED).
!macro tellFileTypes
    System::Call 'shell32::SHChangeNotify(i 0x08000000, i 0, p 0, p 0)'
!macroend

Function addFileType
    WriteRegStr SHCTX "Software\Classes\${FILE_TYPE}" "" "Programa de reloj HCT"
    WriteRegStr SHCTX "Software\Classes\${FILE_TYPE}\DefaultIcon" "" "$INSTDIR\hct-editor.exe,0"
    WriteRegStr SHCTX "Software\Classes\${FILE_TYPE}\shell\open\command" "" '"$INSTDIR\hct-editor.exe" "%1"'
    WriteRegStr SHCTX "Software\Classes\.hct\OpenWithProgids" "${FILE_TYPE}" ""
    ReadRegStr $0 SHCTX "Software\Classes\.hct" ""
    ${If} $0 != "${FILE_TYPE}"
        WriteRegStr SHCTX "Software\Classes\.hct" "${FILE_TYPE_BEFORE}" $0
        WriteRegStr SHCTX "Software\Classes\.hct" "" "${FILE_TYPE}"
    ${EndIf}
    !insertmacro tellFileTypes
FunctionEnd

Function un.removeFileType
    ReadRegStr $0 SHCTX "Software\Classes\.hct" ""
    ${If} $0 == "${FILE_TYPE}"
        ReadRegStr $0 SHCTX "Software\Classes\.hct" "${FILE_TYPE_BEFORE}"
        ${If} $0 == ""
            DeleteRegValue SHCTX "Software\Classes\.hct" ""
        ${Else}
            WriteRegStr SHCTX "Software\Classes\.hct" "" $0
        ${EndIf}
    ${EndIf}
    DeleteRegValue SHCTX "Software\Classes\.hct" "${FILE_TYPE_BEFORE}"
    DeleteRegValue SHCTX "Software\Classes\.hct\OpenWithProgids" "${FILE_TYPE}"
    DeleteRegKey /ifempty SHCTX "Software\Classes\.hct\OpenWithProgids"
    ReadRegStr $0 SHCTX "Software\Classes\.hct" ""
    ${If} $0 == ""
        ; Only without keys and values of others.
        DeleteRegKey /ifempty /ifnovalues SHCTX "Software\Classes\.hct"
    ${EndIf}
    DeleteRegKey SHCTX "Software\Classes\${FILE_TYPE}"
    !insertmacro tellFileTypes
FunctionEnd
