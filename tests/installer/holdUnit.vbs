' A simulator that has the unit loaded, until it is ended.
Option Explicit
Dim unit, finish
Set unit = CreateObject("SolvaneUnitOperation.SolvaneUnitOp")
CreateObject("Scripting.FileSystemObject").CreateTextFile(WScript.Arguments(0)).Close
finish = Timer + 60
Do While Timer < finish
Loop
