#include "results/Abridged.h"
#include "results/Balances.h"
#include "results/FlowsheetDrawing.h"
#include "results/ResultTables.h"
#include "results/ResultsCsv.h"
#include "results/ResultsHtml.h"
#include "results/ResultsJson.h"
#include "results/ScriptError.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

#include <array>
#include <limits>
#include <regex>
#include <sstream>

namespace solvane::host {

namespace {

RunResults someResults() {
    RunResults results;
    results.generation = Generation::v10;
    results.compounds = {"methane", "propane"};
    results.streams = {{"Zufluß", 300, 2e6, 100, {0.25, 0.75}, 0.5, -1234.5, -9e4},
                       {"A stream with a long name", 260.125, 1.5e5, 0, {1, 0}, 1, 10, 20}};
    results.balances = {{"Drum", {1.5, 1.25}, {100, 100}, {-5e3, 2e3}, {}, true}};
    results.warnings = {{"Drum", "stream top", "it is odd"}};
    results.streams[0].massFlow = 3;
    results.streams[0].phases = {{"Vapor", 0.5, {0.5, 0.5}}, {"Liquid", 0.5, {0, 1}}};
    results.balances[0].elements = {{"C", {1, 2}}};
    results.log = {{"Drum", "starts"}};
    results.units = {
        {.name = "Drum",
         .status = UnitStatus::calculated,
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
        "ok": true, "generation": "1.0",
        "unitsOfMeasure": { "temperature": "K", "pressure": "Pa", "totalFlow": "mol/s", "massFlow": "kg/s",
                            "enthalpy": "J/mol", "balances": { "mass": "kg/s", "moles": "mol/s", "elements": "mol/s",
                                           "enthalpy": "W" } },
        "streams": [
          { "name": "Zufluß", "temperature": 300.0, "pressure": 2000000.0, "totalFlow": 100.0, "massFlow": 3.0,
            "phases": [ { "label": "Vapor", "amount": 0.5, "fraction": { "methane": 0.5, "propane": 0.5 } },
                        { "label": "Liquid", "amount": 0.5, "fraction": { "methane": 0.0, "propane": 1.0 } } ],
            "fraction": { "methane": 0.25, "propane": 0.75 }, "vaporFraction": 0.5, "enthalpy": -1234.5,
            "enthalpyF": -90000.0 },
          { "name": "A stream with a long name", "temperature": 260.125, "pressure": 150000.0,
            "totalFlow": 0.0, "massFlow": 0.0, "phases": [], "fraction": { "methane": 1.0, "propane": 0.0 }, "vaporFraction": 1.0,
            "enthalpy": 10.0, "enthalpyF": 20.0 } ],
        "balances": [ { "unit": "Drum", "mass": { "in": 1.5, "out": 1.25 }, "moles": { "in": 100.0, "out": 100.0 },
                        "elements": { "C": { "in": 1.0, "out": 2.0 } },
                        "enthalpy": { "in": -5000.0, "out": 2000.0 }, "reacts": true } ],
        "warnings": [ { "unit": "Drum", "subject": "stream top", "text": "it is odd" } ],
        "log": [ { "unit": "Drum", "text": "starts" } ] })");
    const auto unit = nlohmann::json::parse(R"({
        "status": "calculated", "parameterUnits": { "duty": "W" },
        "parameters": { "T": 260.0, "duty": -1500000.0, "none": null, "odd": null, "how": "fast" },
        "reports": { "Matlab Output": "MATLAB output:\r\n" } })");
    auto ofOne = expected;
    ofOne.update(unit);
    EXPECT_EQ(nlohmann::json::parse(resultsJson(results)), ofOne);

    results.isFlowsheet = true;
    results.convergence = {"direct", 1e-6, 9, true, {{0.5, "A", "pressure"}}};
    expected["convergence"] = {
        {"method", "direct"},
        {"tolerance", 1e-6},
        {"limit", 9},
        {"converged", true},
        {"iterations", {{{"deviation", 0.5}, {"stream", "A"}, {"quantity", "pressure"}}}}};
    expected["units"] = {unit};
    expected["units"][0]["name"] = "Drum";
    EXPECT_EQ(nlohmann::json::parse(resultsJson(results)), expected);

    results.failure = {"Drum", "it boils over", ScriptError{"drum.m", {}, 12, 5, "x is undefined"}};
    results.units[0].status = UnitStatus::failed;
    expected["ok"] = false;
    expected["error"] = nlohmann::json::parse(R"({ "unit": "Drum", "message": "it boils over", "script":
        { "file": "drum.m", "line": 12, "column": 5, "message": "x is undefined" } })");
    expected["units"][0]["status"] = "failed";
    EXPECT_EQ(nlohmann::json::parse(resultsJson(results)), expected);
}

TEST(StreamsCsv, keepsAllDigitsAndQuotesNames) {
    RunResults results = someResults();
    results.streams[1].name = "say \"top\", please";
    results.streams[1].pressure = 1e5 / 3;
    EXPECT_EQ(streamsCsv(results, unitsOfSystem("si")),
              "stream,temperature (K),pressure (Pa),flow (mol/s),mass flow (kg/s),vapour fraction,enthalpy "
              "(J/mol),enthalpy with formation (J/mol),x methane,x propane\r\n"
              "Zufluß,300,2e+06,100,3,0.5,-1234.5,-90000,0.25,0.75\r\n"
              "\"say \"\"top\"\", please\",260.125,33333.333333333336,0,0,1,10,20,1,0\r\n");
}

TEST(ResultsHtml, showsTheErrorAndMarksUnits) {
    RunResults results = someResults();
    results.warnings.clear();
    results.units[0].products = {"a <b>"};
    results.units.push_back({.name = "Next", .status = UnitStatus::failed, .feeds = {"a <b>"}});
    results.failure = {"Next", "x < y & z"};
    results.failure->scriptError = {.file = "next.m", .line = 7, .column = 2, .message = "'z' undefined"};
    const std::string page = resultsHtml(results, TableUnits(), "case");
    for (const char* part : {"<p class=\"error\">Next: x &lt; y &amp; z</p>", "next.m:7:2: ",
                             "<rect class=\"unit failed\"", "<rect class=\"unit\"", "a &lt;b&gt;</text>"})
        EXPECT_NE(page.find(part), std::string::npos) << part << page;
    EXPECT_EQ(page.find("a <b>"), std::string::npos);
}

TEST(FlowsheetDrawing, putsAUnitRightOfThoseThatFeedIt) {
    RunResults results;
    results.units = {{.name = "A", .feeds = {"f"}, .products = {"s", "t"}},
                     {.name = "B", .feeds = {"s"}, .products = {"u"}},
                     {.name = "C", .feeds = {"t", "u"}},
                     {.name = "D", .feeds = {"g"}}};
    const std::string svg = flowsheetSvg(results);
    std::vector<std::pair<int, int>> places;
    const std::regex box("<rect class=\"unit\" x=\"(\\d+)\" y=\"(\\d+)\"");
    for (auto match = std::sregex_iterator(svg.begin(), svg.end(), box); match != std::sregex_iterator();
         ++match)
        places.emplace_back(std::stoi((*match)[1]), std::stoi((*match)[2]));
    ASSERT_EQ(places.size(), 4u);
    EXPECT_LT(places[0].first, places[1].first);
    EXPECT_LT(places[1].first, places[2].first);
    EXPECT_EQ(places[3].first, places[0].first); // a second box of the first column
    EXPECT_GT(places[3].second, places[0].second);
}

TEST(StreamTable, alignsItsColumnsByCharacters) {
    const auto linesOf = [](const std::string& text) {
        std::istringstream table(text);
        std::vector<std::string> lines;
        for (std::string line; std::getline(table, line);)
            lines.push_back(line);
        return lines;
    };
    auto lines = linesOf(columns(streamTable(someResults(), TableUnits())));
    ASSERT_EQ(lines.size(), 9u);
    EXPECT_EQ(lines[0], "Stream                      Zufluß  A stream with a long name");
    EXPECT_EQ(lines[1], "Temperature      K         300.000                    260.125");
    EXPECT_EQ(lines[2], "Pressure         bar       20.0000                     1.5000");
    EXPECT_EQ(lines[6], "Enthalpy         J/mol    -1234.50                      10.00");
    EXPECT_EQ(lines[8], "x propane        mol/mol   0.75000                    0.00000");

    lines = linesOf(columns(streamTable(someResults(), unitsOfSystem("field"))));
    EXPECT_EQ(lines[1], "Temperature      degF        80.330                      8.555");
    EXPECT_EQ(lines[2], "Pressure         psi        290.075                     21.756");
    lines = linesOf(columns(streamTable(someResults(), unitsOfSystem("metric"))));
    EXPECT_EQ(lines[6], "Enthalpy         kJ/mol   -1.23450                    0.01000");

    EXPECT_EQ(columns(phaseTable(someResults())), "Phase               Zufluß: Vapor  Zufluß: Liquid\n"
                                                  "Fraction   mol/mol        0.50000         0.50000\n"
                                                  "x methane  mol/mol        0.50000         0.00000\n"
                                                  "x propane  mol/mol        0.50000         1.00000\n");
}

TEST(Balances, coverMassMolesAndEnthalpy) {
    const std::array compounds{findCompound("carbon monoxide"), findCompound("water"),
                               findCompound("carbon dioxide"), findCompound("hydrogen")};
    const StreamResult syngas{"in", 600, 1e5, 2, {0.5, 0.5, 0, 0}, 1, 1e3, -2e5};
    const StreamResult shifted{"out", 700, 1e5, 2, {0.25, 0.25, 0.25, 0.25}, 1, 9e3, -2e5 + 50};
    const StreamResult half{"half", 600, 1e5, 1, {0.5, 0.5, 0, 0}, 1, 1e3, -2e5};
    UnitResult unit{.name = "R"};
    const auto table = [&](std::vector<const StreamResult*> products) {
        const Balance balance = balanceOf("R", compounds, std::array{&syngas}, products);
        std::string text = columns(balanceTable(balance, TableUnits()));
        for (const std::string& note : balanceNotes(balance, unit, TableUnits()))
            text += note + "\n";
        return text;
    };
    EXPECT_EQ(table({&half, &half}), "Balance              in     out  out - in\n"
                                     "Mass      kg/s   0.0460  0.0460    0.0000\n"
                                     "Moles     mol/s  2.0000  2.0000    0.0000\n"
                                     "Enthalpy  kW     2.0000  2.0000    0.0000\n");
    EXPECT_EQ(table({&shifted}),
              "Balance                 in        out  out - in\n"
              "Mass      kg/s      0.0460     0.0460    0.0000\n"
              "Enthalpy  kW     -400.0000  -399.9000    0.1000\n"
              "C         mol/s     1.0000     1.0000    0.0000\n"
              "O         mol/s     2.0000     2.0000    0.0000\n"
              "H         mol/s     2.0000     2.0000    0.0000\n"
              "The unit reacts: its enthalpies include those of formation, the streams' do not.\n"
              "The enthalpy changes by 0.1 kW, and no parameter in W shows this heat or power.\n");
    unit.parameters = {{.name = "duty", .isInput = false, .dimensionality = {2, 1, -3}}};
    EXPECT_THAT(table({&shifted}), testing::EndsWith("the streams' do not.\n"));
}

TEST(Abridged, keepsBothEndsOfWhatAnEndlessLoopPrints) {
    EXPECT_EQ(abridged("one\ntwo\nthree\nfour\nfive\n", 8, 12), "one\ntwo\n[1 line left out]\nfour\nfive\n");
    EXPECT_EQ(abridged("one\ntwo\nthree\nfour\n", 8, 12), "one\ntwo\nthree\nfour\n");
    EXPECT_EQ(abridged("one\ntwo\n[7 lines left out]\nfour\nfive\n", 4, 6),
              "one\n[9 lines left out]\nfive\n");
    EXPECT_EQ(abridged("0123\u00e4\u00e40123", 5, 5), "0123\n[4 bytes left out]\n0123")
        << "within characters";

    std::vector<LogLine> log;
    constexpr int lines = 50'000;
    for (int i = 0; i < lines; ++i)
        addLogLine(log, {"Drum", std::to_string(i)});
    ASSERT_LT(log.size(), 12'000u);
    EXPECT_EQ(log.front().text, "0");
    EXPECT_EQ(log.back().text, std::to_string(lines - 1));
    const auto note =
        std::ranges::find_if(log, [](const LogLine& line) { return line.text.starts_with("["); });
    ASSERT_NE(note, log.end());
    EXPECT_EQ(note->text, "[" + std::to_string(lines - log.size() + 1) + " lines left out]");
    EXPECT_EQ(std::prev(note)->text, std::to_string(note - log.begin() - 1));
}

TEST(ScriptErrors, readAsEditorsExpect) {
    Case flowsheet;
    flowsheet.units.resize(1);
    RunResults results = someResults();
    results.units[0].status = UnitStatus::failed;
    const auto lineFor = [&](const std::string& printed) {
        results.units[0].reports[0].text = "MATLAB output:\nEvaluation error: " + printed;
        const auto error = findScriptError(flowsheet, results);
        return error ? scriptErrorLine(*error) : "none";
    };
    EXPECT_EQ(lineFor("two\n  lines\nMATLAB done\nat tidy.m line 3\nat script line 1, column 2\ntwo, lines"),
              "tidy.m:3: two, lines");
    EXPECT_EQ(lineFor("mine\nMATLAB done\nat script line 1, column 2\n"), "script:1:2: mine");
    flowsheet.units[0].model = UnitModel{.script = {.name = "drum.m"}};
    EXPECT_EQ(lineFor("'x' undefined in line 12\nMATLAB done\nat script line 12, column 5\n"),
              "drum.m:12:5: 'x' undefined");
    flowsheet.units[0].model =
        UnitModel{.script = {"drum.m", "", "cases\\a\\drum.m"},
                  .files = {{"tidy.m", "", std::filesystem::current_path() / "t" / "tidy.m"}}};
    EXPECT_EQ(lineFor("mine\nMATLAB done\nat script line 1\n"), "cases/a/drum.m:1: mine");
    EXPECT_EQ(lineFor("mine\nMATLAB done\nat tidy.m line 1\n"), "t/tidy.m:1: mine");
    EXPECT_EQ(lineFor("parse error in line 2 of a b.m: y: = 3;\nMATLAB done\nat a b.m line 2, column 10\n"),
              "a b.m:2:10: parse error: y: = 3;");
    EXPECT_EQ(lineFor("mine\nMATLAB done\nmine"), "none");
    EXPECT_EQ(printedByScript(results.units[0]), "");
    results.units[0].reports[0].text = "Echo\nMATLAB output:\nEvaluation error: no\nMATLAB done\nmine";
    EXPECT_EQ(printedByScript(results.units[0]), "");
    results.units[0].reports[0].text = "MATLAB output:\none\ntwo\nMATLAB done\nmine";
    EXPECT_EQ(printedByScript(results.units[0]), "one\ntwo\n");
    results.units.clear();
    EXPECT_FALSE(findScriptError(flowsheet, results));
}

TEST(ParameterTable, hasTheInputsFirstInUnitsOfTheTables) {
    UnitResult unit = someResults().units[0];
    unit.parameters.push_back(
        {.name = "approach", .value = 10.0, .dimensionality = {0, 0, 0, 0, 1, 0, 0, 0, 1}}); // a difference
    unit.parameters[0].dimensionality = {0, 0, 0, 0, 1};
    unit.parameters.push_back({.name = "drop", .value = 5e4, .dimensionality = {-1, 1, -2}});
    TableUnits gauge = unitsOfSystem("metric");
    gauge.pressure = "barg";
    EXPECT_EQ(columns(parameterTable(unit, gauge)), "Parameter                  value\n"
                                                    "T          input   degC   -13.15\n"
                                                    "approach   input   K          10\n"
                                                    "drop       input   bar       0.5\n"
                                                    "duty       output  kW      -1500\n"
                                                    "none       output        not set\n"
                                                    "odd        output        not set\n"
                                                    "how        output           fast\n");
}

} // namespace

} // namespace solvane::host
