' A simulator that has the unit loaded, until it is ended.
Option Explicit
Dim unit
Set unit = CreateObject("SolvaneUnitOperation.SolvaneUnitOp")
CreateObject("Scripting.FileSystemObject").CreateTextFile(WScript.Arguments(0)).Close
MsgBox "The unit is loaded"
