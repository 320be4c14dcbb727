#include "flowsheet/ResultsJson.h"
#include "flowsheet/ResultsText.h"

#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

#include <limits>
#include <sstream>

namespace solvane::host {

namespace {

RunResults someResults() {
    RunResults results;
    results.generation = Generation::v10;
    results.compounds = {"methane", "propane"};
    results.streams = {{"Zufluß", 300, 2e6, 100, {0.25, 0.75}, 0.5, -1234.5},
                       {"A stream with a long name", 260.125, 1.5e5, 0, {1, 0}, 1, 10}};
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
            "fraction": { "methane": 0.25, "propane": 0.75 }, "vaporFraction": 0.5, "enthalpy": -1234.5 },
          { "name": "A stream with a long name", "temperature": 260.125, "pressure": 150000.0,
            "totalFlow": 0.0, "fraction": { "methane": 1.0, "propane": 0.0 }, "vaporFraction": 1.0,
            "enthalpy": 10.0 } ] })");
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

TEST(OutputParameters, areShownWithTheirUnits) {
    EXPECT_EQ(outputParameterLines(someResults().units[0]), "duty  W  -1.5e+06\n"
                                                            "none          nan\n"
                                                            "odd             ?\n"
                                                            "how          fast\n");
}

} // namespace

} // namespace solvane::host
