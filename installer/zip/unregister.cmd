@echo off
rem Removes the registration that register.cmd has made.
setlocal
set native=System32
if defined PROCESSOR_ARCHITEW6432 set native=Sysnative
if "%~1"=="" goto machine
if /i "%~1"=="/user" goto user
echo unregister         removes the registration for all users, as administrator
echo unregister /user   removes the registration for this user
exit /b 2

:machine
"%~dp0SolvaneHost.exe" register-interfaces --unregister
"%SystemRoot%\%native%\regsvr32.exe" /u /s "%~dp0SolvaneUnitOperation.dll"
if errorlevel 1 (
    echo regsvr32 /u SolvaneUnitOperation.dll failed with code %errorlevel%; use a command prompt that runs as administrator.
    exit /b 5
)
if exist "%SystemRoot%\SysWOW64\regsvr32.exe" "%SystemRoot%\SysWOW64\regsvr32.exe" /u /s "%~dp0SolvaneUnitOperation32.dll"
reg delete HKLM\Software\Classes\SolvaneUnitOperationModel /f >nul 2>nul
"%~dp0OctaveAutomationServer.exe" /UnregServer
exit /b %errorlevel%

:user
set unit={5C7A1E20-93B4-4D0E-8A61-2F0D7B9C41E3}
call :classes HKCU\Software\Classes
rem The registry of 32-bit programs.
call :classes HKCU\Software\Classes\Wow6432Node
"%~dp0OctaveAutomationServer.exe" /UnregServer /PerUser
exit /b %errorlevel%

:classes
for %%k in (CLSID\%unit% SolvaneUnitOperation.SolvaneUnitOp SolvaneUnitOperation.SolvaneUnitOp.1
            SolvaneUnitOperationModel AppID\SolvaneUnitOperation.DLL
            AppID\{5C7A1E25-93B4-4D0E-8A61-2F0D7B9C41E3}
            TypeLib\{5C7A1E24-93B4-4D0E-8A61-2F0D7B9C41E3}) do reg delete %1\%%k /f >nul 2>nul
rem The file type may belong to another program, or Explorer may keep a list of programs there.
reg query %1\.SVM /ve 2>nul | find "SolvaneUnitOperationModel" >nul
if not errorlevel 1 reg delete %1\.SVM /ve /f >nul
reg query %1\.SVM /s 2>nul | find "REG_" >nul
if errorlevel 1 reg delete %1\.SVM /f >nul 2>nul
exit /b 0
