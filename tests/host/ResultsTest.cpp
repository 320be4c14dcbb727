#include "results/Balances.h"
#include "results/ResultsJson.h"
#include "results/ResultsText.h"
#include "results/ScriptError.h"
#include "results/Warnings.h"

#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

#include <array>
#include <limits>
#include <sstream>

namespace solvane::host {

namespace {

RunResults someResults() {
    RunResults results;
    results.generation = Generation::v10;
    results.compounds = {"methane", "propane"};
    results.streams = {{"Zufluß", 300, 2e6, 100, {0.25, 0.75}, 0.5, -1234.5, -9e4},
                       {"A stream with a long name", 260.125, 1.5e5, 0, {1, 0}, 1, 10, 20}};
    results.balances = {{"Drum", {1.5, 1.25}, {100, 100}, {-5e3, 2e3}, true}};
    results.warnings = {{"Drum", "stream top", "it is odd"}};
    results.units = {
        {.name = "Drum",
         .parameters = {{.name = "T", .value = 260.0},
                        {.name = "duty",
                         .isInput = false,
                         .value = -1.5e6,
                         .dimensionality = {2, 1, -3, 0, 0, 0, 0, 0}},
                        {.name = "none", .isInput = false, .value = std::numeric_limits<double>::quiet_NaN()},
                        {.name = "odd", .isInput = false},
                        {.name = "how", .isInput = false, .value = std::string("fast")}},
         .reports = {{"Matlab Output", "MATLAB output:\r\n"}}}};
    return results;
}

TEST(ResultsJson, holdsStreamsParametersAndReports) {
    RunResults results = someResults();
    auto expected = nlohmann::json::parse(R"({
        "generation": "1.0",
        "streams": [
          { "name": "Zufluß", "temperature": 300.0, "pressure": 2000000.0, "totalFlow": 100.0,
            "fraction": { "methane": 0.25, "propane": 0.75 }, "vaporFraction": 0.5, "enthalpy": -1234.5,
            "enthalpyF": -90000.0 },
          { "name": "A stream with a long name", "temperature": 260.125, "pressure": 150000.0,
            "totalFlow": 0.0, "fraction": { "methane": 1.0, "propane": 0.0 }, "vaporFraction": 1.0,
            "enthalpy": 10.0, "enthalpyF": 20.0 } ],
        "balances": [ { "unit": "Drum", "mass": { "in": 1.5, "out": 1.25 }, "moles": { "in": 100.0, "out": 100.0 },
                        "enthalpy": { "in": -5000.0, "out": 2000.0 }, "reacts": true } ],
        "warnings": [ { "unit": "Drum", "subject": "stream top", "text": "it is odd" } ] })");
    const auto unit = nlohmann::json::parse(R"({
        "parameters": { "T": 260.0, "duty": -1500000.0, "none": null, "odd": null, "how": "fast" },
        "reports": { "Matlab Output": "MATLAB output:\r\n" } })");
    auto ofOne = expected;
    ofOne.update(unit);
    EXPECT_EQ(nlohmann::json::parse(resultsJson(results)), ofOne);

    results.isFlowsheet = true;
    expected["units"] = {unit};
    expected["units"][0]["name"] = "Drum";
    EXPECT_EQ(nlohmann::json::parse(resultsJson(results)), expected);
}

TEST(StreamTable, alignsItsColumnsByCharacters) {
    std::istringstream table(streamTable(someResults()));
    std::vector<std::string> lines;
    for (std::string line; std::getline(table, line);)
        lines.push_back(line);
    ASSERT_EQ(lines.size(), 8u);
    EXPECT_EQ(lines[0], "Stream                      Zufluß  A stream with a long name");
    EXPECT_EQ(lines[1], "Temperature      K         300.000                    260.125");
    EXPECT_EQ(lines[2], "Pressure         bar       20.0000                     1.5000");
    EXPECT_EQ(lines[5], "Enthalpy         J/mol    -1234.50                      10.00");
    EXPECT_EQ(lines[7], "x propane        mol/mol   0.75000                    0.00000");
}

TEST(Balances, coverMassMolesAndEnthalpy) {
    const std::array compounds{findCompound("carbon monoxide"), findCompound("water"),
                               findCompound("carbon dioxide"), findCompound("hydrogen")};
    const StreamResult syngas{"in", 600, 1e5, 2, {0.5, 0.5, 0, 0}, 1, 1e3, -2e5};
    const StreamResult shifted{"out", 700, 1e5, 2, {0.25, 0.25, 0.25, 0.25}, 1, 9e3, -2e5 + 50};
    const StreamResult half{"half", 600, 1e5, 1, {0.5, 0.5, 0, 0}, 1, 1e3, -2e5};
    const auto table = [&](std::vector<const StreamResult*> products) {
        return balanceTable(balanceOf("R", compounds, std::array{&syngas}, products));
    };
    EXPECT_EQ(table({&half, &half}), "Balance              in     out  out - in\n"
                                     "Mass      kg/s   0.0460  0.0460    0.0000\n"
                                     "Moles     mol/s  2.0000  2.0000    0.0000\n"
                                     "Enthalpy  kW     2.0000  2.0000    0.0000\n");
    EXPECT_EQ(table({&shifted}), "Balance                in        out  out - in\n"
                                 "Mass      kg/s     0.0460     0.0460    0.0000\n"
                                 "Enthalpy  kW    -400.0000  -399.9000    0.1000\n");
}

TEST(Warnings, reportImplausibleResults) {
    UnitResult unit = someResults().units[0];
    const Balance lossy{"Drum", {2, 1}, {2, 1}, {0, 0}};
    const StreamResult sound{"sound", 300, 1e5, 1, {0.25, 0.75}}, half{"half", 300, 1e5, 1, {0.25, 0.25}},
        backwards{"backwards", 300, 1e5, -1, {1, 0}}, cold{"cold", 100, 1e5, 0, {1, 0}};
    std::vector<Warning> warnings;
    addWarnings(unit, lossy, std::array{&sound, &half, &backwards, &cold}, warnings);
    EXPECT_EQ(warningLines(warnings),
              "warning: Drum, stream half: the mole fractions sum to 0.5, not to 1\n"
              "warning: Drum, stream backwards: the flow, -1 mol/s, must not be negative\n"
              "warning: Drum, stream cold: the temperature, 100 K, lies outside 150 to 1500 K, the range "
              "of the package's heat capacities\n"
              "warning: Drum, parameter none: the output has no value: the script never set it\n"
              "warning: Drum, parameter odd: the output has no value: the script never set it\n"
              "warning: Drum, balance: 2 kg/s go in and 1 kg/s come out\n");
}

TEST(ScriptErrors, readAsEditorsExpect) {
    Case flowsheet;
    flowsheet.units.resize(1);
    RunResults results = someResults();
    const auto lineFor = [&](const std::string& printed) {
        results.units[0].reports[0].text = "MATLAB output:\nEvaluation error: " + printed;
        const auto error = findScriptError(flowsheet, results);
        return error ? scriptErrorLine(*error) : "none";
    };
    EXPECT_EQ(lineFor("two\n  lines\nMATLAB done\nat tidy.m line 3\nat script line 1, column 2\ntwo, lines"),
              "tidy.m:3: two, lines");
    EXPECT_EQ(lineFor("mine\nMATLAB done\nat script line 1, column 2\n"), "script:1:2: mine");
    flowsheet.units[0].model = UnitModel{.script = {.name = "drum.m"}};
    EXPECT_EQ(lineFor("'x' undefined near line 14, column 5\nMATLAB done\nat script line 12, column 5\n"),
              "drum.m:12:5: 'x' undefined");
    EXPECT_EQ(lineFor("parse error near line 4 of file C:\\A b\\unitCalc.m\r\n\r\n  syntax error\r\n\r\n>>> "
                      "y = (1 + ;\r\n"
                      "             ^\nMATLAB done\nat script line 2, column 10\n"),
              "drum.m:2:10: parse error, syntax error");
    EXPECT_EQ(lineFor("mine\nMATLAB done\nmine"), "none");
    results.units.clear();
    EXPECT_FALSE(findScriptError(flowsheet, results));
}

TEST(OutputParameters, appearWithTheirUnits) {
    EXPECT_EQ(outputParameterLines(someResults().units[0]), "duty  W  -1.5e+06\n"
                                                            "none          nan\n"
                                                            "odd             ?\n"
                                                            "how          fast\n");
}

} // namespace

} // namespace solvane::host
