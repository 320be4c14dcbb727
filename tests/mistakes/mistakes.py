"""Makes one mistake after the other in three units that run, and expects that a run tells it in its first line.

    mistakes.py WINE SOLVANEHOST UNITS

UNITS holds a compressor, a mixer with a splitter, and an adiabatic reactor with data files, each with its case.
"""
import os
import re
import shutil
import subprocess
import sys
import tempfile
from concurrent.futures import ThreadPoolExecutor
from pathlib import Path

HOST, UNITS = sys.argv[1:3], Path(sys.argv[3])

# Per unit and file: what is replaced (all for None), by what, and how the first line of the errors and warnings begins.
MISTAKES = {
    ("compressor", "compressor.m"): [
        ("'enthalpy');\ns1", "'enthalpy';\ns1", "compressor.m:6:17: parse error: '(' in line 6 is not closed"),
        ("'entropy', s1,", "'entropy, s1,", "compressor.m:8:54: parse error: the text in line 8 ends at the quote"),
        ("P2, 'entropy'", "P2; 'entropy'",
         "compressor.m:8:38: parse error: ';' in line 8 stands between '(' and ')'; write ',' between arguments"),
        (None, "x = 1;\n".encode("utf-16"), "compressor.m:1: parse error: the script is not plain text: save it in UTF-8"),
        ("s1 = ", "M = getCompoundConstant('molarMass'); s1 = ",
         "compressor.m:7:5: Invalid return values from GetCompoundConstant: values not available; did you mean 'molecularW"),
        ("'efficiency'", "\u2019efficiency\u2019", "compressor.m:3:20: parse error: a typographic quote (U+2019) in line 3"),
        ("F = get", "F =\u00a0get", "compressor.m:4:4: parse error: a non-breaking space (U+00A0) in line 4"),
        ("('efficiency')", "['efficiency']", "compressor.m:3:19: parse error: write an index in parentheses, as in x(1)"),
        ("(h2s - h1)", "(h2S - h1)", "compressor.m:9:12: 'h2S' undefined"),
        ("'outlet pressure'", "'outletpressure'",
         "compressor.m:2:6: Invalid parameter name: outletpressure; did you mean 'outlet pressure'?"),
        ("'outlet pressure'", "'press'", "compressor.m:2:6: Invalid parameter name: press; did you mean 'outlet pressure'?"),
        ("getFeedProp(1, 'entropy')", "getfeedprop(1, 'entropy')",
         "compressor.m:7:6: 'getfeedprop' undefined; did you mean 'getFeedProp'?"),
        ("flashProperty", "flashProp", "compressor.m:8:7: 'flashProp' undefined"),
        ("h2s = flash", "[h2s, T2] = flash", "compressor.m:8:13: flashProperty: function called with too many outputs"),
        ("'pressure', P2, 'entropy', s1, 'enthalpy'", "'enthalpy', 'pressure', P2, 'entropy', s1",
         "compressor.m:8:7: flashProperty: value1 must be one real, finite number, got text. Usage: value = flashProperty("),
        ("/ eta;", "/ eta; h2 = h2 + sqrt(-1);",
         "compressor.m:10:1: setProduct: value2 must be one real, finite number, got 1 by 1 complex values"),
        ("getParameter('efficiency')", "input('eta? ')", "compressor.m:3:7: input waits for a user"),
        ("setParameter('power', F * (h2 - h1));", "exit", "compressor.m:11:1: exit would end Octave"),
        ("h2s = flash", "clear all; h2s = flash", "compressor.m:8:32: 'z' undefined; 'clear all' in compressor.m:8 has removed it"),
        ("% Compressor", "getFeedProp = 3;\n% Compressor",
         "compressor.m:5:3: getFeedProp(_,119): out of bound 1 (dimensions are 1x1) (note: variable 'getFeedProp' shadows"),
        ("% Compressor", "function k1()\n% Compressor",
         "warning: K1, script: the script begins with the function in line 1, which nothing calls"),
        ("setParameter('power', F * (h2 - h1));\n", "", "warning: K1, parameter power: the output has no value"),
        ("F * (h2 - h1));\n", "F * (h2 - h1) / 1000);\n",
         "warning: K1, parameter power: the enthalpies change by 1.7486e+06 W"),
        ("P2, 'enthalpy', h2);", "P2, 'enthalpy', h2 * 1000);",
         "compressor.m:10: Failed to flash product 1 (Discharge): The flash failed: the enthalpy 6.27294e+06"),
        ("P2, 'enthalpy', h2);", "P2, 'enthalpy', F * h2);",
         "compressor.m:10: Failed to flash product 1 (Discharge): The flash failed: the enthalpy 1.74248e+06 at 500000 Pa "
         "lies outside -18304.9 to 223208, the values from 50 K to 3000 K (J/mol); flashes take values per mol"),
        ("'entropy', s1,", "'entropy', F * s1,",
         "compressor.m:8:7: Failed to calculate equilibrium: The flash failed: the entropy 1431.77 at 500000 Pa "
         "lies outside -141.607 to 157.242, the values from 50 K to 3000 K (J/mol/K); flashes take values per mol"),
        ("P2, 'enthalpy', h2);", "P2, 'temperature', 25);",
         "compressor.m:10: Failed to flash product 1 (Discharge): The flash failed: the temperature 25 K lies outside 50 to "
         "3000 K; temperatures are in K: 25 degC are 298.15 K"),
        ("P2, 'enthalpy', h2);", "P2, 'temperature', 173);",
         "warning: K1, stream Discharge: the temperature is 173 K, but the unit's enthalpies balance at 446.15 K"),
        ("% Compressor", "Dim P2 As Double\n% Compressor",
         "warning: K1, script: compressor.m:1: Matlab does not know 'Dim'; a variable needs no declaration: x = 0"),
        ("/ eta;", "/ eta / 1000;", "warning: K1, balance: the entropy falls by 3685.98 W/K, although the unit"),
        ("(h2s - h1)", "(h1 - h2s)",
         "warning: K1, balance: the enthalpies change by -1.7486e+06 W: this is the isentropic change, 1.31145e+06 W, with the "
         "efficiency 0.75 and the wrong sign"),
        ("'entropy', s1,", "'entropy', h1,",
         "warning: K1, balance: the ideal machine has the entropy -22.0226 J/mol/K in its product: this is the feed's enthalpy"),
        ("P2, 'enthalpy', h2);", "P2, 'entropy', s1);",
         "warning: K1, parameter power: the product has the entropy of the feed, and its enthalpy changes by 1.31145e+06 W"),
        ("F * (h2 - h1));\n", "F * (h2 - h1) / 0.95);\n", ""),
        ("('outlet pressure');", "('outlet pressure') / 1e5;", "warning: K1, stream Discharge: the pressure, 5 Pa, lies far below"),
    ],
    ("compressor", "case.json"): [
        ('"mode": "output"', '"mode": "input", "value": 0',
         "warning: K1, script: compressor.m:11: the script sets the input 'power', and never gets it"),
        ('"5 bar"', "5", 'warning: K1, parameter outlet pressure: the value, 5, has no unit'),
        ('"5 bar", "dimensionality": "Pa"', '"5 bar"',
         'error: case.json: model.parameters["outlet pressure"].value: "5 bar" has a unit, but the quantity has no dimension'),
        ('"25 degC"', "25", 'warning: K1, stream Suction: the temperature, 25, has no unit and is read as 25 K'),
        ('"25 degC"', '"25 C"',
         'error: case.json: feeds["Suction"].temperature: "25 C" has an unknown unit; did you mean "degC"?'),
        ('"1000 kmol/h"', '"1000"', 'error: case.json: feeds["Suction"].flow: "1000" has no unit'),
        ("0.75,", '"0,75",', 'error: case.json: model.parameters["efficiency"].value: "0,75" has a comma'),
        ("0.75,", "75,", 'error: case.json: model.parameters["efficiency"].value: the value lies above the maximum, 1'),
        ('"products": ["Discharge"],', '"products": ["Discharge",],', "error: case.json:8:28: syntax error: remove the comma"),
        ('"products": ["Discharge"],', "", 'error: case.json: the key "products" is missing'),
        ('"compressor.m"', '"compresor.m"', "error: case.json: model.script: the file compresor.m does not exist"),
    ],
    ("mixer-splitter", "mixer.m"): [
        ("'pressure'));\nend", "'pressure'));", "mixer.m:4:1: parse error: 'for' in line 4 has no 'end'"),
        ("F = sum(n);", "end\nF = sum(n);", "warning: MS, script: 'end' in line 9 ends no block"),
        ("F = sum(n);", "%{\nF = sum(n);", "warning: MS, script: the block comment that starts in line 9 is not closed"),
        ("if F > 0", "if F = 0", "warning: MS, script: '=' in line 11 assigns"),
        ("else\n", "else if F == 0\n", "mixer.m:15:6: parse error: 'else if' in line 15 has no 'end' of its own"),
        ("for i = 1", "for i 1", "mixer.m:4:7: parse error: for i 1:getFeedCount"),
        ("for i = 1", "for i = 0", "mixer.m:5:13: port number out of range for getFeedProp; expected 1 to 2, got 0"),
        ("zeros(nComp, 1)", "zeros(4, 1)", "mixer.m:5:7: operator +: nonconformant arguments (op1 is 4x1, op2 is 3x1)"),
        ("zeros(nComp, 1)", "zeros(1, nComp)", "mixer.m:13:5: operator /: nonconformant arguments (op1 is 1x1, op2 is 1x3)"),
        ("z = n / F;", "z = n / F; w = z * z;", "mixer.m:12:18: operator *: nonconformant arguments (op1 is 3x1, op2 is 3x1); "
         "write .* to multiply element by element"),
        ("F = sum(n);", "F = int32(sum(n));", "mixer.m:13:5: setProduct: composition must be a full vector of 3 real, finite "
         "doubles, the mole fraction of each compound, got 3 by 1 values that are not doubles, as int32(x) makes them"),
        ("F = sum(n);", "F = sum(n); P = P - 20e5;",
         "error: case.json: Calculate failed: Failed to flash product 1 (Main): The flash failed: the pressure -1.2e+06 Pa is "
         "not positive; more pressure is lost than there is"),
        ("getFeedProp(i, 'enthalpy')", "getFeedProp(i, 'enthalpyF')",
         "error: case.json: Calculate failed: Failed to flash product 1 (Main): The flash failed: the enthalpy -143182 at "
         "800000 Pa lies outside -48020.8 to 639522, the values from 50 K to 3000 K (J/mol); the mixture of the feeds has "
         "this 'enthalpyF': use 'enthalpyF' throughout"),
        ("setProduct(1, s", "setProduct('Main', s", "mixer.m:13:5: setProduct: product must be one whole number, counted from "
         "1, got text. Usage: setProduct(product, flow, composition, name1, value1, name2, value2); products are numbered: "
         "'Main' is 1, 'Side' is 2"),
        ("sprintf('total %.3f mol/s at %.2f bar', F, P / 1e5)", "['total'; 'state']", "mixer.m:21:1: setReport: content must be "
         "text in single quotes, got 2 by 5 characters; [a; b] stacks texts: write [a b]"),
        ("z = n / F;", "z = n;", "warning: MS, stream Main: the mole fractions sum to 100, not to 1"),
        ("z = n / F;", "z = n / F * 1.1;", "warning: MS, stream Main: the mole fractions sum to 1.1, not to 1"),
        ("setProduct(1, s * F, z, 'pressure', P, 'enthalpy', H / F);",
         "setProduct(1, z, s * F, 'pressure', P, 'enthalpy', H / F);",
         "mixer.m:13:5: setProduct: flow must be one real, finite number, got 3 by 1 values"),
        ("setProduct(1, s * F,", "setProduct(1, 0,7 * F,",
         "mixer.m:13:5: setProduct: expected 7 arguments, got 8. Usage: setProduct(product, flow, composition, name1, value1, name2, "
         "value2); 0,7 is two arguments: write 0.7"),
        ("setProduct(1, s * F, z, 'pressure', P, 'enthalpy', H / F);",
         "setProduct(1, s * F, z, 'pressure', P);",
         "mixer.m:13:5: setProduct: expected 7 arguments, got 5"),
        ("setProduct(2, (1", "setProduct(1, (1",
         "error: case.json: Calculate failed: setProduct was not called for product 2 (Side)"),
        ("setProduct(2, (1 - s)", "setProduct(2, s", "warning: MS, balance: 5.868508 kg/s go in and 8.215911 kg/s come out; each compound comes out 1.4 times"),
        ("n = n + getFeedProp(i, 'flow')", "n = getFeedProp(i, 'flow')",
         "warning: MS, balance: 5.868508 kg/s go in and 3.824088 kg/s come out; what comes out is feed B alone"),
        ("if F > 0", "if F < 0",
         "warning: MS, balance: 5.868508 kg/s go in and 0 kg/s come out; no product has flow, although the feeds have"),
        ("(1 - s) * F, z", "(1 - s) * F, getFeedProp(1, 'fraction')",
         "warning: MS, balance: 5.868508 kg/s go in and 5.641271 kg/s come out; stream Side has the composition of feed A"),
        ("setProduct(2, (1 - s)", "setProduct(2, -s", "warning: MS, stream Side: the flow, -70 mol/s, must not be negative; the balance closes"),
        ("setProduct(1, s * F, z, 'pressure', P, 'enthalpy', H / F);",
         "setProduct(1, s * F, z, 'pressure', P, 'temperature', 57);",
         "warning: MS, stream Main: the temperature is 57 K, but the unit's enthalpies balance at 330.15 K"),
        ("H = H + getFeedProp(i, 'totalFlow')", "H = H * getFeedProp(i, 'totalFlow')",
         "warning: MS, stream Main: the enthalpy, 0 J/mol, is not that of the feeds"),
        ("getFeedProp(i, 'totalFlow') * getFeedProp(i, 'enthalpy')", "getFeedProp(i, 'enthalpy')",
         "warning: MS, stream Main: the enthalpy, -338.825 J/mol, is the sum of the feeds' molar enthalpies over their flow"),
        ("(1 - s) * F, z, 'pressure', P, 'enthalpy', H / F", "(1 - s) * F, z, 'pressure', P, 'enthalpy', (1 - s) * H / F",
         "warning: MS, stream Side: the enthalpy, -4978.62 J/mol, is that of the feeds, -16595.4 J/mol, times the part"),
        ("getFeedProp(i, 'enthalpy')", "getFeedProp(1, 'enthalpy')",
         "warning: MS, stream Main: the enthalpy, -18670.6 J/mol, counts that of feed A in place of that of feed B"),
        ("z = n / F;", "z = n / F; H = F * flashProperty(z, 'pressure', P, 'temperature', 325, 'enthalpy');",
         "warning: MS, balance: the enthalpies change by -118326 W: the products have the mean of the feeds' temperatures, 325 K"),
        ("z = n / F;", "z = (getFeedProp(1, 'fraction') + getFeedProp(2, 'fraction')) / 2;",
         "warning: MS, balance: 5.868508 kg/s go in and 5.742265 kg/s come out; the products have the mean of the feeds' "
         "compositions, not weighted by their flows"),
        ("if F > 0\n    z", "if compNames(1) == 'propane', F = F; end\nif F > 0\n    z",
         "mixer.m:11:17: binary operator '==' not implemented for 'cell' by 'matrix' operations; compare texts with strcmp"),
        ("if F > 0\n    z", "if compNames{1} == 'n-butane', F = F; end\nif F > 0\n    z",
         "mixer.m:11:17: nonconformant arguments (op1 is 1x7, op2 is 1x8); compare texts with strcmp"),
        (None, "% nothing yet\n", "warning: MS, script: it is empty, or has only comments; let it call setProduct"),
        ("    H = H +", "    h = H +", "warning: MS, script: mixer.m:6: nothing reads 'h', and 'H' keeps its first value"),
        ("getParameter('split')", "0,7", "warning: MS, script: mixer.m:10: the comma in 's = 0,7' ends the statement"),
        ("if F > 0\n", "If F > 0 Then\n", "warning: MS, script: mixer.m:11: Matlab does not know 'If'; write if, without Then"),
        ("n = zeros", "clear\nn = zeros", "mixer.m:2:11: 'nComp' undefined; 'clear' in mixer.m:1 has removed it"),
        ("%.2f bar', F, P / 1e5", "%.2f bar, %s', F, P / 1e5, compNames(1)",
         "error: case.json: Calculate failed: sprintf: wrong type argument 'cell'; sprintf is called in line 21; compNames(1) is "
         "a cell: write compNames{1} in mixer.m:21"),
        ("else\n", "Else\n", "warning: MS, script: mixer.m:15: Matlab does not know 'Else'; write else"),
        ("for i = 1", "fro i = 1", "mixer.m:4:1: 'fro' undefined; did you mean 'for'?"),
        ("else\n", "esle\n", "mixer.m:15:1: 'esle' undefined; did you mean 'else'?"),
        ("'Summary'", "'Sumary'", "mixer.m:21:1: Invalid report name: Sumary; did you mean 'Summary'?"),
        ("if F > 0\n    z", "if n(strcmpi(compNames, 'butane')) > 9, s = 1; end\nif F > 0\n    z",
         "warning: MS, names in the script: mixer.m:11: 'butane' is not the name of a compound; write 'n-butane'"),
    ],
    ("mixer-splitter", "case.json"): [
        ('"temperature": 300', '"temperature": 27', 'warning: MS, stream A: the temperature, 27, has no unit'),
        ('"pressure": 8e5', '"pressure": 8', 'warning: MS, stream A: the pressure, 8, has no unit and is read as 8 Pa'),
        ('"maximum": 1 }', '"maximum": 1 }, { "name": "pressure drop", "kind": "real", "mode": "input", "value": 0.5, "dimensionality": "Pa" }',
         "warning: MS, parameter pressure drop: the value, 0.5, has no unit and is read as 0.5 Pa"),
        ('"Side"]', '"Main"]', 'error: case.json: products[1]: the name "Main" is already taken'),
        ('"Side"]', '"Side", "Third"]', "error: case.json: Calculate failed: setProduct was not called for product 3 (Third)"),
        (', "Side"]', ']', "mixer.m:14:5: port number out of range for setProduct; expected 1, got 2"),
        ('"n-pentane": 0.1', '"pentane": 0.1', 'error: case.json: feeds["A"].composition.pentane: the compound is not'),
        ('"n-pentane": 0.1', '"n-pentane": 0.2',
         'error: case.json: feeds["A"].composition: the mole fractions sum to 1.1, not to 1'),
        ('["propane", "n-butane"', '["propane", "nbutane"', 'error: case.json: compounds[1]: the compound "nbutane" is unknown'),
        ('"pressure": 8e5', '"presure": 8e5', 'error: case.json: feeds["A"]: the key "presure" is unknown'),
        ('"flow": 40', '"flow": "40 kmol/hr"',
         'error: case.json: feeds["A"].flow: "40 kmol/hr" has an unknown unit; did you mean "kmol/h"?'),
        ('0.1 } },', '0.1 } }', "error: case.json:7:5: syntax error: a comma is missing before this"),
    ],
    ("shift-reactor", "reactor.m"): [
        ("'enthalpyF');\nV", "'entalpyF');\nV",
         "reactor.m:11:4: Unknown/unsupported property \"entalpyF\" in getFeedProp; did you mean 'enthalpyF'?"),
        ("'kinetics.csv'", "'kinetic.csv'", "reactor.m:2:8: dlmread: unable to open file 'kinetic.csv'; did you mean 'kinetics.csv'?"),
        ("csvread('kinetics.csv', 1, 0)", "readtable('kinetics.csv')", "reactor.m:2:6: 'readtable' undefined"),
        ("kin.rho * kin.activity", "kin.rho * [kin.activity 1]",
         "reactor.m:45:16: operator /: nonconformant arguments (op1 is 1x1, op2 is 1x2); the function that ode45 calls must"),
        ("[ph, fr, x, T] = flashEquilibrium(z, 'pressure', P, 'enthalpyF', H);\nelse", "T = flashEquilibrium(z, 'pressure', P, 'enthalpyF', H);\nelse",
         "reactor.m:35:1: setProduct: value1 must be one real, finite number, got a cell, 1 by 1. Usage: setProduct(product, flow, "
         "composition, name1, value1, name2, value2); T is the first result of flashEquilibrium in reactor.m:29, the phases; write"),
        ("kin.rho * kin.activity", "kin.rho * [kin.activity; 1]",
         "reactor.m:44:3: operator *: nonconformant arguments (op1 is 5x1, op2 is 2x1); the function that ode45 calls must"),
        ("cat.bulkDensity", "cat.bulkdensity", "reactor.m:6:9: structure has no member 'bulkdensity'"),
        ("getFeedProp(1, 'enthalpyF')", "getFeedProp(1, 'enthalpy')",
         "reactor.m:45:18: Failed to calculate equilibrium: The flash failed: the enthalpyF 10337.6 at 2e+06 Pa lies outside"),
        ("nu([co2 h2]) = 1;", "nu(co2) = 1;", "warning: WGS, balance: 2.224208 kg/s go in and 2.210498 kg/s come out"),
        ("@(v, xi) slope(v, xi, n0, nu, P, H0, kin)", "@slope",
         "reactor.m:44:5: 'n0' undefined; ode45 calls slope with 2 of its 7 arguments; write @(v, xi) slope(v, xi, n0, nu, P, H0, kin)"),
        ("d = rate(", "d = V * rate(", "reactor.m:47:5: 'V' undefined; it is a variable of the script, which functions do not see"),
        ("d = slope(v, xi,", "d = slope(xi, v,", "warning: WGS, script: reactor.m:25: the call passes 'v' and 'xi' to slope"),
        ("cat = load('catalyst.mat');", "load catalyst.mat", "reactor.m:6:9: Invalid call to cat.  Correct usage is:, -- cat (DIM, ARRAY1, ARRAY2, ..., ARRAYN); load without a result"),
        ("* P / 1e5", "* P",
         "reactor.m:45:18: Failed to calculate equilibrium: The flash failed: the mole fraction of carbon monoxide, -69.5621, is "
         "negative, in a step of ode45; a rate, or the step, is far too large: look at the units of R and E"),
        ("* xi(end);", "* xi(end) * 3;",
         "reactor.m:29:22: Failed to calculate equilibrium: The flash failed: the mole fraction of carbon monoxide, -0.00841791, "
         "is negative; more is taken away than there is"),
        ("'carbon monoxide'", "'CO'",
         "warning: WGS, names in the script: reactor.m:14: 'CO' is not the name of a compound; write 'carbon monoxide'"),
        ("'enthalpyF', H);", "'enthalpy', getFeedProp(1, 'enthalpy') - 41.2e3 * xi(end) / sum(n));",
         "warning: WGS, stream Shifted: the reaction gives off "),
        ("'enthalpyF', H);", "'enthalpy', getFeedProp(1, 'enthalpy') + 41.2e3 * xi(end) / sum(n));", ""),
        ("z, 'temperature', T", "z, 'temperature', getFeedProp(1, 'temperature')",
         "warning: WGS, stream Shifted: the temperature is 623.15 K, but the unit's enthalpies balance at 670.9254 K"),
        ("P = getFeedProp(1, 'pressure');", "P = getFeedProp(1, 'pressure') * 1.01;",
         "warning: WGS, stream Shifted: the pressure, 2020000 Pa, lies above that of all feeds"),
        ("setParameter('outlet temperature', T);", "setParameter('outlet temperature', T - 273.15);",
         "warning: WGS, parameter outlet temperature: the value, 397.7754 K, is the temperature of stream Shifted in degC"),
    ],
    ("shift-reactor", "rate.m"): [
        ("k0 *", "k00 *", "rate.m:6:3: structure has no member 'k00'"),
        ("k * (p", "k * ((p", "rate.m:7:9: parse error: '(' in line 7 of rate.m is not closed"),
        ("/ K);\n", "/ K);\nend\nend\n", "rate.m:9:3: parse error: end"),
        ("8.314;", "8.314; q = zeros(nComp, 1);", "rate.m:3:22: 'nComp' undefined; functions see what the unit gives the script after a line 'global nComp'"),
        ("exp(-kin.E", "exp(kin.E",
         "reactor.m:45:18: Failed to calculate equilibrium: The flash failed: the mole fraction of carbon monoxide, -0.496424, "
         "is negative, in a step of ode45; a rate, or the step, is far too large: look at the units of R and E in exp(-E/(R*T)), "
         "at its sign"),
        ("8.314;", "rate(T, p, kin);", "rate.m:3:5: max_recursion_depth exceeded"),
        ("8.314;", "0.008314;", "warning: WGS, parameter conversion: it is 0: nothing reacts; look at what makes the rate vanish"),
    ],
    ("shift-reactor", "kinetics.csv"): [
        ("0.5,47400", "0.5;47400", "warning: WGS, script: the numbers in line 2 of kinetics.csv are separated by semicolons"),
        ("0.5,47400", "0.5\t47400", "warning: WGS, script: the numbers in line 2 of kinetics.csv are separated by tabs"),
        ("0.5,47400", "0.5,47 400", 'warning: WGS, script: "47 400" in line 2 of kinetics.csv is not a number'),
        ("0.5,47400", "0.5,47.4 kJ/mol", 'warning: WGS, script: "47.4 kJ/mol" in line 2 of kinetics.csv is not a number'),
        ("0.5,47400", "0.5", "reactor.m:5:7: data(_,2): out of bound 1 (dimensions are 1x1)"),
        ("0.5,47400\n", "", "warning: WGS, script: kinetics.csv has no numbers where it is read"),
        ("k0,E", "WGS kinetics\nk0,E", 'warning: WGS, script: "k0" in line 2 of kinetics.csv is not a number'),
        ("0.5,47400", "0.5,47,400", "warning: WGS, script: lines 1 and 2 of kinetics.csv have 2 and 3 cells"),
    ],
    ("shift-reactor", "case.json"): [
        (', "rate.m"', "", "reactor.m:47:5: 'rate' undefined; rate.m lies beside the script, but the model does not list it"),
        ('"rate.m"', '"rates.m"', "error: case.json: model.files[2]: the file rates.m does not exist"),
        (' "catalyst.mat",', "", "reactor.m:3:7: load: unable to find file catalyst.mat; it lies beside the script, but the model does not list it"),
    ],
}


def told(unit, mistake):
    """What a run with the mistake prints first as error or warning."""
    with tempfile.TemporaryDirectory() as name:
        folder = Path(name) / unit
        shutil.copytree(UNITS / unit, folder)
        if mistake:
            file, old, new = mistake
            text = (folder / file).read_text()
            if old and text.count(old) != 1:
                raise SystemExit(f"{file} has {old!r} {text.count(old)} times")
            if old:
                new = text.replace(old, new)
            (folder / file).write_bytes(new if isinstance(new, bytes) else new.encode())
        run = subprocess.run([*HOST, "run", "case.json"], cwd=folder, stdin=subprocess.DEVNULL, capture_output=True, text=True)
    lines = (run.stderr + "\n" + run.stdout).splitlines()
    return next((line for line in lines if re.match(r"warning: |error: |\S+\.m:\d", line)), "")


def main():
    rows = [(unit, (file, old, new), text) for (unit, file), mistakes in MISTAKES.items() for old, new, text in mistakes]
    rows += [(unit, None, "") for unit in {row[0] for row in rows}]
    with ThreadPoolExecutor(os.cpu_count()) as pool:
        lines = list(pool.map(lambda row: told(*row[:2]), rows))
    missed = [f"{unit}, {mistake}: {line!r} instead of {text!r}"
              for (unit, mistake, text), line in zip(rows, lines) if not (line.startswith(text) if text else line == "")]
    if missed:
        raise SystemExit("\n".join(missed))
    print(f"{len(rows)} runs tell in their first line what is wrong, if anything is")


main()
