' A caller that knows the unit by its ProgID and its operations by their names.
Option Explicit
On Error Resume Next

Const ICapeCollection = "{678C099A-0093-11D2-A67D-00105A42887F}"
Const ICapeUtilities = "{678C0A9B-0100-11D2-A67D-00105A42887F}"
Const ICapeUnitReport = "{678C099B-0093-11D2-A67D-00105A42887F}"
Const ICapeIdentification = "{678C0990-7D66-11D2-A67D-00105A42887F}"
Const ECapeRoot = "{678C0B10-7D66-11D2-A67D-00105A42887F}"
Const ECapeUser = "{678C0B11-7D66-11D2-A67D-00105A42887F}"

Dim failures, script, unit, ports, utilities, parameters, reports, identification, user, list
failures = 0

' Counts a difference, or an error since the last line that expected one.
Sub Expect(what, found, wanted)
    If Err.Number <> 0 Then
        WScript.Echo what & ": error " & Hex(Err.Number) & " " & Err.Description
        failures = failures + 1
    ElseIf found <> wanted Then
        WScript.Echo what & ": " & found & " instead of " & wanted
        failures = failures + 1
    End If
    Err.Clear
End Sub

Sub ExpectError(what)
    If Err.Number = 0 Then
        WScript.Echo what & ": no error"
        failures = failures + 1
    End If
    Err.Clear
End Sub

Set script = CreateObject("Solvane.InterfaceOf")
Set unit = CreateObject("SolvaneUnitOperation.SolvaneUnitOp")
Expect "unit", TypeName(unit) <> "Empty", True

Set identification = script.Of(unit, ICapeIdentification)
Expect "name", identification.ComponentName, "Solvane Unit Operation"
identification.ComponentName = "Drum 1"
Expect "new name", identification.ComponentName, "Drum 1"

Set utilities = script.Of(unit, ICapeUtilities)
utilities.Initialize
Expect "Initialize", 0, 0
Set parameters = script.Of(utilities.parameters, ICapeCollection)
Expect "parameters", parameters.Count, 0
Dim parameter
Set parameter = parameters.Item(1)
ExpectError "an index beyond the end"
Set user = script.Of(parameters, ECapeUser)
Expect "its description", user.description, "Parameter index out of range"
Expect "its scope", user.scope, "Item"
Expect "its interface", user.interfaceName, "ICapeCollection"
Expect "its code", user.code, 0
Set user = script.Of(parameters, ECapeRoot)
Expect "its name", user.name, "Parameter index out of range"

Set ports = script.Of(unit.ports, ICapeCollection)
Expect "ports", ports.Count, 0
Set parameter = ports.Item("Feed 1")
ExpectError "a port that is not there"
Set user = script.Of(unit, ECapeRoot)
Expect "a port's failure", user.name, "Undefined port name"

Expect "status", unit.ValStatus, 0
' A script's variables are variants, which cannot be passed as in-out strings; their values can.
Expect "validity", unit.Validate(("an old message")), True
Expect "status after validation", unit.ValStatus, 2

Set reports = script.Of(unit, ICapeUnitReport)
list = reports.reports
Expect "reports", VarType(list), vbArray + vbString
reports.ProduceReport ("")
Expect "ProduceReport", 0, 0
reports.selectedReport = "nonsense"
ExpectError "a report that is not there"
reports.selectedReport = "MATLAB OUTPUT"
Expect "selected report", reports.selectedReport, "MATLAB OUTPUT"

utilities.Terminate
Expect "Terminate", 0, 0
unit.Calculate
ExpectError "Calculate after Terminate"
Set user = script.Of(unit, ECapeUser)
Expect "its description", user.description, "Terminate has been called on unit operation"
Expect "the end", 0, 0

If failures = 0 Then WScript.Echo "done without failures"
