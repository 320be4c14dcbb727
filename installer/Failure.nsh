; How setup and uninstaller end on a failure.

; 1 is NSIS's own, for a user who cancels.
!define EXIT_FAILED 2
!define EXIT_IN_USE 3
!define EXIT_NOT_ALLOWED 4
!define EXIT_NOT_REGISTERED 5
!define EXIT_USAGE 6

; A silent run writes its messages to its caller's console, or to its redirected output.
!macro defineSay UN
Function ${UN}say
  Exch $0
  Push $1
  System::Call 'kernel32::GetStdHandle(i -11) p.r1'
  ${If} $1 P= 0
    System::Call 'kernel32::AttachConsole(i -1)'
    System::Call 'kernel32::GetStdHandle(i -11) p.r1'
  ${EndIf}
  FileWrite $1 "$0$\r$\n"
  Pop $1
  Pop $0
FunctionEnd
!macroend
!insertmacro defineSay ""
!insertmacro defineSay "un."

!macro fail CODE TEXT
  SetErrorLevel ${CODE}
  ${If} ${Silent}
    Push "${TEXT}"
    !ifdef __UNINSTALL__
      Call un.say
    !else
      Call say
    !endif
    Quit
  ${EndIf}
  MessageBox MB_OK|MB_ICONSTOP "${TEXT}"
  Abort "${TEXT}"
!macroend

!define NOTHING_LEFT "Nothing was installed."

; Removes an incomplete installation.
!macro failAndRemove CODE TEXT
  ExecWait '"$INSTDIR\uninstall.exe" /S _?=$INSTDIR'
  Delete "$INSTDIR\uninstall.exe"
  SetOutPath "$TEMP"
  RMDir "$INSTDIR"
  !insertmacro fail ${CODE} "${TEXT}"
!macroend
