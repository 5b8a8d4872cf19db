; Puts the installation folder into Path, where a console looks for programs, and takes it out again:
; into that of the machine after an installation for all users, into that of the user otherwise.
;
; A variable of this installer holds 1023 characters, and Path is often longer. Writing back what was
; read into such a variable would cut it. So the text stays in memory of the system.

!define PATH_BYTES 65536

; What both functions begin with: the key in $0, in $1 memory with ";" and the text and ";", only ";"
; when there is no text, in $2 the text's type. $3 is not 0 when Path cannot be read.
!macro readSearchPath
    ${If} $MultiUser.InstallMode == "AllUsers"
        StrCpy $4 -2147483646 ; HKEY_LOCAL_MACHINE
        StrCpy $5 "SYSTEM\CurrentControlSet\Control\Session Manager\Environment"
    ${Else}
        StrCpy $4 -2147483647 ; HKEY_CURRENT_USER
        StrCpy $5 "Environment"
    ${EndIf}
    System::Alloc ${PATH_BYTES}
    Pop $1
    System::Call '*$1(&w1 ";")'
    IntPtrOp $6 $1 + 2
    ; 3 is the right to read and write values.
    System::Call 'advapi32::RegCreateKeyExW(p r4, w r5, i 0, p 0, i 0, i 3, p 0, *p .r0, p 0) i .r3'
    ${If} $3 == 0
        ; Half of the memory, so that there is space for the folder.
        System::Call 'advapi32::RegQueryValueExW(p r0, w "Path", p 0, *i .r2, p r6, *i 32768) i .r3'
        ${If} $3 == 2
            StrCpy $2 2 ; a new Path is a REG_EXPAND_SZ
            StrCpy $3 0
        ${ElseIf} $3 == 0
        ${AndIf} $2 != 1
        ${AndIf} $2 != 2
            StrCpy $3 13 ; no text
        ${EndIf}
        System::Call 'kernel32::lstrlenW(p r6) i .r4'
        ${If} $4 > 0
            System::Call 'kernel32::lstrcatW(p r1, w ";")'
        ${EndIf}
    ${EndIf}
!macroend

; What both functions end with: stores the text when $5 is "changed", and tells those that run.
!macro storeSearchPath
    ${If} $5 == "changed"
        System::Call 'kernel32::lstrlenW(p r1) i .r4'
        IntPtrOp $6 $1 + 2
        ${If} $4 > 1
            ; The last ";" becomes the end of the text, which begins after the first one.
            IntOp $4 $4 - 1
            IntOp $4 $4 * 2
            IntPtrOp $7 $1 + $4
            System::Call '*$7(&i2 0)'
            System::Call 'advapi32::RegSetValueExW(p r0, w "Path", i 0, i r2, p r6, i r4) i .r3'
        ${Else}
            System::Call 'advapi32::RegDeleteValueW(p r0, w "Path") i .r3'
        ${EndIf}
        SendMessage ${HWND_BROADCAST} ${WM_SETTINGCHANGE} 0 "STR:Environment" /TIMEOUT=5000
    ${EndIf}
    System::Call 'advapi32::RegCloseKey(p r0)'
    System::Free $1
!macroend

Function addToSearchPath
    !insertmacro readSearchPath
    StrCpy $5 ""
    ${If} $3 == 0
        System::Call 'shlwapi::StrStrIW(p r1, w ";$INSTDIR;") p .r4'
        ${If} $4 == 0
            System::Call 'kernel32::lstrcatW(p r1, w "$INSTDIR;")'
            StrCpy $5 "changed"
        ${EndIf}
    ${EndIf}
    !insertmacro storeSearchPath
    ${If} $3 != 0
        MessageBox MB_OK|MB_ICONEXCLAMATION \
            "No se ha podido añadir $INSTDIR a la variable Path (error $3)." /SD IDOK
    ${EndIf}
FunctionEnd

Function un.removeFromSearchPath
    !insertmacro readSearchPath
    StrCpy $5 ""
    ${If} $3 == 0
        System::Call 'shlwapi::StrStrIW(p r1, w ";$INSTDIR;") p .r4'
        ${If} $4 != 0
            ; What follows the folder and its ";" moves to where the folder begins.
            IntPtrOp $6 $4 + 2
            StrLen $7 "$INSTDIR;"
            IntOp $7 $7 * 2
            IntPtrOp $7 $6 + $7
            System::Call 'kernel32::lstrlenW(p r7) i .r8'
            IntOp $8 $8 + 1
            IntOp $8 $8 * 2
            System::Call 'kernel32::RtlMoveMemory(p r6, p r7, p r8)'
            StrCpy $5 "changed"
        ${EndIf}
    ${EndIf}
    !insertmacro storeSearchPath
FunctionEnd
