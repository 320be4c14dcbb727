; What setup's caller wants.

Var givenFolder ; of /D=, which the choice of the scope would overwrite
Var octaveWanted ; "yes", "no", or "" where nothing was said

!define USAGE "\
$EXEFILE [/S] [/AllUsers | /CurrentUser] [/Octave | /NoOctave] [/D=FOLDER]$\r$\n$\r$\n\
/S$\tno windows$\r$\n\
/AllUsers$\tfor all users; the default for an administrator$\r$\n\
/CurrentUser$\tfor this user alone$\r$\n\
/Octave$\tlet GNU Octave stand in for Matlab; the default where there is no Matlab$\r$\n\
/NoOctave$\tdo not$\r$\n\
/D=FOLDER$\twhere to; the last switch, without quotes$\r$\n$\r$\n\
Exit codes: 0 done, 1 cancelled, 2 failed, 3 files in use, 4 an administrator is needed, \
5 registering failed, 6 an unknown switch."

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
        StrCpy $octaveWanted yes
      ${Case} "/NoOctave"
        StrCpy $octaveWanted no
      ${Case2} "/?" "--help"
        MessageBox MB_OK "${USAGE}"
        Quit
      ${Default}
        !insertmacro fail ${EXIT_USAGE} "Setup has no switch $2.$\r$\n$\r$\n${USAGE}"
    ${EndSelect}
  ${Loop}
  ClearErrors
  ; For all users is asked for in vain by one who may not.
  ${GetOptions} $0 "/AllUsers" $2
  ${IfNot} ${Errors}
    UserInfo::GetAccountType
    Pop $2
    ${If} $2 != "Admin"
      !insertmacro fail ${EXIT_NOT_ALLOWED} "Installing for all users takes an administrator. \
Run setup as one, or with /CurrentUser for this user alone."
    ${EndIf}
  ${EndIf}
  System::Store L
FunctionEnd

; As the caller says, else as it was in the former version, else where no Matlab is registered.
Function chooseOctave
  System::Store S
  StrCpy $0 $octaveWanted
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
