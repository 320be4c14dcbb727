@echo off
rem Registers the unit in the folder of this file.
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
    echo Do not move the folder while the unit is registered.
    exit /b 2
)
rem The zip for 64-bit Windows also has the module for 32-bit simulators.
set bits=32
if exist "%~dp0SolvaneUnitOperation32.dll" set bits=64
set windows=64
set native=System32
if defined PROCESSOR_ARCHITEW6432 (
    set native=Sysnative
) else if /i "%PROCESSOR_ARCHITECTURE%"=="x86" (
    set windows=32
)
if not %bits%==%windows% (
    echo These files are for %bits%-bit Windows, but this is a %windows%-bit Windows. Use the zip for %windows%-bit Windows.
    exit /b 2
)
echo Registering the unit in %~dp0 %scope%
rem The unit reads the scope from this setting, which is restored afterwards.
set settings=there
reg query HKCU\Software\SolvaneUO >nul 2>nul
if errorlevel 1 set settings=none
set former=
for /f "tokens=1,3" %%a in ('reg query HKCU\Software\SolvaneUO /v CurrentUser 2^>nul') do (
    if "%%a"=="CurrentUser" set former=%%b
)
reg add HKCU\Software\SolvaneUO /v CurrentUser /d %switch% /f >nul

set failed=
call :module %native% SolvaneUnitOperation.dll "the unit for %bits%-bit simulators"
if %bits%==64 call :module SysWOW64 SolvaneUnitOperation32.dll "the unit for 32-bit simulators"
if defined former (
    reg add HKCU\Software\SolvaneUO /v CurrentUser /d %former% /f >nul
) else (
    reg delete HKCU\Software\SolvaneUO /v CurrentUser /f >nul
)
if %settings%==none reg delete HKCU\Software\SolvaneUO /f >nul
if defined failed (
    echo To register for all users, use a command prompt that runs as administrator; register /user works without.
    exit /b 5
)

rem Registers GNU Octave in place of Matlab if no Matlab is registered.
"%~dp0OctaveAutomationServer.exe" /RegServer %option%
if errorlevel 1 (
    echo Could not register the engine for GNU Octave.
    exit /b 5
)
if "%switch%"=="0" "%~dp0SolvaneHost.exe" register-interfaces
if errorlevel 1 exit /b 5
rem Octave may also be installed later, so that its absence is no failure.
"%~dp0OctaveAutomationServer.exe" /FindOctave
if errorlevel 1 echo No GNU Octave that works was found on this computer. Install one from octave.org; the unit then finds it.
echo Done. To remove the registration, run unregister %~1
exit /b 0

:module
if not exist "%SystemRoot%\%1\regsvr32.exe" (
    echo   %~3: not registered, since this Windows runs no such programs
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
