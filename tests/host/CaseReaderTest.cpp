#include "cases/CaseReader.h"
#include "CaseFolder.h"
#include "cases/FeedLines.h"
#include "cases/Quantity.h"
#include "results/TableUnits.h"

#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

#include <span>

namespace solvane::host {

namespace {

/// A case with every key.
constexpr char fullCase[] = R"json({
  "unit": { "progId": "Some.Unit", "name": "Säule" },
  "generation": "1.0",
  "profile": "early",
  "compounds": ["Methane", "propane"],
  "feeds": [
    { "name": "A", "temperature": 300, "pressure": 1e5, "flow": 2, "composition": { "propane": 1 } },
    { "name": "B", "pressure": 2e5, "vaporFraction": 0.5, "flow": 0,
      "composition": { "methane": 0.25, "propane": 0.75 } }
  ],
  "products": ["C"],
  "model": {
    "parameters": [
      { "name": "T", "kind": "real", "mode": "input", "default": 260, "minimum": 100, "maximum": 500,
        "dimensionality": "K" },
      { "name": "n", "kind": "integer", "mode": "input", "value": -3 },
      { "name": "on", "kind": "boolean", "mode": "input", "value": true },
      { "name": "how", "kind": "string", "mode": "input", "value": "b", "options": ["a", "b"] },
      { "name": "duty", "kind": "real", "mode": "output", "dimensionality": [2, 1, -3] }
    ],
    "reports": ["Summary"],
    "script": ["x = 1;", "disp('ü')"],
    "files": ["more.bin"],
    "echo": true
  },
  "parameters": { "T": 250, "how": "" }
})json";

/// Two units; the second's model is a file.
constexpr char flowsheetCase[] = R"json({
  "compounds": ["methane"],
  "streams": [
    { "name": "S1", "temperature": 300, "pressure": 1e5, "flow": 2, "composition": { "methane": 1 } }
  ],
  "units": [
    { "name": "First", "feeds": { "in": "S1" }, "products": { "top": "S2", "bottom": "S3" } },
    { "name": "Second", "progId": "Some.Unit", "model": "more.bin", "parameters": { "x": 1.5 },
      "feeds": { "b": "S3", "a": "S2" }, "products": { "out": "S4" } }
  ]
})json";

class CaseFiles : public testing::Test {
protected:
    CaseFolder folder;
    Case result;
    std::string error;
};

TEST_F(CaseFiles, readsEveryKey) {
    folder.write("more.bin", std::string("\x00\xFF", 2));
    ASSERT_TRUE(readCase(folder.write("case.json", fullCase), result, error)) << error;

    ASSERT_EQ(result.units.size(), 1u);
    const UnitCase& unit = result.units[0];
    EXPECT_EQ(unit.progId, "Some.Unit");
    EXPECT_EQ(unit.name, "Säule");
    EXPECT_EQ(result.generation, Generation::v10);
    EXPECT_EQ(result.profile.name, "early");
    EXPECT_EQ(result.compounds.at(0)->name, "methane");
    EXPECT_EQ(result.feeds.at(0).composition, (std::vector<double>{0, 1}));
    EXPECT_EQ(result.feeds.at(1).temperature, std::nullopt);
    EXPECT_EQ(result.feeds.at(1).vaporFraction, 0.5);
    EXPECT_EQ(unit.products.at(0).stream, "C");
    EXPECT_EQ(unit.parameters.at(0).name, "T");
    EXPECT_EQ(unit.parameters.at(0).value, ParameterValue(250));
    EXPECT_EQ(unit.parameters.at(1).value, ParameterValue(std::string()));

    // The rest of the model reaches the unit: HostProgramTest.m checks it by `show`.
    const auto& model = std::get<UnitModel>(unit.model);
    ASSERT_EQ(model.parameters.size(), 5u);
    EXPECT_EQ(model.parameters[0].value, ParameterValue(260.0)); // from the default
    EXPECT_EQ(model.parameters[0].dimensionality, (std::vector<double>{0, 0, 0, 0, 1, 0, 0, 0}));
    EXPECT_TRUE(model.parameters[3].restricted);
    EXPECT_EQ(model.parameters[4].value, std::nullopt);
    EXPECT_EQ(model.script.bytes, "x = 1;\r\ndisp('ü')\r\n");
}

/// A change of the full case at a JSON pointer (no value removes the place), and what the message must
/// contain.
struct Fault {
    const char* place;
    const char* value;
    const char* message;
};

constexpr Fault faults[] = {
    {"/compounds", nullptr, "the key \"compounds\" is missing"},
    {"/compounds/1", "\"propan\"", "compounds[1]: the compound \"propan\" is unknown; compounds: methane, "},
    {"/feeds", nullptr, "the key \"feeds\" is missing"},
    {"/products/0", "\"a\"", "products[0]: the name \"a\" is already taken"},
    {"/colour", "\"red\"", "the key \"colour\" is unknown; known keys: unit, generation, "},
    {"/generation", "1.1", "generation: expected \"1.0\" or \"1.1\""},
    {"/profile", "\"late\"", "profile: the profile \"late\" is unknown; profiles: standard, "},
    {"/feeds/0/flow", "-1", "feeds[\"A\"].flow: a flow cannot be negative"},
    {"/feeds/0/flow", "\"2\"", "feeds[\"A\"].flow: \"2\" has no unit; add one, or leave out the quotes"},
    {"/feeds/0/flow", "\"2 m3/h\"", "feeds[\"A\"].flow: expected a flow of moles or of mass, such as"},
    {"/feeds/0/temperature", "\"20 bar\"",
     "\"20 bar\" has the wrong dimension; expected a unit such as K, degC"},
    {"/model/parameters/0/value", "\"20 furlong\"",
     "\"T\"].value: \"20 furlong\" has an unknown unit; expected a unit such as K, degC, degF, degR"},
    {"/feeds/0/pressure", "\"0,5 bar\"", "\"0,5 bar\" has a comma; write decimals after a point"},
    {"/feeds/0/pressure", "\"20 baar\"", "\"20 baar\" has an unknown unit; did you mean \"bar\"?"},
    {"/feeds/0/temperature", "\"20 C\"", "did you mean \"degC\"?"},
    {"/feeds/0/flow", "\"2 KMOL/hr\"", "did you mean \"kmol/h\"?"},
    {"/feeds/0/flow", "\"2 xyzzy\"", "has an unknown unit; expected a unit such as mol/s, kmol/h, "},
    {"/feeds/0/temperature", "0", "feeds[\"A\"].temperature: expected a number above 0, in K"},
    {"/feeds/0/pressure", nullptr,
     "feeds[\"A\"]: expected two of \"temperature\", \"pressure\" and \"vaporFraction\""},
    {"/feeds/1/vaporFraction", "1.1", "feeds[\"B\"].vaporFraction: expected a number from 0 to 1"},
    {"/feeds/1/composition", "[1, 0]", "feeds[\"B\"].composition: expected an object of mole fractions"},
    {"/feeds/1/composition/methane", "0.2",
     "feeds[\"B\"].composition: the mole fractions sum to 0.95, not to 1"},
    {"/feeds/1/composition/methane", "-0.25",
     "feeds[\"B\"].composition.methane: a mole fraction cannot be negative"},
    {"/feeds/1/composition/ethane", "0.1",
     "feeds[\"B\"].composition.ethane: the compound is not among the case's: methane, propane"},
    {"/feeds/1/composition/PROPANE", "0.1", "the compound is given twice"},
    {"/model/script", "\"none.m\"", "none.m does not exist"},
    {"/model/script", "\"..\"", "is a folder"},
    {"/model/script/1", "2", "model.script[1]: expected a line in quotes"},
    {"/model/reports/0", "\"matlab output\"",
     "model.reports[0]: the unit reserves the name \"matlab output\""},
    {"/model/files/0", "\"calc.m\"", "model.files[0]: the unit reserves the name \"calc.m\""},
    {"/model/echo", "1", "model.echo: expected true or false"},
    {"/model/parameters/0/kind", "\"float\"", "model.parameters[\"T\"].kind: expected \"real\", \"integer\""},
    {"/model/parameters/0/mode", "\"both\"",
     "model.parameters[\"T\"].mode: expected \"input\" or \"output\""},
    {"/model/parameters/0/default", nullptr,
     "model.parameters[\"T\"]: an input needs a \"value\" or a \"default\""},
    {"/model/parameters/0/value", "99.5",
     "model.parameters[\"T\"].value: the value lies below the minimum, 100 K"},
    {"/model/parameters/0/value", "501",
     "model.parameters[\"T\"].value: the value lies above the maximum, 500"},
    {"/model/parameters/0/dimensionality", "\"degC\"",
     "model.parameters[\"T\"].dimensionality: the unit is unknown"},
    {"/model/parameters/4/dimensionality", "[0, 0, 0, 0, 1, 0, 0, 0, 1, 0]",
     "there are more than 9 exponents"},
    {"/model/parameters/1/value", "2.5", "model.parameters[\"n\"].value: expected a whole number"},
    {"/model/parameters/1/value", "3000000000", "model.parameters[\"n\"].value: expected a whole number"},
    {"/model/parameters/1/name", "\"t\"", "model.parameters[\"t\"]: the name \"t\" is already taken"},
    {"/model/parameters/3/value", "\"c\"",
     "model.parameters[\"how\"].value: the value is not one of the options (case-sensitive): a, b"},
    {"/model", "\"none.svm\"", "model: the file "},
    {"/parameters/T", "[]", "parameters.T: expected a number, true, false or a text"},
};

constexpr Fault flowsheetFaults[] = {
    {"/feeds", "[]", "the key \"feeds\" is unknown; known keys: generation, profile, compounds, streams, "},
    {"/units", "[]", "units: expected a list of at least one unit"},
    {"/units/1/name", "\"first\"", "units[\"first\"]: the name \"first\" is already taken"},
    {"/units/0/feeds/in", "\"S9\"",
     "units[\"First\"].feeds.in: the stream \"S9\" is neither given in \"streams\" nor a product of a unit"},
    {"/units/0/feeds/in", "\"S4\"",
     "units[\"First\"].feeds.in: the stream \"S4\" closes a recycle: \"Second\" makes it from what \"First\" "
     "makes; add \"tear\": [\"S4\"] to the case"},
    {"/units", R"([{"name": "B", "feeds": {"in": "S2"}},
                   {"name": "A", "feeds": {"in": "S1"}, "products": {"out": "S2"}}])",
     "units[\"B\"].feeds.in: the stream \"S2\" comes from \"A\"; list this unit before \"B\""},
    {"/tear", "[\"S4\"]", "tear[0]: the stream \"S4\" closes no recycle: \"Second\" makes it before"},
    {"/tear", "[\"S9\"]", "tear[0]: no unit makes the stream \"S9\""},
    {"/tear", "[{\"name\": \"S4\"}]", "tear[\"S4\"]: expected two of \"temperature\""},
    {"/convergence", "{}", "convergence: it is for recycles; list their streams under \"tear\""},
    {"/units/1/feeds/a", "\"S1\"", "units[\"Second\"].feeds.a: the stream \"S1\" already feeds another port"},
    {"/units/1/products/out", "\"s1\"", "units[\"Second\"].products.out: the name \"s1\" is already taken"},
    {"/units/1/products", "[\"S4\"]", "units[\"Second\"].products: expected an object of streams by port"},
};

TEST_F(CaseFiles, reportsThePlaceOfAFault) {
    folder.write("more.bin", "x");
    folder.write("calc.m", "x");
    const auto check = [&](const char* good, std::span<const Fault> table) {
        for (const Fault& fault : table) {
            auto json = nlohmann::ordered_json::parse(good);
            const nlohmann::ordered_json::json_pointer place(fault.place);
            if (fault.value)
                json[place] = nlohmann::ordered_json::parse(fault.value);
            else
                json[place.parent_pointer()].erase(place.back());
            const std::string path = folder.write("case.json", json.dump());
            EXPECT_FALSE(readCase(path, result, error)) << fault.place;
            EXPECT_TRUE(error.starts_with(path + ": ")) << error;
            EXPECT_NE(error.find(fault.message), std::string::npos) << fault.place << " gives " << error;
        }
    };
    check(fullCase, faults);
    check(flowsheetCase, flowsheetFaults);
}

TEST_F(CaseFiles, keepsTheOrderOfUnitsAndPorts) {
    folder.write("more.bin", "x");
    ASSERT_TRUE(readCase(folder.write("case.json", flowsheetCase), result, error)) << error;
    EXPECT_TRUE(result.isFlowsheet);
    EXPECT_EQ(result.feeds.at(0).name, "S1");
    ASSERT_EQ(result.units.size(), 2u);
    EXPECT_EQ(result.units[0].products.at(0).port, "top");
    const UnitCase& second = result.units[1];
    EXPECT_EQ(second.feeds.at(0).port, "b");
    EXPECT_EQ(second.feeds.at(0).stream, "S3");
    EXPECT_EQ(std::get<ModelFile>(second.model).bytes, "x");
    EXPECT_EQ(second.parameters.at(0).value, ParameterValue(1.5));
}

TEST_F(CaseFiles, reportsLineAndColumnOfInvalidJson) {
    const std::string path =
        folder.write("case.json", "{\n  \"compounds\": [\"methane\"],\n  \"feeds\" []\n}\n");
    EXPECT_FALSE(readCase(path, result, error));
    EXPECT_TRUE(error.starts_with(path + ":3:11: ")) << error;

    EXPECT_FALSE(readCase(folder.write("case.json", "{\"unit\": {\"name\": \"\xE4\"}}"), result, error));
    EXPECT_NE(error.find(":1:"), std::string::npos) << error;

    for (const auto& [text, message] : std::vector<std::pair<std::string, std::string>>{
             {"{\"a\": [1, 2,\n]}", "2:1: syntax error: remove the comma before the closing bracket"},
             {"{\"a\": 1, // note\n}", "1:10: syntax error: JSON has no comments; remove this one"},
             {"{'a': 1}", "1:2: syntax error: write names and texts between straight double quotes"},
             {"{\"a\": \u201Cb\u201D}",
              "1:7: syntax error: write names and texts between straight double quotes"},
             {"{\"a\": .5}", "1:7: syntax error: write a digit before the decimal point"},
             {"{\"a\": 0,75}",
              "1:10: syntax error: write decimals after a point, and names between double quotes"},
             {"{\"a\" = 1}", "1:6: syntax error: write a colon between a name and its value"},
             {"{\"a\": 1; \"b\": 2}", "1:8: syntax error: write a comma here"},
             {"{\"a\": True}", "1:7: syntax error: write true in small letters"},
             {"{a: 1}", "1:2: syntax error: write names and texts between double quotes"},
             {"{\"a\": \"b\\k.m\"}", "1:10: syntax error: write / or \\\\ in place of the backslash"},
             {"{\"a\": \"b\n\"}", "1:9: syntax error: the text has no closing quote in its line"},
             {"{\"a\": 1}}", "1:9: syntax error: remove what follows the last closing bracket"},
             {"{\"a\": 1", "1:8: syntax error: a closing } is missing"},
             {"{\"a\": 1 \"b\": 2}", "1:11: syntax error: a comma is missing before this"},
             {"[{}\n {}]", "2:2: syntax error: a comma is missing before this"}}) {
        EXPECT_FALSE(readCase(folder.write("case.json", text), result, error)) << text;
        EXPECT_EQ(error, path + ":" + message) << text;
    }

    EXPECT_FALSE(readCase(folder.write("case.json", "\xFF\xFE{"), result, error));
    EXPECT_EQ(error, path + ": the file is in UTF-16; save it in UTF-8");

    EXPECT_FALSE(readCase(folder.write("case.json", "{\"flow\": 1e999}"), result, error));
    EXPECT_EQ(error, path + ": number overflow parsing '1e999'");

    EXPECT_FALSE(
        readCase(folder.write("case.json", R"({"a": [{"x": 1}, {"x": 1, "y": 2, "x": 3}]})"), result, error));
    EXPECT_EQ(error, path + ": an object has the key \"x\" twice");
}

TEST(Units, parseAndFormat) {
    struct Row {
        const char* text;
        std::vector<double> exponents;
        const char* shown;
    };
    const Row rows[] = {
        {"K", {0, 0, 0, 0, 1, 0, 0, 0}, "K"},
        {"Pa", {-1, 1, -2, 0, 0, 0, 0, 0}, "Pa"},
        {"kg m2 s-3", {2, 1, -3, 0, 0, 0, 0, 0}, "W"},
        {"J / mol / K", {2, 1, -2, 0, -1, -1, 0, 0}, "J/mol/K"},
        {"J/mol K", {2, 1, -2, 0, 1, -1, 0, 0}, "m2 kg s-2 K mol-1"},
        {"m2 kg s-3 K-1", {2, 1, -3, 0, -1, 0, 0, 0}, "W/K"},
        {"mol/m2/s/Pa", {-1, -1, 1, 0, 0, 1, 0, 0}, "mol/m2/s/Pa"},
        {"m0.5", {0.5, 0, 0, 0, 0, 0, 0, 0}, "m0.5"},
        {"1", {0, 0, 0, 0, 0, 0, 0, 0}, ""},
    };
    for (const Row& row : rows) {
        const auto unit = parseUnit(row.text);
        ASSERT_TRUE(unit) << row.text;
        EXPECT_EQ(unit->exponents, row.exponents) << row.text;
        EXPECT_EQ(unitText(unit->exponents), row.shown);
    }
    for (const char* wrong : {"m-inf", "", " / ", "degC/s", "m2x", "K-"})
        EXPECT_FALSE(parseUnit(wrong)) << wrong;
}

TEST_F(CaseFiles, readsQuantitiesWithUnits) {
    folder.write("more.bin", "x");
    auto json = nlohmann::ordered_json::parse(fullCase);
    json["feeds"][0]["temperature"] = "77 degF";
    json["feeds"][0]["pressure"] = "1 barg";
    json["feeds"][0]["flow"] = "44.097 kg/h"; // of propane
    json["feeds"][1]["pressure"] = "29 psi";
    json["feeds"][1]["flow"] = "360 kmol/h";
    json["model"]["parameters"][0]["value"] = "-13.15 degC";
    ASSERT_TRUE(readCase(folder.write("case.json", json.dump()), result, error)) << error;
    const FeedStream& first = result.feeds.at(0);
    EXPECT_NEAR(*first.temperature, 298.15, 1e-10);
    EXPECT_DOUBLE_EQ(*first.pressure, 201325);
    EXPECT_NEAR(first.flow, 1000.0 / 3600, 1e-12);
    EXPECT_NEAR(*result.feeds.at(1).pressure, 199947.96, 0.01); // 6894.757 Pa/psi
    EXPECT_DOUBLE_EQ(result.feeds.at(1).flow, 100);
    EXPECT_EQ(std::get<UnitModel>(result.units[0].model).parameters[0].value, ParameterValue(260.0));

    const TableUnits units = unitsOfCase(result);
    EXPECT_EQ(units.temperature + " " + units.pressure + " " + units.flow + " " + units.massFlow,
              "degF barg mol/s kg/h");
}

TEST(Quantities, ofADifferenceHaveNoZeroOfTheirOwn) {
    Quantity quantity;
    std::string error;
    EXPECT_TRUE(parseQuantity("18 degF", std::vector<double>{0, 0, 0, 0, 1, 0, 0, 0, 1}, quantity, error));
    EXPECT_NEAR(quantity.value, 10, 1e-12);
}

TEST(FeedLines, readFeedsAsCasesHaveThem) {
    const std::string hot = "name=Hot feed,temperature=80 degC, pressure = 2e5, flow=36 kmol/h,"
                            "composition=methane:0.25; n-butane : 0.75";
    Case flowsheet;
    flowsheet.units.resize(1);
    std::string error;
    ASSERT_TRUE(readFeedLines({hot, "name=2, pressure=1, vaporFraction=1, flow=1, composition=ethane:1"},
                              flowsheet, error))
        << error;
    EXPECT_EQ(flowsheet.compounds,
              (std::vector{findCompound("methane"), findCompound("n-butane"), findCompound("ethane")}));
    EXPECT_EQ(flowsheet.units[0].feeds[1].port, "2");
    const FeedStream& feed = flowsheet.feeds[0];
    EXPECT_EQ(feed.name, "Hot feed");
    EXPECT_NEAR(*feed.temperature, 353.15, 1e-9);
    EXPECT_NEAR(feed.flow, 10, 1e-9);
    EXPECT_EQ(*feed.pressure, 2e5);
    EXPECT_EQ(feed.composition, (std::vector<double>{0.25, 0.75, 0}));
    const struct {
        std::vector<std::string> lines;
        const char* message;
    } rows[] = {
        {{"Feed"}, "--feed \"Feed\": \"Feed\" is not of the form KEY=VALUE"},
        {{"name=a, name=b"}, "\"name\" is given twice"},
        {{"name=a, composition=methane"}, "\"methane\" is not of the form KEY:VALUE"},
        {{"name=a, temp=3"}, "--feed: the key \"temp\" is unknown; known keys: name, temperature"},
        {{"name=a, pressure=1 K"}, "--feed.pressure: \"1 K\" has the wrong dimension"},
        {{"name=a, pressure=1, vaporFraction=1, flow=1, composition=methan:1"}, "not among the case's"},
        {{hot, hot}, "Hot feed"},
    };
    for (const auto& row : rows) {
        flowsheet = {};
        flowsheet.units.resize(1);
        EXPECT_FALSE(readFeedLines(row.lines, flowsheet, error)) << row.message;
        EXPECT_NE(error.find(row.message), error.npos) << error;
    }
}

} // namespace

} // namespace solvane::host
