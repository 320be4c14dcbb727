' A caller that is not ours and knows the unit by its ProgID and its operations by their names.
Option Explicit
On Error Resume Next

Dim unit, failures
failures = 0

' Counts a difference, or an error since the last line that expected one.
Sub Expect(what, found, wanted)
    If Err.Number <> 0 Or found <> wanted Then
        WScript.Echo what & ": " & found & " instead of " & wanted & ", error " & Hex(Err.Number)
        failures = failures + 1
    End If
    Err.Clear
End Sub

' Without its script a run fails with a text, which the caller gets.
Dim files, temporary, folder, formerFolders, failure
Set files = CreateObject("Scripting.FileSystemObject")
Set temporary = files.GetSpecialFolder(2)
formerFolders = "|"
For Each folder In temporary.SubFolders
    formerFolders = formerFolders & folder.Name & "|"
Next

Set unit = CreateObject("SolvaneUnitOperation.SolvaneUnitOp")
Expect "status", unit.ValStatus, 0
For Each folder In temporary.SubFolders
    If Left(folder.Name, 1) = "{" And InStr(formerFolders, folder.Name) = 0 Then
        files.MoveFile folder.Path & "\calc.m", folder.Path & "\away.m"
        unit.Calculate
        failure = Err.Source & ": " & Err.Description
        Err.Clear
        files.MoveFile folder.Path & "\away.m", folder.Path & "\calc.m"
    End If
Next
Expect "the failure", failure, _
       "SolvaneUnitOperation.SolvaneUnitOp: Failed to open run script for reading: No such file or directory"
' A script's variables are variants, which cannot be passed as in-out strings; their values can.
Expect "validity", unit.Validate(("an old message")), True
Expect "status after validation", unit.ValStatus, 2
unit.Calculate
Expect "Calculate", unit.ports.ValStatus, 2 ' the collection of the ports is the unit itself
unit.ValStatus = 1
If Err.Number = 0 Then WScript.Echo "a status was put": failures = failures + 1
If failures = 0 Then WScript.Echo "done without failures"
