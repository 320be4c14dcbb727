// The same unit from the other scripting language, by the versioned ProgID. An error ends the script before
// its last line.
function expect(what, found, wanted) {
    if (found !== wanted)
        throw new Error(what + ": " + found + " instead of " + wanted);
}

var unit = new ActiveXObject("SolvaneUnitOperation.SolvaneUnitOp.1");
var interfaceOf = new ActiveXObject("Solvane.InterfaceOf");
var identification = interfaceOf.Of(unit, "{678C0990-7D66-11D2-A67D-00105A42887F}");
identification.ComponentDescription = "a drum";
expect("description", identification.ComponentDescription, "a drum");
expect("ports", interfaceOf.Of(unit.ports, "{678C099A-0093-11D2-A67D-00105A42887F}").Count(), 0);
expect("status", unit.ValStatus, 0);
var refused = false;
try {
    interfaceOf.Of(unit, "{678C0A9B-0100-11D2-A67D-00105A42887F}").Edit();
} catch (error) {
    refused = true;
}
expect("refusal", refused, true);
var user = interfaceOf.Of(unit, "{678C0B11-7D66-11D2-A67D-00105A42887F}");
expect("scope", user.scope, "Edit");
WScript.Echo("done without failures");
