@echo off
rem Registers what lies beside this file, where it lies.
setlocal
set scope=for all users
set option=
set switch=0
if /i "%~1"=="/user" (
    set scope=for this user
    set option=/PerUser
    set switch=1
) else if not "%~1"=="" (
    echo register         registers the Solvane unit operation for all users, as administrator
    echo register /user   registers it for this user
    echo The folder is to stay where it is for as long as the unit is registered.
    exit /b 2
)
if defined PROCESSOR_ARCHITEW6432 (
    set native=Sysnative
) else if /i "%PROCESSOR_ARCHITECTURE%"=="x86" (
    echo This is for 64-bit Windows. For 32-bit Windows there is SolvaneUnitOperation-Setup-32bit.exe.
    exit /b 2
) else (
    set native=System32
)
echo Registering %scope% what lies in %~dp0
rem The unit asks this setting for the scope.
reg add HKCU\Software\SolvaneUO /v CurrentUser /d %switch% /f >nul

set failed=
call :module %native% SolvaneUnitOperation.dll "the unit for 64-bit simulators"
call :module SysWOW64 SolvaneUnitOperation32.dll "the unit for 32-bit simulators"
reg delete HKCU\Software\SolvaneUO /v CurrentUser /f >nul
reg query HKCU\Software\SolvaneUO 2>nul | find "REG_" >nul || reg delete HKCU\Software\SolvaneUO /f >nul
if defined failed (
    echo Registering for all users takes a prompt that runs as administrator; register /user takes none.
    exit /b 5
)

rem Stands in for Matlab where none is registered.
"%~dp0OctaveAutomationServer.exe" /RegServer %option%
if errorlevel 1 (
    echo The engine for GNU Octave could not be registered.
    exit /b 5
)
if "%switch%"=="0" "%~dp0SolvaneHost.exe" register-interfaces
if errorlevel 1 exit /b 5
echo Done. unregister %~1 takes it away again.
exit /b 0

:module
if not exist "%SystemRoot%\%1\regsvr32.exe" (
    echo   %~3: this Windows runs no such programs
    exit /b 0
)
"%SystemRoot%\%1\regsvr32.exe" /s "%~dp0%2"
if errorlevel 1 (
    echo   %~3: regsvr32 %2 failed with code %errorlevel%
    set failed=1
) else (
    echo   %~3: registered
)
exit /b 0
