; The registry entries that setup makes with the installed programs, and that the uninstaller removes.

!define UNIT_CLASS "{5C7A1E20-93B4-4D0E-8A61-2F0D7B9C41E3}"
!define TYPE_LIBRARY "{5C7A1E24-93B4-4D0E-8A61-2F0D7B9C41E3}"
!define APPLICATION "{5C7A1E25-93B4-4D0E-8A61-2F0D7B9C41E3}"
!define ENGINE_CLASS "{99A86BC0-7BAD-4400-A453-9014CFBBF8C5}"
!define MODEL_TYPE "SolvaneUnitOperationModel"
!define SETTINGS "Software\SolvaneUO"
!define CLASSES "Software\Classes"

; A Windows without 32-bit programs has no regsvr32 for them.
!define REGSVR "$SYSDIR\regsvr32.exe"
!define REGSVR32 "$WINDIR\SysWOW64\regsvr32.exe"

!macro refreshFileTypes
  System::Call 'shell32::SHChangeNotify(i 0x08000000, i 0, p 0, p 0)'
!macroend

!macro registerModule REGSVR MODULE
  DetailPrint "Registering ${MODULE}"
  ExecWait '"${REGSVR}" /s "$INSTDIR\${MODULE}"' $1
  ${If} $1 <> 0
    StrCpy $2 "Could not register ${MODULE}: regsvr32 ended with code $1."
  ${EndIf}
!macroend

; The module reads the scope from a setting of the user, which is restored afterwards.
Function registerUnit
  ClearErrors
  ReadRegStr $0 HKCU "${SETTINGS}" "CurrentUser"
  ${If} ${Errors}
    StrCpy $0 none
  ${EndIf}
  ${If} $MultiUser.InstallMode == CurrentUser
    WriteRegStr HKCU "${SETTINGS}" "CurrentUser" 1
  ${ElseIf} $0 != none
    WriteRegStr HKCU "${SETTINGS}" "CurrentUser" 0
  ${EndIf}
  StrCpy $2 ""
  !insertmacro registerModule "${REGSVR}" SolvaneUnitOperation.dll
!if ${SYSTEM} == win64
  ${If} ${FileExists} "${REGSVR32}"
    !insertmacro registerModule "${REGSVR32}" SolvaneUnitOperation32.dll
  ${EndIf}
!endif
  ${If} $0 == none
    DeleteRegValue HKCU "${SETTINGS}" "CurrentUser"
    DeleteRegKey /ifempty HKCU "${SETTINGS}"
  ${Else}
    WriteRegStr HKCU "${SETTINGS}" "CurrentUser" $0
  ${EndIf}
  ${If} $2 != ""
    !insertmacro failAndRemove ${EXIT_NOT_REGISTERED} "$2 ${NOTHING_LEFT}"
  ${EndIf}
  ; The CAPE-OPEN type library is for all users; one that a simulator has installed stays.
  ${If} $MultiUser.InstallMode == AllUsers
    nsExec::Exec '"$INSTDIR\SolvaneHost.exe" register-interfaces'
    Pop $0
  ${EndIf}
  !insertmacro refreshFileTypes
FunctionEnd

; Applies a macro also to the registry of 32-bit programs. Windows shares most classes between both.
!macro inBothViews MACRO
  !if ${SYSTEM} == win64
    SetRegView 32
    !insertmacro ${MACRO}
    SetRegView 64
  !endif
  !insertmacro ${MACRO}
!macroend

!macro removeUnitKeys
  DeleteRegKey SHCTX "${CLASSES}\CLSID\${UNIT_CLASS}"
  DeleteRegKey SHCTX "${CLASSES}\SolvaneUnitOperation.SolvaneUnitOp.1"
  DeleteRegKey SHCTX "${CLASSES}\SolvaneUnitOperation.SolvaneUnitOp"
  DeleteRegKey SHCTX "${CLASSES}\AppID\${APPLICATION}"
  DeleteRegKey SHCTX "${CLASSES}\AppID\SolvaneUnitOperation.DLL"
  DeleteRegKey SHCTX "${CLASSES}\TypeLib\${TYPE_LIBRARY}"
  DeleteRegKey SHCTX "${CLASSES}\${MODEL_TYPE}"
  ReadRegStr $0 SHCTX "${CLASSES}\.SVM" ""
  ${If} $0 == "${MODEL_TYPE}"
    DeleteRegValue SHCTX "${CLASSES}\.SVM" ""
    DeleteRegKey /ifempty SHCTX "${CLASSES}\.SVM"
  ${EndIf}
!macroend

; The module itself can only unregister what is registered for all users, and leaves the command of the model type. If
; another copy has been registered since, its registration stays.
Function un.unregisterUnit
  ReadRegStr $0 SHCTX "${CLASSES}\CLSID\${UNIT_CLASS}\InprocServer32" ""
  ${If} $0 != "$INSTDIR\SolvaneUnitOperation.dll"
  ${AndIf} $0 != ""
    Return
  ${EndIf}
  ${If} $MultiUser.InstallMode == AllUsers
    nsExec::Exec '"$INSTDIR\SolvaneHost.exe" register-interfaces --unregister'
    Pop $0
    ExecWait '"${REGSVR}" /u /s "$INSTDIR\SolvaneUnitOperation.dll"'
    !if ${SYSTEM} == win64
      ${If} ${FileExists} "${REGSVR32}"
        ExecWait '"${REGSVR32}" /u /s "$INSTDIR\SolvaneUnitOperation32.dll"'
      ${EndIf}
    !endif
  ${Else}
    ; Of both word sizes.
    System::Call 'oleaut32::UnRegisterTypeLibForUser(g "${TYPE_LIBRARY}", i 1, i 0, i 0, i 3)'
    System::Call 'oleaut32::UnRegisterTypeLibForUser(g "${TYPE_LIBRARY}", i 1, i 0, i 0, i 1)'
  ${EndIf}
  !insertmacro inBothViews removeUnitKeys
  !insertmacro refreshFileTypes
FunctionEnd

; Keys that may have been made only for the unit.
!macro removeEmptyKeys
  DeleteRegKey /ifempty HKCU "${CLASSES}\CLSID"
  DeleteRegKey /ifempty HKCU "${CLASSES}\AppID"
  DeleteRegKey /ifempty HKCU "${CLASSES}\TypeLib"
!macroend

Function un.removeEmptyKeys
  ${If} $MultiUser.InstallMode == CurrentUser
    !insertmacro inBothViews removeEmptyKeys
    DeleteRegKey /ifempty HKCU "Software\Microsoft\Windows\CurrentVersion\Uninstall"
  ${EndIf}
FunctionEnd

Function registerOctave
  DetailPrint "Registering the Octave engine"
  StrCpy $0 ""
  ${If} $MultiUser.InstallMode == CurrentUser
    StrCpy $0 /PerUser
  ${EndIf}
  ExecWait '"$INSTDIR\OctaveAutomationServer.exe" /RegServer $0' $1
  ${If} $1 <> 0
    !insertmacro failAndRemove ${EXIT_NOT_REGISTERED} "The Octave engine could not be registered: \
OctaveAutomationServer.exe ended with $1. ${NOTHING_LEFT}"
  ${EndIf}
FunctionEnd

; Octave may also be installed later, so that its absence is no failure.
Function findOctave
  Push $0
  DetailPrint "Looking for GNU Octave"
  nsExec::ExecToLog '"$INSTDIR\OctaveAutomationServer.exe" /FindOctave'
  Pop $0
  ${If} $0 != 0
    StrCpy $0 "No GNU Octave that works was found on this computer. Install one from octave.org; the unit then finds it."
    ${If} ${Silent}
      Push $0
      Call say
    ${Else}
      MessageBox MB_OK|MB_ICONEXCLAMATION $0
    ${EndIf}
  ${EndIf}
  Pop $0
FunctionEnd

Function un.unregisterOctave
  ReadRegStr $0 SHCTX "${CLASSES}\CLSID\${ENGINE_CLASS}\LocalServer32" ""
  ${If} $0 != '"$INSTDIR\OctaveAutomationServer.exe"'
    Return
  ${EndIf}
  StrCpy $0 ""
  ${If} $MultiUser.InstallMode == CurrentUser
    StrCpy $0 /PerUser
  ${EndIf}
  ExecWait '"$INSTDIR\OctaveAutomationServer.exe" /UnregServer $0'
FunctionEnd

; The unit copies the gateway to where Matlab loads it from: $TEMP\SolvaneUnitMEX and Matlab's ProgID.
Function un.removeGatewayCopies
  FindFirst $0 $1 "$TEMP\SolvaneUnitMEX*"
  ${DoWhile} $1 != ""
    Delete "$TEMP\$1\CapeOpenUnitMex.dll"
    Delete "$TEMP\$1\CapeOpenUnitMex.mexw32"
    Delete "$TEMP\$1\CapeOpenUnitMex.mexw64"
    RMDir "$TEMP\$1"
    FindNext $0 $1
  ${Loop}
  FindClose $0
FunctionEnd
