; The switches of setup.

Var givenFolder ; of /D=, which the choice of the scope would overwrite
Var octaveSwitch ; "yes", "no", or "" without a switch

!define USAGE "\
$EXEFILE [/S] [/AllUsers | /CurrentUser] [/Octave | /NoOctave] [/D=FOLDER]$\r$\n$\r$\n\
/S$\tno windows$\r$\n\
/AllUsers$\tfor all users; the default for an administrator$\r$\n\
/CurrentUser$\tfor this user only$\r$\n\
/Octave$\tregister GNU Octave in place of Matlab; the default if no Matlab is registered$\r$\n\
/NoOctave$\tdo not register GNU Octave$\r$\n\
/D=FOLDER$\tthe folder of installation; the last switch, without quotes$\r$\n$\r$\n\
Exit codes: 0 done, 1 cancelled, 2 failed, 3 files in use, 4 administrator rights needed, \
5 registration failed, 6 unknown switch."

Function readOptions
  System::Store S
  ${GetParameters} $0
  StrCpy $1 0
  ${Do}
    IntOp $1 $1 + 1
    ClearErrors
    ${WordFind} "$0 " " " "E+$1" $2
    ${If} ${Errors}
      ${ExitDo}
    ${EndIf}
    ${Select} $2
      ${Case4} "/S" "/AllUsers" "/CurrentUser" "/NCRC"
        Nop
      ${Case} "/Octave"
        StrCpy $octaveSwitch yes
      ${Case} "/NoOctave"
        StrCpy $octaveSwitch no
      ${Case2} "/?" "--help"
        MessageBox MB_OK "${USAGE}"
        Quit
      ${Default}
        !insertmacro fail ${EXIT_USAGE} "Unknown switch $2.$\r$\n$\r$\n${USAGE}"
    ${EndSelect}
  ${Loop}
  ClearErrors
  ; MultiUser.nsh would ignore /AllUsers without the right to it.
  ${GetOptions} $0 "/AllUsers" $2
  ${IfNot} ${Errors}
    UserInfo::GetAccountType
    Pop $2
    ${If} $2 != "Admin"
      !insertmacro fail ${EXIT_NOT_ALLOWED} "Only an administrator can install for all users. \
Run setup as administrator, or with /CurrentUser for this user only."
    ${EndIf}
  ${EndIf}
  System::Store L
FunctionEnd

; By the switch, otherwise as in the previous version, otherwise if no Matlab is registered.
Function chooseOctave
  System::Store S
  StrCpy $0 $octaveSwitch
  ${If} $0 == ""
    ClearErrors
    ReadRegDWORD $1 SHCTX "${UNINSTALL_KEY}" "Octave"
    ${If} ${Errors}
      ReadRegStr $1 HKCR "Matlab.Application\CLSID" ""
      ${If} $1 == ""
      ${OrIf} $1 == "${ENGINE_CLASS}"
        StrCpy $0 yes
      ${EndIf}
    ${ElseIf} $1 = 1
      StrCpy $0 yes
    ${EndIf}
  ${EndIf}
  ${If} $0 == yes
    !insertmacro SelectSection ${octaveSection}
  ${Else}
    !insertmacro UnselectSection ${octaveSection}
  ${EndIf}
  System::Store L
FunctionEnd
