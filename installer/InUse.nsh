; Refuses to replace files that a program has loaded, which Windows write-protects.

!define SHARING_VIOLATION 32
!define SHARE_ALL 7
!define READ_AND_WRITE 0xC0000000
!define OPEN_EXISTING 3
!define QUERY_AND_READ 0x410 ; the rights for listing a process's modules
!define ALL_MODULES 3 ; of both word sizes

!macro defineInUse UN

; In: a file. Out: "1" if a program has loaded it, else "0".
Function ${UN}isInUse
  System::Store S
  Pop $0
  StrCpy $2 0
  ${If} ${FileExists} "$0"
    System::Call 'kernel32::CreateFileW(w r0, i ${READ_AND_WRITE}, i ${SHARE_ALL}, p 0, i ${OPEN_EXISTING}, i 0, p 0) p.r1 ?e'
    Pop $2
    System::Call 'kernel32::CloseHandle(p r1)'
  ${EndIf}
  ${If} $2 = ${SHARING_VIOLATION}
    Push 1
  ${Else}
    Push 0
  ${EndIf}
  System::Store L
FunctionEnd

; In: a process id, a file's name. Out: the process's program if it has loaded a file with that name, else "".
Function ${UN}programWith
  System::Store S
  Pop $0
  Pop $1
  StrLen $2 $1
  StrCpy $R9 ""
  System::Call 'kernel32::OpenProcess(i ${QUERY_AND_READ}, i 0, i r0) p.r3'
  ${If} $3 P<> 0
    System::Alloc 65536
    Pop $4
    System::Call 'kernel32::K32EnumProcessModulesEx(p r3, p r4, i 65536, *i .r5, i ${ALL_MODULES}) i.r6'
    ${If} $6 <> 0
      IntOp $5 $5 / ${NSIS_PTR_SIZE}
      StrCpy $7 $4
      ${DoWhile} $5 > 0
        System::Call '*$7(p .r8)'
        System::Call 'kernel32::K32GetModuleFileNameExW(p r3, p r8, w .r9, i ${NSIS_MAX_STRLEN})'
        StrCpy $8 $9 "" -$2
        ${If} $8 == $1
          System::Call 'kernel32::K32GetModuleFileNameExW(p r3, p 0, w .R9, i ${NSIS_MAX_STRLEN})'
          ${ExitDo}
        ${EndIf}
        IntPtrOp $7 $7 + ${NSIS_PTR_SIZE}
        IntOp $5 $5 - 1
      ${Loop}
    ${EndIf}
    System::Free $4
    System::Call 'kernel32::CloseHandle(p r3)'
  ${EndIf}
  Push $R9
  System::Store L
FunctionEnd

; In: a file's name. Out: the programs that have loaded a file with that name, one a line; without the processes that this
; user has no right to examine.
Function ${UN}programsUsing
  System::Store S
  Pop $0
  StrCpy $R9 ""
  System::Alloc 32768
  Pop $1
  System::Call 'kernel32::K32EnumProcesses(p r1, i 32768, *i .r2)'
  StrCpy $3 $1
  ${DoWhile} $2 > 0
    System::Call '*$3(i .r4)'
    Push $0
    Push $4
    Call ${UN}programWith
    Pop $5
    ${If} $5 != ""
      StrCpy $R9 "$R9$\r$\n$5 (process $4)"
    ${EndIf}
    IntPtrOp $3 $3 + 4
    IntOp $2 $2 - 4
  ${Loop}
  System::Free $1
  Push $R9
  System::Store L
FunctionEnd

; In: a folder of an installation. Ends this program unless its modules and programs can be replaced.
Function ${UN}refuseWhileInUse
  System::Store S
  Pop $0
  ${For} $1 1 4
    ${Select} $1
      ${Case} 1
        StrCpy $2 SolvaneUnitOperation.dll
      ${Case} 2
        StrCpy $2 SolvaneUnitOperation32.dll
      ${Case} 3
        StrCpy $2 SolvaneHost.exe
      ${Case} 4
        StrCpy $2 OctaveAutomationServer.exe
    ${EndSelect}
    ${Do}
      Push "$0\$2"
      Call ${UN}isInUse
      Pop $3
      ${If} $3 = 0
        ${ExitDo}
      ${EndIf}
      Push $2
      Call ${UN}programsUsing
      Pop $4
      ${If} $4 == ""
        StrCpy $4 "$\r$\nA program of another user, or one with more rights than this user"
      ${EndIf}
      StrCpy $4 "$0\$2 is in use. Close the programs that use it, then try again:$\r$\n$4"
      ${If} ${Silent}
        !insertmacro fail ${EXIT_IN_USE} $4
      ${EndIf}
      ${If} ${Cmd} `MessageBox MB_RETRYCANCEL|MB_ICONEXCLAMATION "$4" IDCANCEL`
        SetErrorLevel ${EXIT_IN_USE}
        Abort "$4"
      ${EndIf}
    ${Loop}
  ${Next}
  System::Store L
FunctionEnd
!macroend
!insertmacro defineInUse ""
!insertmacro defineInUse "un."
