; The setup program for Windows, and the uninstaller that it brings. installer/makeSetup compiles it with
;   SYSTEM   win64 or win32
;   STAGE    the folder that installer/stage has laid out
;   FILES    a list of its files, as macros
;   VERSION  four numbers
;   OUTPUT   the setup program to write
; Options.nsh has its switches, Failure.nsh its exit codes.

!if ${SYSTEM} == win64
  Target amd64-unicode
  !define MULTIUSER_USE_PROGRAMFILES64
!else
  Target x86-unicode
!endif

!define NAME "Solvane Unit Operation"
!define UNINSTALL_KEY "Software\Microsoft\Windows\CurrentVersion\Uninstall\SolvaneUnitOperation"

Name "${NAME}"
OutFile "${OUTPUT}"
BrandingText "${NAME} ${VERSION}"
!ifdef QUICK ; for tests
  SetCompress off
!else
  SetCompressor /SOLID lzma
!endif
SetDateSave off ; of setup's own pictures, which have the time of the checkout
ManifestDPIAware true
ManifestSupportedOS all

VIProductVersion "${VERSION}"
VIFileVersion "${VERSION}"
VIAddVersionKey CompanyName "Solvane"
VIAddVersionKey FileDescription "${NAME} Setup"
VIAddVersionKey FileVersion "${VERSION}"
VIAddVersionKey LegalCopyright "MIT licence"
VIAddVersionKey ProductName "${NAME}"
VIAddVersionKey ProductVersion "${VERSION}"

; For all users if this user may, otherwise for this user. An earlier installation determines folder and scope.
!define MULTIUSER_EXECUTIONLEVEL Highest
!define MULTIUSER_MUI
!define MULTIUSER_NOUNINSTALL
!define MULTIUSER_INSTALLMODE_COMMANDLINE
!define MULTIUSER_INSTALLMODE_INSTDIR "${NAME}"
!define MULTIUSER_INSTALLMODE_INSTDIR_REGISTRY_KEY "${UNINSTALL_KEY}"
!define MULTIUSER_INSTALLMODE_INSTDIR_REGISTRY_VALUENAME "InstallLocation"
!define MULTIUSER_INSTALLMODE_DEFAULT_REGISTRY_KEY "${UNINSTALL_KEY}"
!define MULTIUSER_INSTALLMODE_DEFAULT_REGISTRY_VALUENAME "InstallLocation"

!include MUI2.nsh
!include MultiUser.nsh
!include FileFunc.nsh
!include LogicLib.nsh
!include Sections.nsh
!include WordFunc.nsh
!include x64.nsh

!include Files.nsh
!include "${FILES}"
!include Failure.nsh
!include InUse.nsh
!include Registration.nsh

!define MUI_ICON ../src/resources/unit.ico
!define MUI_UNICON ../src/resources/unit.ico
!define MUI_ABORTWARNING
!define MUI_WELCOMEFINISHPAGE_BITMAP side.bmp
!define MUI_WELCOMEPAGE_TEXT "A unit operation for flowsheet simulators whose model is a Matlab script.$\r$\n$\r$\n\
Close the simulators that have the unit open: its files cannot be replaced until then.$\r$\n$\r$\n$_CLICK"
!define MUI_COMPONENTSPAGE_SMALLDESC
!define MUI_FINISHPAGE_TEXT_LARGE
!define MUI_FINISHPAGE_TEXT "In your simulator, add a CAPE-OPEN unit operation and choose \
$\"Solvane Unit Operation$\".$\r$\n$\r$\nThe examples are in $INSTDIR\examples. \
To check the installation, run $\"SolvaneHost doctor$\" in a command prompt in $INSTDIR."
!define MUI_FINISHPAGE_RUN
!define MUI_FINISHPAGE_RUN_TEXT "Open the help book"
!define MUI_FINISHPAGE_RUN_FUNCTION openHelp

!insertmacro MUI_PAGE_WELCOME
!insertmacro MULTIUSER_PAGE_INSTALLMODE
!insertmacro MUI_PAGE_COMPONENTS
!insertmacro MUI_PAGE_DIRECTORY
!insertmacro MUI_PAGE_INSTFILES
!insertmacro MUI_PAGE_FINISH
!insertmacro MUI_UNPAGE_CONFIRM
!insertmacro MUI_UNPAGE_INSTFILES
!insertmacro MUI_LANGUAGE English

Function openHelp
  ExecShell open "$INSTDIR\SolvaneUnitOperation.chm"
FunctionEnd

SetDateSave on

; Everything that may refuse to continue does so here, before anything has changed.
Section "-Former version"
  Push $INSTDIR
  Call refuseWhileInUse
  ReadRegStr $0 SHCTX "${UNINSTALL_KEY}" "InstallLocation"
  ${If} $0 != ""
  ${AndIf} ${FileExists} "$0\uninstall.exe"
    Push $0
    Call refuseWhileInUse
    DetailPrint "Removing the previous version from $0"
    ; A copy, since it removes its own folder; with _? so that it runs as this copy, which can be waited for.
    CopyFiles /SILENT "$0\uninstall.exe" "$PLUGINSDIR\uninstall.exe"
    ExecWait '"$PLUGINSDIR\uninstall.exe" /S _?=$0' $1
    ${If} $1 <> 0
      !insertmacro fail ${EXIT_FAILED} "Could not remove the previous version from $0: its uninstaller ended with code $1. \
Uninstall it in the settings of Windows, then run setup again."
    ${EndIf}
    Delete "$0\uninstall.exe"
    RMDir "$0"
  ${EndIf}
SectionEnd

Section "${NAME}" unitSection
  SectionIn RO
  ClearErrors
  SetOutPath "$INSTDIR"
  WriteUninstaller "$INSTDIR\uninstall.exe"
  WriteRegStr SHCTX "${UNINSTALL_KEY}" "DisplayName" "${NAME}"
  WriteRegStr SHCTX "${UNINSTALL_KEY}" "DisplayVersion" "${VERSION}"
  WriteRegStr SHCTX "${UNINSTALL_KEY}" "DisplayIcon" "$INSTDIR\SolvaneUnitOperation.dll,0"
  WriteRegStr SHCTX "${UNINSTALL_KEY}" "Publisher" "Solvane"
  WriteRegStr SHCTX "${UNINSTALL_KEY}" "InstallLocation" "$INSTDIR"
  WriteRegStr SHCTX "${UNINSTALL_KEY}" "UninstallString" '"$INSTDIR\uninstall.exe" /$MultiUser.InstallMode'
  WriteRegStr SHCTX "${UNINSTALL_KEY}" "QuietUninstallString" '"$INSTDIR\uninstall.exe" /S /$MultiUser.InstallMode'
  WriteRegDWORD SHCTX "${UNINSTALL_KEY}" "NoModify" 1
  WriteRegDWORD SHCTX "${UNINSTALL_KEY}" "NoRepair" 1
  SectionGetSize ${unitSection} $0
  WriteRegDWORD SHCTX "${UNINSTALL_KEY}" "EstimatedSize" $0
  WriteRegDWORD SHCTX "${UNINSTALL_KEY}" "Octave" 0

  !insertmacro INSTALL_UNIT
  ; Keeps examples that the user has changed; the others were removed with the previous version.
  SetOverwrite off
  !insertmacro INSTALL_EXAMPLES
  SetOverwrite on
  SetOutPath "$INSTDIR"
  ${If} ${Errors}
    !insertmacro failAndRemove ${EXIT_FAILED} "Could not write the files to $INSTDIR. ${NOTHING_LEFT} \
Check the free space on the disk and your right to write there, or choose another folder."
  ${EndIf}

  CreateDirectory "$SMPROGRAMS\${NAME}"
  CreateShortCut "$SMPROGRAMS\${NAME}\Help.lnk" "$INSTDIR\SolvaneUnitOperation.chm"
  CreateShortCut "$SMPROGRAMS\${NAME}\Examples.lnk" "$INSTDIR\examples"

  Call registerUnit
SectionEnd

Section "GNU Octave in place of Matlab" octaveSection
  ClearErrors
  !insertmacro INSTALL_OCTAVE
  SetOutPath "$INSTDIR"
  ${If} ${Errors}
    !insertmacro failAndRemove ${EXIT_FAILED} "Could not write the files of the Octave engine to \
$INSTDIR. ${NOTHING_LEFT} Check the free space on the disk."
  ${EndIf}
  Call registerOctave
  WriteRegDWORD SHCTX "${UNINSTALL_KEY}" "Octave" 1
  Call findOctave
SectionEnd

!insertmacro MUI_FUNCTION_DESCRIPTION_BEGIN
  !insertmacro MUI_DESCRIPTION_TEXT ${unitSection} "The unit for simulators, the sample host, examples and the help book."
  !insertmacro MUI_DESCRIPTION_TEXT ${octaveSection} "Lets an installed GNU Octave (octave.org) run the scripts. \
Leaves a registered Matlab unchanged."
!insertmacro MUI_FUNCTION_DESCRIPTION_END

!include Options.nsh

Function .onInit
  StrCpy $givenFolder $INSTDIR
!if ${SYSTEM} == win32
  ${If} ${RunningX64}
    !insertmacro fail ${EXIT_FAILED} "This setup is for 32-bit Windows. On this computer, use SolvaneUnitOperation-Setup.exe."
  ${EndIf}
!endif
  Call readOptions
  !insertmacro MULTIUSER_INIT
  ${If} $givenFolder != ""
    StrCpy $INSTDIR $givenFolder
  ${EndIf}
  InitPluginsDir
  Call chooseOctave
FunctionEnd

; Takes the scope from the installation in the uninstaller's folder.
Function un.onInit
  SetShellVarContext all
  StrCpy $MultiUser.InstallMode AllUsers
  ReadRegStr $0 HKCU "${UNINSTALL_KEY}" "InstallLocation"
  ${If} $0 == $INSTDIR
    SetShellVarContext current
    StrCpy $MultiUser.InstallMode CurrentUser
    Return
  ${EndIf}
  UserInfo::GetAccountType
  Pop $0
  ${If} $0 != "Admin"
    !insertmacro fail ${EXIT_NOT_ALLOWED} "Only an administrator can remove an installation for all users. \
Run the uninstaller as administrator."
  ${EndIf}
FunctionEnd

; Deletes only installed files, and folders only if they are empty then.
Section "Uninstall"
  Push $INSTDIR
  Call un.refuseWhileInUse
  ReadRegDWORD $0 SHCTX "${UNINSTALL_KEY}" "Octave"
  ${If} $0 = 1
    Call un.unregisterOctave
    !insertmacro REMOVE_OCTAVE
  ${EndIf}
  Call un.unregisterUnit
  Call un.removeGatewayCopies
  !insertmacro REMOVE_UNIT
  !insertmacro REMOVE_EXAMPLES
  Delete "$SMPROGRAMS\${NAME}\Help.lnk"
  Delete "$SMPROGRAMS\${NAME}\Examples.lnk"
  RMDir "$SMPROGRAMS\${NAME}"
  Delete "$INSTDIR\uninstall.exe"
  SetOutPath "$TEMP" ; a working folder cannot be removed
  RMDir "$INSTDIR"
  DeleteRegKey SHCTX "${UNINSTALL_KEY}"
  Call un.removeEmptyKeys
SectionEnd
