#include "CaseReader.h"

namespace solvane::host {

namespace {

constexpr std::size_t lineLength = 110;

constexpr char format[] =
    R"(A case is a JSON file (UTF-8). A number is in SI units: K, Pa, mol/s, mole fractions, J/mol; a text may give the
unit: "20 bar", "25 degC", "360 kmol/h", "50 t/h". Result tables use the units of the feeds.
One unit (the notes to the right are not part of the file):

{
  "unit": {                          the unit operation; all keys are optional
    "progId": "SolvaneUnitOperation.SolvaneUnitOp",   or a class id in braces
    "name": "Drum"                   the unit's name in the flowsheet
  },
  "generation": "1.1",               CAPE-OPEN thermodynamics of the materials, 1.1 (the default) or 1.0
  "profile": "standard",             how the unit is called: see "SolvaneHost run --help"
  "compounds": ["methane", "ethane"],
  "feeds": [                         each is connected to the unit's port of the same name
    { "name": "Feed",
      "temperature": "26.85 degC",   two of temperature, pressure, vaporFraction
      "pressure": 2e6,
      "flow": 100,                   of moles, or of mass: "50 t/h"
      "composition": { "methane": 0.7, "ethane": 0.3 } }
  ],
  "products": ["Vapor", "Liquid"],   names of streams and ports
  "model": {                         what the unit is configured with; its ports are the streams
    "parameters": [
      { "name": "T", "kind": "real", "mode": "input", "value": 260,
        "minimum": 100, "maximum": 500, "default": 260, "dimensionality": "K" },
      { "name": "duty", "kind": "real", "mode": "output", "dimensionality": "W" },
      { "name": "stages", "kind": "integer", "mode": "input", "value": 5, "minimum": 1, "maximum": 50 },
      { "name": "print", "kind": "boolean", "mode": "input", "value": true },
      { "name": "method", "kind": "string", "mode": "input", "value": "fast",
        "options": ["fast", "exact"], "restricted": true }      true (the default): no other value
    ],
    "reports": ["Summary"],          reports that the script fills
    "reportTexts": { },              what they contain from a former run, by report
    "script": "drum.m",              a file, or the list of the script's lines
    "files": ["data.txt"],           more files, which the script finds in its folder
    "echo": false                    true: each command line of the script is echoed
  },
  "parameters": { "T": 250 }         values of input parameters, set after the model is loaded
}

Instead of a model written out, "model" may name a model file: "model": "drum.svm". Its ports are the file's own. Or
it names a file with the same as above: "model": "model.json", as "SolvaneHost unpack" writes it.

Several units: each stream goes from the product of a unit to the feed of a later one. The units are calculated in
the order of the list.

{
  "generation": "1.1", "profile": "standard", "compounds": ["methane", "ethane"],
  "streams": [ { "name": "S1", "temperature": 300, ... } ],     as "feeds" above
  "units": [
    { "name": "Reactor",
      "progId": "SolvaneUnitOperation.SolvaneUnitOp",           optional, as above
      "model": "reactor.svm",                                   or written out
      "parameters": { "temperature": 900 },
      "feeds": { "Feed": "S1" },                                streams by port
      "products": { "Product": "S2" } },
    { "name": "Drum", "model": "drum.svm",
      "feeds": { "Feed": "S2" }, "products": { "Vapor": "S3", "Liquid": "S4" } }
  ],
  "tear": ["S5"],                    a stream that feeds a unit before the one that makes it, if there are recycles
  "convergence": { "method": "wegstein",     or direct, broyden, anderson
                   "tolerance": 1e-6,        relative
                   "limit": 50 }             of the iterations
}

A tear stream may have a first guess, written as a stream of "streams" is; without one it starts without flow.

Optional keys: unit, generation, profile, model, parameters, tear, convergence; in a model all but the script; in a parameter all but
name, kind, mode, and for an input one of value and default.
Values and bounds of a real parameter may have a unit, too: "value": "-13.15 degC".
A dimensionality is an SI unit ("J/mol/K", "m3 s-1") or a list of exponents of m, kg, s, A, K, mol, cd, rad.
A ninth exponent, 1, marks a difference, such as an approach of 10 K: [0, 0, 0, 0, 1, 0, 0, 0, 1].
Paths are relative to the case file.
Compounds: )";

} // namespace

std::string caseFormatText() {
    std::string text = format;
    std::size_t lineStart = text.rfind('\n') + 1;
    for (const Compound& compound : allCompounds()) {
        if (text.size() - lineStart + compound.name.size() > lineLength) {
            text.back() = '\n';
            lineStart = text.size();
        }
        text.append(compound.name).append(", ");
    }
    return text.replace(text.size() - 2, 2, "\n");
}

} // namespace solvane::host
