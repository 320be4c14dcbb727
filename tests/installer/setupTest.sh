#!/bin/sh
# Installs, upgrades and uninstalls the files of build/win64 and build/win32 in a Wine prefix in the folder WORK, which has
# the setup's word size, and checks what changes:
#   setupTest.sh ROOT win64|win32 WORK
set -eu
root=$1
system=$2
work=$3
tests=$root/tests/installer
"$root/scripts/models" # by the build tree's own prefix
export WINEPREFIX="$work/prefix"
export WINEARCH="$system"
export SOURCE_DATE_EPOCH=1700000001 # odd: file times in a setup are not
. "$root/scripts/environment"
WINEDLLOVERRIDES="$WINEDLLOVERRIDES;winemenubuilder.exe=" # no entries in the menus of this desktop
unset DISPLAY
wine=$(command -v wine)
[ "$system" = win32 ] || wine=/usr/lib/wine/wine64 # or else a Wine of both word sizes prefers 32-bit programs
drive=$WINEPREFIX/drive_c
installed="$drive/Program Files/Solvane Unit Operation"
uninstallKey='Software\Microsoft\Windows\CurrentVersion\Uninstall\SolvaneUnitOperation'

wine() {
    "$wine" "$@"
}

fail() {
    printf 'FAILED: %s\n' "$*" >&2
    exit 1
}

# expectExit CODE COMMAND...: what it prints goes to $work/output.
expectExit() {
    expected=$1
    shift
    code=0
    "$@" >"$work/output" 2>&1 || code=$?
    [ "$code" = "$expected" ] || { cat "$work/output"; fail "$* ended with $code, not with $expected"; }
}

# value KEY NAME: a registry value, "" where there is none. The default value has the name "".
value() {
    wine reg query "$1" ${2:+/v "$2"} $([ -n "$2" ] || echo /ve) 2>/dev/null | tr -d '\r' |
        sed -n 's/^ .*    REG_[A-Z_]*    *//p'
}

expectValue() {
    found=$(value "$1" "$2")
    [ "$found" = "$3" ] || fail "$1 $2 is \"$found\", not \"$3\""
}

# snapshot NAME: the registry and the names of the files, without what Wine and a running uninstaller write.
snapshot() {
    for hive in 'HKEY_LOCAL_MACHINE\Software' 'HKEY_CURRENT_USER\Software'; do
        wine regedit /E 'C:\export.reg' "$hive"
        iconv -f UTF-16 -t UTF-8 "$drive/export.reg" | tr -d '\r'
        rm "$drive/export.reg"
    done | awk '/^\[/ { noise = /NetworkCards|Software.Wine/ } !noise' >"$work/$1.registry"
    find "$drive" -not -path '*/Temp/*' | LC_ALL=C sort >"$work/$1.files"
}

# unchangedSince NAME: neither the registry nor the files.
unchangedSince() {
    snapshot now
    for part in registry files; do
        diff "$work/$1.$part" "$work/now.$part" || fail "the $part differ from those $1"
    done
}

# The uninstaller continues as a copy of itself, for which its caller does not wait.
uninstall() {
    wine "$installed/uninstall.exe" /S >/dev/null
    for _ in $(seq 600); do
        [ -n "$(value "$1\\$uninstallKey" DisplayName)" ] || return 0
        sleep 0.1
    done
    fail "the uninstaller has not ended"
}

# In a 32-bit program where there are such. By its path, or else Wine puts another program before it.
holdUnit() {
    exec "$wine" "$drive/windows/$programs/cscript.exe" "$(wine winepath -w "$tests/holdUnit.vbs")" \
        "$(wine winepath -w "$work/loaded")"
}

mkdir -p "$work"
[ -f "$WINEPREFIX/clean" ] || rm -rf "$WINEPREFIX"
"$root/scripts/prefix" bare
trap 'wineserver -k || true' EXIT
rm -f "$WINEPREFIX/clean" # until all has passed
loaded=SolvaneUnitOperation.dll
programs=system32
if [ "$system" = win64 ] && [ -f "$drive/windows/syswow64/cscript.exe" ]; then
    loaded=SolvaneUnitOperation32.dll
    programs=syswow64
fi
version=$(head -n 1 "$root/VERSION")
"$root/installer/stage" "$system" "$work/stage"
"$root/installer/makeSetup" "$system" "$work/stage" "$version" "$work/Solvane-now.exe" -DQUICK
echo '% gone in later versions' >"$work/stage/retired.m"
"$root/installer/makeSetup" "$system" "$work/stage" 0.9.0.0 "$work/Solvane-former.exe" -DQUICK
rm -rf "$work/damaged"
cp -a "$work/stage" "$work/damaged"
echo damaged >"$work/damaged/SolvaneUnitOperation.dll"
"$root/installer/makeSetup" "$system" "$work/damaged" "$version" "$work/Solvane-damaged.exe" -DQUICK

# The user's own settings: one that setup changes temporarily, and one that it must not touch.
wine reg add 'HKCU\Software\SolvaneUO' /v CurrentUser /d 1 /f >/dev/null
wine reg add 'HKCU\Software\SolvaneUO' /v OctaveProgram /d /usr/bin/octave-cli /f >/dev/null
(holdUnit) >/dev/null 2>&1 || true # fails; but the first run of cscript registers cscript
snapshot before

echo "== a unit that cannot be registered is not installed"
expectExit 5 wine "$work/Solvane-damaged.exe" /S
grep -q 'Could not register SolvaneUnitOperation.dll' "$work/output" || fail "setup does not say what went wrong"
unchangedSince before

echo "== for all users, over a former version"
expectExit 0 env SOLVANE_OCTAVE='C:\none.exe' "$wine" "$work/Solvane-former.exe" /S
grep -q 'No GNU Octave that works was found' "$work/output" || fail "setup does not say that there is no Octave"
expectValue "HKLM\\$uninstallKey" DisplayVersion 0.9.0.0
[ -f "$installed/retired.m" ] || fail "the previous version is missing"
echo '% mine' >"$installed/mine.m"
echo '% changed' >>"$installed/examples/flash-drum/drum.m"
expectExit 0 wine "$work/Solvane-now.exe" /S
! grep 'No GNU Octave' "$work/output" || fail "setup does not find Octave"
expectValue "HKLM\\$uninstallKey" DisplayVersion "$version"
expectValue 'HKCU\Software\SolvaneUO' CurrentUser 1
expectValue 'HKLM\Software\Classes\SolvaneUnitOperation.SolvaneUnitOp\CurVer' '' SolvaneUnitOperation.SolvaneUnitOp.1
[ ! -f "$installed/retired.m" ] || fail "a file of the previous version is left"
grep -q changed "$installed/examples/flash-drum/drum.m" || fail "the user's change of an example is lost"

echo "== the installed unit calculates"
expectExit 0 wine "$installed/SolvaneHost.exe" run "$installed/examples/flowsheet/case.json"
grep -q 'Fuel gas' "$work/output" || { cat "$work/output"; fail "the flowsheet's products are missing"; }

echo "== nothing changes while the unit is loaded"
rm -f "$work/loaded"
holdUnit >/dev/null 2>&1 &
holder=$!
for _ in $(seq 600); do
    [ ! -f "$work/loaded" ] || break
    sleep 0.1
done
snapshot 'while the unit is loaded'
expectExit 3 wine "$work/Solvane-now.exe" /S
grep -q "$loaded is in use" "$work/output" || fail "setup does not say what is in use"
grep -q 'cscript.exe' "$work/output" || fail "setup does not say what to close"
# To wait for it takes a switch that Wine would put between quotes.
printf '@"%s\\uninstall.exe" /S _?=%s\r\n@exit %%errorlevel%%\r\n' 'C:\Program Files\Solvane Unit Operation' \
    'C:\Program Files\Solvane Unit Operation' >"$work/uninstall.cmd"
expectExit 3 wine cmd /c "$(wine winepath -w "$work/uninstall.cmd")"
expectExit 6 wine "$work/Solvane-now.exe" /S /AllUser
unchangedSince 'while the unit is loaded'
kill $holder
wait $holder 2>/dev/null || true

echo "== uninstalling leaves the user's work alone"
uninstall HKLM
grep -q changed "$installed/examples/flash-drum/drum.m" || fail "the user's change of an example is lost"
rm "$installed/mine.m" "$installed/examples/flash-drum/drum.m"
rmdir "$installed/examples/flash-drum" "$installed/examples" "$installed" || fail "files are left: $(find "$installed")"
unchangedSince before

echo "== for one user, beside a Matlab, with a program for zip files"
wine reg add 'HKLM\Software\Classes\Matlab.Application\CLSID' /ve /d '{554F6053-79D4-11D4-B067-009027BA5F81}' /f >/dev/null
wine reg add 'HKLM\Software\Classes\.zip' /ve /d TestZip /f >/dev/null
wine reg add 'HKLM\Software\Classes\TestZip\shell\open\command' /ve /d 'C:\zip.exe "%1"' /f >/dev/null
wine reg delete 'HKCU\Software\SolvaneUO' /f >/dev/null
wine reg add 'HKCU\Software\Classes\Wow6432Node' /f >/dev/null # every user of a 64-bit Windows has it
snapshot 'before the installation for one user'
installed="$drive/OfOneUser"
octave='HKCU\Software\Classes\SolvaneOctave.Application\CLSID'
expectExit 0 wine "$work/Solvane-former.exe" /S /CurrentUser '/D=C:\OfOneUser'
expectValue "$octave" '' '' # not preselected
for option in /Octave ''; do # the second one chooses as the first did
    expectExit 0 wine "$work/Solvane-now.exe" /S $option
    expectValue "$octave" '' '{99A86BC0-7BAD-4400-A453-9014CFBBF8C5}'
done
expectValue "HKCU\\$uninstallKey" DisplayVersion "$version"
key='CLSID\{5C7A1E20-93B4-4D0E-8A61-2F0D7B9C41E3}\InprocServer32'
class="Software\\Classes\\$key"
class32="Software\\Classes\\Wow6432Node\\$key"
expectValue "HKCU\\$class" '' 'C:\OfOneUser\SolvaneUnitOperation.dll'
expectValue "HKLM\\$class" '' ''
[ $programs = system32 ] || expectValue "HKCU\\$class32" '' 'C:\OfOneUser\SolvaneUnitOperation32.dll'
expectValue 'HKCU\Software\Classes\SolvaneUnitOperationModel\shell\open\command' '' 'C:\zip.exe "%1"'
uninstall HKCU
unchangedSince 'before the installation for one user'

echo "== the zip, registered where it lies"
for key in AppID CLSID Typelib; do # empty ones may stay
    wine reg add "HKCU\\Software\\Classes\\$key" /f >/dev/null
    wine reg add "HKCU\\Software\\Classes\\Wow6432Node\\$key" /f >/dev/null
done
wine reg add 'HKCU\Software\SolvaneUO' /v CurrentUser /d 0 /f >/dev/null # the user's own setting
snapshot 'before the zip was registered'
zip=$work/zip
rm -rf "$zip"
cp -r "$work/stage" "$zip"
cp "$root"/installer/zip/* "$zip"
unit="$(wine winepath -w "$zip" | tr -d '\r')\\SolvaneUnitOperation"
while IFS='|' read -r hive option octave reported <&3; do
    expectExit 0 env SOLVANE_OCTAVE="$octave" "$wine" cmd /c "$(wine winepath -w "$zip/register.cmd")" $option
    for line in "${system#win}-bit simulators: registered" "$reported"; do
        grep -q "$line" "$work/output" || { cat "$work/output"; fail "register.cmd does not print: $line"; }
    done
    expectValue "$hive\\$class" '' "$unit.dll"
    [ $programs = system32 ] || expectValue "$hive\\$class32" '' "${unit}32.dll"
    expectExit 0 wine cmd /c "$(wine winepath -w "$zip/unregister.cmd")" $option
    expectValue "$hive\\$class" '' ''
    unchangedSince 'before the zip was registered'
done 3<<'CASES'
HKLM||C:\none.exe|No GNU Octave that works was found
HKCU|/user|/usr/bin/octave-cli|GNU Octave [0-9.]*, /usr/bin/octave-cli
CASES

for key in Classes SolvaneUO; do
    wine reg delete "HKCU\\Software\\$key" /f >/dev/null
done
for key in Matlab.Application .zip TestZip; do
    wine reg delete "HKLM\\Software\\Classes\\$key" /f >/dev/null
done
touch "$WINEPREFIX/clean"
echo passed
