"""Gives each model of the library what its equations do not hold for, and expects its refusal, with the place in the script.

    refusals.py WINE SOLVANEHOST MODELS
"""
import json
import os
import re
import shutil
import subprocess
import sys
import tempfile
from concurrent.futures import ThreadPoolExecutor
from pathlib import Path

BOILING = {"temperature": None, "vaporFraction": 0.5}
NO_PRESSURE = "pressure drop is too large: "

# The case's folder, changed parameters, how its first feed changes, and the text.
ROWS = [
    ("absorber", {"key compound": "water"}, {}, 'Absorber: the key compound "water" is not among the compounds'),
    ("absorber", {"pressure drop": 1e6}, {}, "Absorber: the " + NO_PRESSURE),
    ("component-splitter", {"pressure drop": 2e6}, {}, "Component splitter: the " + NO_PRESSURE),
    ("compressor", {"outlet pressure": 5e4}, {}, "Compressor: the outlet pressure, 50000 Pa, must be at least that of the feed"),
    ("compressor", {}, BOILING, "Compressor: the feed contains a liquid."),
    ("equilibrium-reactor", {"pressure drop": 2.5e6}, {}, "Reactor: the " + NO_PRESSURE),
    ("equilibrium-reactor", {"adiabatic": False, "real gas": False, "temperature": 300}, {},
     "Reactor: a liquid forms at the outlet, at 300.00 K"),
    ("equilibrium-reactor", {"reaction": "methane + water"}, {}, 'Reactor: the reaction "methane + water" must have two sides'),
    ("equilibrium-reactor", {"reaction": "methane + ozone = water"}, {}, 'Reactor: the reaction needs "ozone", which is not'),
    ("equilibrium-reactor", {"reaction": "methane + water = carbon monoxide + hydrogen"}, {},
     'Reactor: the reaction "methane + water = carbon monoxide + hydrogen" makes 30.03 g of 34.06 g.'),
    ("expander", {"outlet pressure": 6e6}, {}, "Expander: the outlet pressure, 6e+06 Pa, must not exceed that of the feed"),
    ("flash-drum", {"pressure drop": 2e6}, {}, "Flash drum: the " + NO_PRESSURE),
    ("heat-exchanger", {}, {"temperature": 290}, "Heat exchanger: the hot feed, at 290.01 K, must be hotter than"),
    ("heat-exchanger", {"specification": "approach", "approach": 200}, {}, "Heat exchanger: the approach, 200 K, exceeds"),
    ("heat-exchanger", {"specification": "hot outlet temperature", "hot outlet temperature": 420}, {},
     "Heat exchanger: the hot stream would be heated: the duty would be -"),
    ("heat-exchanger", {"specification": "given duty", "given duty": 1e8}, {},
     "Heat exchanger: a duty of 100000 kW is too much for these feeds, which can exchange "),
    ("heat-exchanger", {"specification": "given duty", "given duty": 7e6}, {"temperature": 480, "flow": 150},
     "Heat exchanger: the temperatures cross: a duty of 7000 kW is too much"),
    ("heat-exchanger", {"hot pressure drop": 1e6}, {}, "Heat exchanger: a " + NO_PRESSURE),
    ("heater", {"pressure drop": 1e6}, {}, "Heater: the " + NO_PRESSURE),
    ("membrane", {"key compound": "water"}, {}, 'Membrane: the key compound "water" is not among the compounds'),
    ("membrane", {}, BOILING, "Membrane: the feed must be a gas, but contains a liquid."),
    ("membrane", {"area": 0}, {}, "Membrane: the area must be above 0, but is 0 m2."),
    ("membrane", {"permeate pressure": 2e6}, {}, "Membrane: the permeate pressure must lie between 0 and that of the feed"),
    ("membrane", {"permeate pressure": 1.9e6, "permeance of methane": 0}, {}, "Membrane: nothing permeates. In the feed, the"),
    ("membrane", {"area": 1e6}, {}, "Membrane: the whole feed permeates through less than 1e+06 m2."),
    ("mixer", {"pressure drop": 1e6}, {}, "Mixer: the " + NO_PRESSURE),
    ("plug-flow-reactor", {"pressure drop": 3.5e6}, {}, "Reactor: the " + NO_PRESSURE),
    ("pump", {"outlet pressure": 4e5}, {}, "Pump: the outlet pressure, 400000 Pa, must be at least that of the feed"),
    ("pump", {}, BOILING, "Pump: the feed contains a vapour."),
    ("shortcut-distillation", {"light key": "water"}, {}, 'Distillation: the key "water" is not among the compounds'),
    ("shortcut-distillation", {}, {"composition": {"n-butane": 0.6, "n-pentane": 0.4}},
     "Distillation: the feed must contain both keys, propane and n-butane."),
    ("shortcut-distillation", {"light key": "n-butane", "heavy key": "propane"}, {},
     "Distillation: n-butane is not more volatile than propane."),
    ("shortcut-distillation", {"heavy key": "n-pentane"}, {}, "Distillation: n-butane boils between the keys."),
    ("splitter", {"share of product 1": 0.8}, {}, "Splitter: the shares must be at least 0 and not exceed 1 together, but are 0.8 0.3."),
    ("stirred-tank-reactor", {"pressure drop": 3.5e6}, {}, "Reactor: the " + NO_PRESSURE),
    ("three-outlet-separator", {"pressure drop": 1e6}, {}, "Separator: the " + NO_PRESSURE),
    ("valve", {"outlet pressure": 7e6}, {}, "Valve: the outlet pressure, 7e+06 Pa, must not exceed that of the feed"),
]
# The lines of kinetics.csv after its heading.
KINETICS = [
    ("plug-flow-reactor", "methane, 1", 'Reactor: kinetics.csv needs an equation, a coefficient, an energy and orders, not "methane, 1".'),
    ("plug-flow-reactor", "toluene + hydrogen = benzene + methane, fast, 1, toluene 1", 'Reactor: "fast" or "1" in kinetics.csv is'),
    ("plug-flow-reactor", "toluene + hydrogen = benzene + methane, 1, 1, ozone 1", 'Reactor: "ozone 1" in kinetics.csv must be'),
    ("plug-flow-reactor", "", "Reactor: kinetics.csv has no reaction after its heading."),
    ("stirred-tank-reactor", 2 * "toluene + hydrogen = benzene + methane, 1, 1, toluene 1\n",
     "Reactor: kinetics.csv must have one reaction, but has 2."),
]
# Those that nothing in a case leads to: numerical methods that give up, limits that the parameters have, too, and compounds
# that the host knows more of.
UNREACHED = ["the stages did not settle", "each share must be", "lacks formation energies", "the local permeate was not found",
             "a permeance must not", "the integration along", "the integration stopped", "volatilities were not found",
             "separates without reflux"]


def write_case(folder, parameters, feed):
    case = json.loads((folder / "case.json").read_text())
    known = {parameter["name"]: parameter for parameter in case["model"]["parameters"]}
    for name, value in parameters.items():
        known[name]["value"] = value
    case["feeds"][0] = {key: value for key, value in {**case["feeds"][0], **feed}.items() if value is not None}
    (folder / "case.json").write_text(json.dumps(case))


def refusal(folder, parameters, feed, text, kinetics=None):
    """The file and the line of the error call, after the run has printed its place and its text."""
    with tempfile.TemporaryDirectory() as name:
        library = Path(name) / "models"
        shutil.copytree(sys.argv[3], library)
        write_case(library / folder, parameters, feed)
        if kinetics is not None:
            (library / folder / "kinetics.csv").write_text("reaction, coefficient, energy, orders\n" + kinetics)
        run = subprocess.run([*sys.argv[1:3], "run", library / folder / "case.json"], stdin=subprocess.DEVNULL,
                             capture_output=True, text=True)
        place = re.search(r"^(?:\S*/)?(\w+\.m):(\d+):\d+: (.*)\n", run.stderr, re.MULTILINE)
        if run.returncode != 1 or not place or not place[3].startswith(text) or "Calculate failed at " not in run.stderr:
            raise SystemExit(f"{folder}: exit code {run.returncode}, not {text!r}: {run.stderr}")
        script = next(library.glob("*/" + place[1]))
        line = script.read_text().splitlines()[int(place[2]) - 1]
    if "error(" not in line:
        raise SystemExit(f"{place[0]} is not the place of an error: {line}")
    return script.name, line


def main():
    rows = ROWS + [(folder, {}, {}, text, lines) for folder, lines, text in KINETICS]
    with ThreadPoolExecutor(os.cpu_count()) as pool:
        refused = set(pool.map(lambda row: refusal(*row), rows))
    calls = {(script.name, line) for script in Path(sys.argv[3]).glob("*/*.m") for line in script.read_text().splitlines()
             if re.match(r"\s*error\(", line)}
    missed = [call for call in calls - refused if not any(text in call[1] for text in UNREACHED)]
    if missed:
        raise SystemExit(f"these refusals have no row: {missed}")
    print(f"{len(rows)} refusals come with their place")


main()
