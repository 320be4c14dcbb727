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
    results.parameters = {{"T", true, "K", 260.0},
                          {"duty", false, "W", -1.5e6},
                          {"none", false, "", std::numeric_limits<double>::quiet_NaN()},
                          {"how", false, "", std::string("fast")}};
    results.reports = {{"Matlab Output", "MATLAB output:\r\n"}};
    return results;
}

TEST(ResultsJson, holdsStreamsParametersAndReports) {
    const auto json = nlohmann::json::parse(resultsJson(someResults()));
    EXPECT_EQ(json, nlohmann::json::parse(R"({
        "generation": "1.0",
        "streams": [
          { "name": "Zufluß", "temperature": 300.0, "pressure": 2000000.0, "totalFlow": 100.0,
            "fraction": { "methane": 0.25, "propane": 0.75 }, "vaporFraction": 0.5, "enthalpy": -1234.5 },
          { "name": "A stream with a long name", "temperature": 260.125, "pressure": 150000.0,
            "totalFlow": 0.0, "fraction": { "methane": 1.0, "propane": 0.0 }, "vaporFraction": 1.0,
            "enthalpy": 10.0 } ],
        "parameters": { "T": 260.0, "duty": -1500000.0, "none": null, "how": "fast" },
        "reports": { "Matlab Output": "MATLAB output:\r\n" } })"));
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
    EXPECT_EQ(outputParameterLines(someResults()), "duty  W  -1.5e+06\n"
                                                   "none          nan\n"
                                                   "how          fast\n");
}

} // namespace

} // namespace solvane::host
