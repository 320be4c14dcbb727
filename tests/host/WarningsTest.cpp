#include "warnings/Warnings.h"
#include "results/Balances.h"
#include "results/ResultTables.h"
#include "warnings/MassRemedy.h"
#include "warnings/MixtureEnthalpy.h"
#include "warnings/OutputWarnings.h"
#include "warnings/PlainNumbers.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <array>
#include <limits>
#include <span>

namespace solvane::host {

namespace {

std::string textOf(const std::vector<Warning>& warnings) {
    std::string text;
    for (const Warning& warning : warnings)
        text += warning.subject + ": " + warning.text;
    return text;
}

TEST(Warnings, reportImplausibleResults) {
    UnitResult unit{
        .name = "Drum",
        .parameters = {{.name = "T", .value = 260.0},
                       {.name = "none", .isInput = false, .value = std::numeric_limits<double>::quiet_NaN()},
                       {.name = "odd", .isInput = false}}};
    const Balance lossy{"Drum", {2, 1}, {2, 1}, {0, 0}};
    const StreamResult sound{"sound", 300, 1e5, 1, {0.25, 0.75}}, half{"half", 300, 1e5, 1, {0.25, 0.25}},
        backwards{"backwards", 300, 1e5, -2, {1, 0}}, cold{"cold", 100, 1e5, 0, {1, 0}},
        bar{"bar", 300, 20, 1, {1, 0}};
    std::vector<Warning> warnings;
    const UnitResult drum{.name = "Drum"};
    const Balance none;
    const std::array compounds{findCompound("methane"), findCompound("ethane")};
    addWarnings({unit, lossy, compounds, std::array{&sound}, std::array{&sound, &backwards, &cold, &bar}},
                warnings);
    addWarnings({drum, none, compounds, {}, std::array{&bar}}, warnings);
    addWarnings({drum, lossy, compounds, std::array{&sound}, std::array{&sound, &half}}, warnings);
    EXPECT_EQ(warningLines(warnings),
              "warning: Drum, stream backwards: the flow, -2 mol/s, must not be negative; let the script "
              "refuse what makes it "
              "negative, by error\n"
              "warning: Drum, stream cold: the temperature, 100 K, lies outside 150 to 1500 K, the range "
              "of the package's heat capacities; temperatures are in K, enthalpies in J/mol\n"
              "warning: Drum, stream bar: the pressure, 20 Pa, lies far below that of the feeds, 100000 Pa; "
              "pressures are in Pa: 1 bar is 1e5 Pa\n"
              "warning: Drum, parameter none: the output has no value: the script never set it, or set it to "
              "NaN; call "
              "setParameter for "
              "it, or remove it\n"
              "warning: Drum, parameter odd: the output has no value: the script never set it, or set it to "
              "NaN; call "
              "setParameter for "
              "it, or remove it\n"
              "warning: Drum, balance: 2 kg/s go in and 1 kg/s come out; all compounds but one "
              "close: methane: 0.25 mol/s in, -0.75 mol/s out\n"
              "warning: Drum, stream half: the mole fractions sum to 0.5, not to 1; divide the composition "
              "by its sum: x/sum(x)\n");

    // A product at the temperature or pressure of a parameter that is warned of.
    warnings = {{"Drum", "parameter P", "no unit"}};
    unit = {.name = "Drum", .parameters = {{.name = "P", .value = 20.0}, {.name = "T", .value = 100.0}}};
    addWarnings({unit, none, {}, std::array{&sound}, std::array{&cold, &bar}}, warnings);
    ASSERT_EQ(warnings.size(), 2u);
    EXPECT_EQ(warnings[1].subject, "stream cold");

    warnings.clear();
    const Balance alchemy{
        .unit = "R", .mass = {2, 2}, .reacts = true, .elements = {{"C", {1, 1}}, {"H", {2, 3}}}};
    addWarnings({drum, alchemy, {}, std::array{&sound}, std::array{&sound}}, warnings);
    EXPECT_EQ(warningLines(warnings),
              "warning: Drum, balance: 2 mol/s of H go in and 3 mol/s come out; compare the "
              "script's balance with its equations\n");
}

TEST(Warnings, nameFeedsThatLookLikeThoseOfAnotherUnit) {
    Case flowsheet;
    flowsheet.feeds = {
        {.name = "bar", .temperature = 25.5, .pressure = 12},
        {.name = "stated", .temperature = 25, .pressure = 12, .temperatureUnit = "K", .pressureUnit = "Pa"},
        {.name = "usual", .pressure = 1e3, .vaporFraction = 1},
        {.name = "unused", .pressure = 1, .vaporFraction = 1}};
    flowsheet.units = {
        {.name = "Drum", .feeds = {{"1", "bar"}, {"2", "stated"}, {"3", "usual"}, {"4", "tear"}}}};
    std::vector<Warning> warnings;
    addFeedWarnings(flowsheet, warnings);
    EXPECT_EQ(
        warningLines(warnings),
        "warning: Drum, stream bar: the temperature, 25.5, has no unit and is read as 25.5 K; state its "
        "unit, as in \"25.5 degC\"\n"
        "warning: Drum, stream bar: the pressure, 12, has no unit and is read as 12 Pa; state its unit, as "
        "in "
        "\"12 bar\"\n"
        "warning: stream unused: it feeds no unit; connect it to a port, or remove it\n");
}

TEST(Warnings, nameParametersThatLookLikeThoseOfAnotherUnit) {
    const std::vector<double> kelvin{0, 0, 0, 0, 1}, pascal{-1, 1, -2};
    UnitCase unit{.name = "Drum"};
    UnitModel& model = unit.model.emplace<UnitModel>();
    UnitResult result{.name = "Drum"};
    const auto add = [&](const char* name, double value, const std::vector<double>& dimensionality,
                         bool isPlainNumber = true) {
        model.parameters.push_back(
            {.name = name, .value = value, .dimensionality = dimensionality, .isPlainNumber = isPlainNumber});
        result.parameters.push_back(model.parameters.back());
    };
    add("outlet pressure", 5, pascal);
    add("Temperature of the drum", 80, kelvin);
    add("T2", -20, kelvin);
    add("pressure", 200, pascal, false); // "2 mbar"
    add("pressure drop", 0.5, pascal);
    add("dP of the filter", 100, pascal);
    add("tolerance of the pressure drop", 1, pascal);
    add("temperature approach", 10, kelvin);
    add("pressure of the jacket", 0, pascal);
    add("pinch", 10, kelvin);
    add("pressure ratio", 3, {});
    add("given temperature", 350, kelvin);
    add("given pressure", 1e5, pascal);
    unit.parameters = {{"Given Temperature", std::string("80 K")}, {"given pressure", 500.0, true}};
    result.parameters[11].value = 80.0;
    result.parameters[12].value = 500.0;
    unit.feeds = {{"1", "tear"}, {"2", "high"}, {"3", "low"}};
    std::vector<StreamResult> streams{
        {"high", 300, 20e5, 1, {}}, {"low", 300, 10e5, 1, {}}, {"other", 300, 10, 1, {}}};
    result.parameters.push_back(
        {.name = "temperature", .isInput = false, .value = 5.0, .dimensionality = kelvin});
    std::vector<Warning> warnings;
    addParameterWarnings(unit, result, streams, warnings);
    std::vector<std::string> texts;
    for (const Warning& warning : warnings)
        texts.push_back(warning.subject + ": " + warning.text + "; " + warning.remedy);
    EXPECT_EQ(texts,
              (std::vector<std::string>{
                  "parameter outlet pressure: the value, 5, has no unit and is read as 5 Pa; state its "
                  "unit, as in \"5 bar\"",
                  "parameter Temperature of the drum: the value, 80, has no unit and is read as 80 K; "
                  "state its unit, as in \"80 degC\"",
                  "parameter T2: the value, -20, has no unit and is read as -20 K; state its unit, as in "
                  "\"-20 degC\"",
                  "parameter pressure drop: the value, 0.5, has no unit and is read as 0.5 Pa; state its "
                  "unit, as in \"0.5 bar\"",
                  "parameter given pressure: the value, 500, has no unit and is read as 500 Pa; state its "
                  "unit, as in \"500 bar\" or \"500 kPa\""}));

    // Flues lose little.
    streams[1].pressure = 2e3;
    warnings.clear();
    addParameterWarnings(unit, result, streams, warnings);
    EXPECT_EQ(warnings.size(), 4u);
}

TEST(Warnings, sayWhyEnthalpiesDoNotClose) {
    const std::vector<double> power{2, 1, -3};
    const StreamResult stream{"s", 300, 1e5, 1, {1}};
    struct Row {
        bool reacts;
        Flows sensible;
        Flows enthalpy;
        std::optional<double> duty; // a parameter, W
        const char* warning;
    };
    const char* const leftOut = "balance: the enthalpies close without those of formation only: the heat of "
                                "reaction, -40000 W, is left out";
    const Row rows[] = {
        {true, {9e4, 9e4}, {-3e6, -3.04e6}, {}, leftOut},
        {true, {9e4, 13e4}, {-3e6, -3e6}, {}, ""},    // adiabatic
        {true, {9e4, 10e4}, {-3e6, -3.03e6}, {}, ""}, // cooled by what no parameter shows
        {true, {9e4, 9e4}, {-3e6, -3.04e6}, 4e4, ""}, // cooled to unchanged enthalpies
        {true,
         {9e4, 9e4 - 5e3},
         {-3e6, -3.045e6},
         -5e3,
         "parameter duty: the enthalpies change by this value without those of formation, and by -45000 W "
         "with them"},
        {true, {9e4, 9e4 - 5e3}, {-3e6, -3.045e6}, -45e3, ""},
        {true,
         {9e4, 9e4 + 41},
         {-3e6, -3.04e6 + 41},
         {},
         "balance: the enthalpies without those of formation change by 41 W, a thousandth of the heat of "
         "reaction, -40000 W"},
        {false,
         {1e5, 1.5e5},
         {1e5, 1.5e5},
         50.0,
         "parameter duty: the enthalpies change by 50000 W, a thousand times this value"},
        {false,
         {1e5, 1e5 + 50},
         {1e5, 1e5 + 50},
         -5e4,
         "parameter duty: the enthalpies change by 50 W, a thousandth of this value"},
        {false, {1e5, 1.5e5}, {1e5, 1.5e5}, 5e4, ""},
        {false, {1e5, 1.5e5}, {1e5, 1.5e5}, 48.0, ""},
        {false, {1e5, 1e5}, {1e5, 1e5}, 0.0, ""},
    };
    for (const Row& row : rows) {
        UnitResult unit{.name = "R"};
        if (row.duty)
            unit.parameters.push_back({.name = "duty", .value = *row.duty, .dimensionality = power});
        const Balance balance{
            .mass = {2, 2}, .enthalpy = row.enthalpy, .sensible = row.sensible, .reacts = row.reacts};
        std::vector<Warning> warnings;
        addWarnings({unit, balance, {}, std::array{&stream}, std::array{&stream}}, warnings);
        EXPECT_EQ(textOf(warnings), row.warning);
    }
}

TEST(Warnings, nameOutputsThatContradictTheEnthalpies) {
    const std::vector<double> power{2, 1, -3};
    const StreamResult cold{"cold", 300, 1e5, 1, {1}}, warm{"warm", 350, 1e5, 1, {1}, 1, 5e5};
    struct Row {
        std::vector<std::pair<const char*, double>> outputs; // W
        double gain;
        const char* warning;
        bool isSlight = false;
    };
    const Row rows[] = {
        {{{"duty", 1.04e6}},
         1e6,
         "parameter duty: the enthalpies change by 1e+06 W, not by this value, 1.04e+06 W",
         true},
        {{{"power", 1.7e6}},
         -1.5e6,
         "parameter power: the enthalpies change by -1.5e+06 W, not by this value, 1.7e+06 W"},
        {{{"duty", 0}}, 1e6, "parameter duty: the enthalpies change by 1e+06 W, not by this value, 0 W"},
        {{{"duty", 1.2e6}},
         1e6,
         "parameter duty: the enthalpies change by 1e+06 W, not by this value, 1.2e+06 W"},
        {{{"shaft power", 1.2e6}}, 1e6, ""}, // losses of the driver
        {{{"shaft power", 0.8e6}}, -1e6, ""},
        {{{"shaft power", 0.8e6}},
         1e6,
         "parameter shaft power: the enthalpies change by 1e+06 W, not by this value, 800000 W"},
        {{{"condenser duty", 3e6}, {"reboiler duty", 4e6}}, 1e6, ""},
        {{{"condenser duty", 3e6}, {"reboiler duty", 4.5e6}},
         1e6,
         "balance: the enthalpies change by 1e+06 W, which is no sum of the outputs in W: condenser duty "
         "3e+06 W, reboiler duty 4.5e+06 W"},
        {{{"Heat of reaction", 2e6}}, 1e6, ""},
        {{{"duty", 5e5}}, -1e4, ""}, // from stream to stream
        {{{"duty", 5e5}}, 1, ""},
        {{}, 1e6, ""},
    };
    for (const Row& row : rows) {
        UnitResult unit{.name = "R"};
        for (const auto& [name, value] : row.outputs)
            unit.parameters.push_back(
                {.name = name, .isInput = false, .value = value, .dimensionality = power});
        const Balance balance{.mass = {2, 2}, .enthalpy = {0, row.gain}, .sensible = {0, row.gain}};
        std::vector<Warning> warnings;
        addWarnings({unit, balance, {}, std::array{&cold}, std::array{&warm}}, warnings);
        EXPECT_EQ(textOf(warnings), row.warning);
        for (const Warning& warning : warnings)
            EXPECT_EQ(warning.isSlight, row.isSlight);
    }
}

/// Nitrogen at 10 mol/s.
class NitrogenUnit : public ::testing::Test {
protected:
    static StreamResult stream(const char* name, double temperature, double pressure = 1e5) {
        StreamResult result{name, temperature, pressure, 10, {1}, 1};
        const auto molar = [&](PhaseProperty property) {
            return *mixtureEnthalpy(compounds, result.fraction, pressure,
                                    {FlashVariable::temperature, temperature}, property);
        };
        result.enthalpy = molar(PhaseProperty::enthalpy);
        result.entropy = molar(PhaseProperty::entropy);
        result.massFlow = 10 * molarMass(compounds, result.fraction);
        return result;
    }

    void addOutput(const char* name, double value, std::vector<double> dimensionality) {
        unit.parameters.push_back(
            {.name = name, .isInput = false, .value = value, .dimensionality = std::move(dimensionality)});
    }

    std::vector<Warning> warningsFor(std::span<const StreamResult* const> feeds,
                                     const StreamResult& product) const {
        const Balance balance = balanceOf("N", compounds, feeds, std::array{&product});
        std::vector<Warning> warnings;
        addWarnings({unit, balance, compounds, feeds, std::array{&product}}, warnings);
        return warnings;
    }

    std::string warningsOf(const StreamResult& feed, const StreamResult& product) const {
        StreamResult dead = stream("dead", 300, 9e5);
        dead.totalFlow = dead.massFlow = 0;
        return textOf(warningsFor(std::array{&feed, static_cast<const StreamResult*>(&dead)}, product));
    }

    static inline const std::array compounds{findCompound("nitrogen")};
    const std::vector<double> kelvin{0, 0, 0, 0, 1}, power{2, 1, -3};
    UnitResult unit{.name = "N"};
};

TEST_F(NitrogenUnit, nameTheTemperatureAtWhichEnthalpiesBalance) {
    EXPECT_EQ(warningsOf(stream("in", 450), stream("out", 176.9)),
              "stream out: the temperature is 176.9 K, but the unit's enthalpies balance at 450.05 K");
    EXPECT_EQ(warningsOf(stream("in", 300), stream("out", 573.15)),
              "stream out: the temperature is 573.15 K, but the unit's enthalpies balance at 300 K");
    EXPECT_EQ(warningsOf(stream("in", 300), stream("out", 200)), "");
    const StreamResult in = stream("in", 300), meant = stream("out", 500), warm = stream("out", 370);
    addOutput("power", 10 * (meant.enthalpy - in.enthalpy), power);
    EXPECT_EQ(warningsOf(in, meant), "");
    EXPECT_EQ(warningsOf(in, stream("out", 227)),
              "stream out: the temperature is 227 K, but the unit's enthalpies balance at 500.15 K");
    EXPECT_THAT(warningsOf(in, warm), testing::StartsWith("parameter power: the enthalpies change by"));
    addOutput("outlet temperature", 500, kelvin);
    EXPECT_EQ(warningsOf(in, warm), "stream out: the temperature is 370 K, but the unit's enthalpies balance "
                                    "at 500 K, the value of parameter outlet temperature");
}

TEST_F(NitrogenUnit, compareOutputsOfTheOnlyFeedAndProduct) {
    const std::vector<double> perMass{2, 0, -2}, perMole{2, 1, -2, 0, 0, -1};
    const StreamResult in = stream("in", 300), out = stream("out", 500);
    const double change = out.enthalpy - in.enthalpy, mass = molarMass(compounds, in.fraction);
    const auto with = [&](const char* name, double value, const std::vector<double>& dimensionality) {
        unit.parameters.clear();
        addOutput("power", 10 * change, power);
        addOutput(name, value, dimensionality);
        return warningsOf(in, out);
    };
    EXPECT_EQ(with("specific work", change / mass, perMass), "");
    EXPECT_EQ(with("specific work", -change / mass, perMass), "");
    EXPECT_THAT(with("specific work", change / mass / 1000, perMass),
                testing::EndsWith(" J/kg, is the change of the enthalpies per mass of the feed in kJ/kg"));
    EXPECT_THAT(with("specific work", -change, perMass),
                testing::EndsWith(" J/kg, is the change of the enthalpies per mole of the feed in J/mol"));
    EXPECT_THAT(with("molar work", change / 1000, perMole),
                testing::EndsWith(" J/mol, is the change of the enthalpies per mole of the feed in kJ/mol"));
    EXPECT_EQ(with("heat of vaporization", change / mass / 900, perMass), "");
    EXPECT_EQ(with("outlet temperature", 500, kelvin), "");
    EXPECT_EQ(with("jacket outlet temperature", 300, kelvin), "");
    EXPECT_EQ(
        with("outlet temperature", 300, kelvin),
        "parameter outlet temperature: the value, 300 K, is the temperature of stream in, not of stream out");
}

TEST_F(NitrogenUnit, warnOfEntropyThatFallsWithoutCooling) {
    const StreamResult in = stream("in", 300);
    const auto with = [&](const char* name, const StreamResult& out) {
        unit.parameters.clear();
        addOutput(name, 10 * (out.enthalpy - in.enthalpy), power);
        return warningsOf(in, out);
    };
    const auto fall = testing::StartsWith("balance: the entropy falls by ");
    EXPECT_EQ(with("power", stream("out", 400, 5e5)),
              "balance: the entropy falls by 50.1418 W/K, although the unit gives off no heat: at this "
              "pressure of the product the gain in enthalpy is 50949.5 W or more, not 29083.9 W");
    EXPECT_THAT(with("Duty", stream("out", 400, 5e5)), fall);
    EXPECT_EQ(with("power", stream("out", 480, 5e5)), "");
    EXPECT_THAT(with("power", stream("out", 200, 5e4)), fall);
    EXPECT_EQ(with("Duty", stream("out", 200, 5e4)), ""); // gives off heat
    const StreamResult cooled = stream("out", 310, 5e5);
    unit.parameters.clear();
    addOutput("power", 10 * (cooled.enthalpy - in.enthalpy) + 2e4, power);
    addOutput("cooling", 2e4, power);
    EXPECT_EQ(warningsOf(in, cooled), "");
    unit.parameters.clear();
    EXPECT_EQ(warningsOf(in, stream("out", 400, 5e5)), ""); // may be cooled
    const StreamResult high = stream("high", 300, 5e5);
    StreamResult throttled = in;
    throttled.enthalpy = high.enthalpy;
    EXPECT_EQ(warningsOf(high, throttled), "");
    EXPECT_THAT(warningsOf(throttled, high),
                testing::StartsWith("stream high: the pressure, 500000 Pa, lies above"));
}

TEST_F(NitrogenUnit, nameTheFlowThatIsTakenForATemperature) {
    const StreamResult in = stream("in", 450), out = stream("out", 10);
    EXPECT_EQ(warningsFor(std::array{&in}, out).front().remedy,
              "this is the flow of nitrogen in stream in, in mol/s: look at the index");
}

TEST_F(NitrogenUnit, warnOfAReactorWithoutReaction) {
    StreamResult in = stream("in", 300), out = stream("out", 300);
    addOutput("conversion of CO", 0, {});
    EXPECT_EQ(warningsOf(in, out), std::string("parameter conversion of CO: ") + nothingReacts);
    in.totalFlow = in.massFlow = out.totalFlow = out.massFlow = 0;
    EXPECT_EQ(warningsOf(in, out), "");
}

TEST_F(NitrogenUnit, choosesTheCauseOfAFallByTheGain) {
    const StreamResult in = stream("in", 300);
    const auto remedy = [&](const StreamResult& out) {
        unit.parameters.clear();
        addOutput("power", 10 * (out.enthalpy - in.enthalpy), power);
        const auto warnings = warningsFor(std::array{&in}, out);
        return warnings.empty() ? "" : warnings.front().remedy;
    };
    EXPECT_THAT(remedy(stream("out", 400, 5e5)),
                testing::StartsWith("look for an efficiency above 1, a work"));
    EXPECT_EQ(remedy(stream("out", 301.5, 5e5)), "look for enthalpies in kJ/mol");
    EXPECT_THAT(remedy(stream("out", 300, 5e5)),
                testing::StartsWith("look for a product at the feed's temperature"));
    EXPECT_THAT(remedy(stream("out", 220, 5e5)), testing::HasSubstr("look at the sign of the work"));
    EXPECT_THAT(remedy(stream("out", 200, 5e4)), testing::HasSubstr("divided by it in place of multiplied"));
}

TEST_F(NitrogenUnit, findsTheSignOfTheWorkInItsEfficiency) {
    const StreamResult in = stream("in", 400, 5e5);
    const double isentropic = *mixtureEnthalpy(compounds, in.fraction, 1e5,
                                               {FlashVariable::entropy, in.entropy}, PhaseProperty::enthalpy);
    StreamResult out = stream("out", 300);
    const auto expanded = [&](double part) {
        out.enthalpy = in.enthalpy + part * (isentropic - in.enthalpy);
        unit.parameters = {{.name = "efficiency", .value = 0.8}};
        addOutput("power", 10 * (out.enthalpy - in.enthalpy), power);
        return textOf(warningsFor(std::array{&in}, out));
    };
    EXPECT_EQ(expanded(0.8), "");
    EXPECT_THAT(expanded(-0.8), testing::HasSubstr("with the efficiency 0.8 and the wrong sign"));
    EXPECT_EQ(expanded(-0.81), ""); // heated
}

/// Two feeds and two products of methane, ethane and nitrogen, whose compounds do not close.
class OpenBalanceTest : public ::testing::Test {
protected:
    static StreamResult stream(const char* name, double flow, std::vector<double> fraction,
                               double temperature = 300, double enthalpy = 500) {
        StreamResult result{name, temperature, 1e5, flow, std::move(fraction), 1, enthalpy};
        result.massFlow = flow * molarMass(compounds, result.fraction);
        return result;
    }

    std::string remedy(const StreamResult& first, const StreamResult& second) const {
        const std::array feeds{&rich, &lean}, products{&first, &second};
        return massRemedy({{}, balanceOf("U", compounds, feeds, products), compounds, feeds, products});
    }

    Warning firstWarning(const std::vector<StreamResult>& products) const {
        std::vector<const StreamResult*> out;
        for (const StreamResult& product : products)
            out.push_back(&product);
        const std::array feeds{&rich, &lean};
        const UnitResult unit{.name = "U"};
        std::vector<Warning> warnings;
        addWarnings({unit, balanceOf("U", compounds, feeds, out), compounds, feeds, out}, warnings);
        return warnings.empty() ? Warning() : warnings.front();
    }

    static inline const std::array compounds{findCompound("methane"), findCompound("ethane"),
                                             findCompound("nitrogen")};
    const StreamResult rich = stream("rich", 30, {0.2, 0.7, 0.1}, 300, 800),
                       lean = stream("lean", 10, {0.6, 0.2, 0.2}, 310, -400);
    const std::vector<double> mixed{0.3, 0.575, 0.125};
    const StreamResult gas = stream("gas", 28, {0.4, 0.45, 0.15}), rest = stream("rest", 12, mixed);
};

TEST_F(OpenBalanceTest, namesTheFlowOfOneProduct) {
    const std::vector<double> left{0.8 / 12, 10.4 / 12, 0.8 / 12};
    EXPECT_EQ(remedy(gas, stream("liquid", 12 * 3.6, left)),
              "the flow of stream liquid looks like one in kmol/h: flows are in mol/s");
    EXPECT_EQ(remedy(gas, stream("liquid", 12 * molarMass(compounds, left), left)),
              "the flow of stream liquid looks like one in kg/s: flows are in mol/s");
    const double kilograms = 40 * molarMass(compounds, mixed);
    EXPECT_EQ(remedy(stream("a", 0.7 * kilograms, lean.fraction), stream("b", 0.3 * kilograms, mixed)),
              "the flows of the products look like ones in kg/s: flows are in mol/s");
    EXPECT_EQ(remedy(gas, stream("liquid", 15, left)),
              "the balance closes with 12 mol/s of stream liquid, not 15 mol/s");
    EXPECT_EQ(remedy(gas, stream("liquid", 12, {0.2, 0.7, 0.1})),
              "the largest difference is that of ethane: 23 mol/s in, 21 mol/s out");
}

TEST_F(OpenBalanceTest, namesTheFeedThatIsAddedWrongly) {
    const auto split = [&](const StreamResult& sum) {
        return remedy(stream("a", 0.7 * sum.totalFlow, sum.fraction),
                      stream("b", 0.3 * sum.totalFlow, sum.fraction));
    };
    EXPECT_EQ(split(lean), "what comes out is feed lean alone: feed rich has no effect");
    EXPECT_EQ(
        split(stream("", 60, {0.4, 0.45, 0.15})),
        "feed lean comes out 3 times, as if it had the flow of feed rich: look at how the feeds are added");
    EXPECT_EQ(split(stream("", 60, mixed)),
              "each compound comes out 1.5 times: look at the flows of the products");
}

TEST_F(OpenBalanceTest, namesTheCompounds) {
    EXPECT_EQ(remedy(stream("a", 28, {0.575, 0.3, 0.125}), stream("b", 12, {0.575, 0.3, 0.125})),
              "the compounds come out in another order: ethane: 23 mol/s in, 12 mol/s out");
    EXPECT_EQ(remedy(stream("a", 28, mixed), stream("b", 12, lean.fraction)),
              "stream b has the composition of feed lean: the balance closes with that of all feeds");
    EXPECT_EQ(remedy(stream("a", 28, mixed), stream("b", 11, {2.6 / 11, 6.9 / 11, 1.5 / 11})),
              "all compounds but one close: methane: 12 mol/s in, 11 mol/s out");
}

TEST_F(OpenBalanceTest, tellsFractionsFromStoichiometryAndFlows) {
    EXPECT_EQ(firstWarning({stream("p", 40, {0.6, 1.15, 0.25})}).remedy,
              "divide the composition by its sum: x/sum(x)");
    EXPECT_EQ(firstWarning({stream("p", 20, {0.6, 1.15, 0.25})}).remedy,
              "flow times fractions keeps each element: set the flow to the sum of the moles, 40 mol/s, and "
              "divide them by it");
    EXPECT_EQ(firstWarning({stream("p", 40, {0.3, 0.575, 0.2})}).remedy,
              "with these fractions the balance is open in N only: look at the stoichiometry");
}

TEST_F(OpenBalanceTest, explainsImplausibleProducts) {
    EXPECT_EQ(firstWarning({stream("a", 28, mixed), stream("b", -27, mixed)}).remedy,
              "the balance closes with 12 mol/s: look at its formula");
    EXPECT_EQ(firstWarning({stream("a", -60, mixed), stream("b", 100, mixed)}).remedy,
              "stream b has 100 mol/s, more than all feeds, 40 mol/s: look at how the flow is split");
    StreamResult product = stream("p", 40, mixed);
    product.temperature = 2500;
    product.enthalpy = 5e5;
    EXPECT_EQ(firstWarning({product}).remedy, "the products have a thousand times the enthalpy of the feeds, "
                                              "20000 W: enthalpies are in J/mol");
    product.pressure = 5;
    EXPECT_THAT(firstWarning({product}).text, testing::StartsWith("the pressure, 5 Pa, lies far below"));
}

TEST_F(OpenBalanceTest, namesWrongMeansOfTheFeeds) {
    const auto textOf = [&](double enthalpy, double temperature = 310) {
        StreamResult main = stream("main", 28, mixed), side = stream("side", 12, mixed);
        main.enthalpy = 500;
        side.enthalpy = enthalpy;
        main.temperature = side.temperature = temperature;
        return firstWarning({main, side}).text;
    };
    EXPECT_EQ(textOf(500), "");
    EXPECT_EQ(textOf(0), "the enthalpy, 0 J/mol, is not that of the feeds");
    EXPECT_EQ(textOf(0, 298.15), "");
    EXPECT_EQ(textOf(150),
              "the enthalpy, 150 J/mol, is that of the feeds, 500 J/mol, times the part of the flow, 0.3");
    EXPECT_EQ(textOf(-100), "the enthalpy, -100 J/mol, is that of feed lean over the flow of all feeds");
    EXPECT_EQ(
        textOf(200),
        "the enthalpy, 200 J/mol, is the mean of the feeds' molar enthalpies, not weighted by their flows");
    EXPECT_EQ(textOf(10),
              "the enthalpy, 10 J/mol, is the sum of the feeds' molar enthalpies over their flow");
    EXPECT_EQ(
        textOf(900, 302.5),
        "the enthalpies change by 4800 W: the products have the mean of the feeds' temperatures, 302.5 K");
    EXPECT_EQ(textOf(900), "");
    EXPECT_EQ(
        textOf(900, 305),
        "the enthalpies change by 4800 W: the products have the mean of the feeds' temperatures, 305 K");
    EXPECT_EQ(textOf(800), "the enthalpy, 800 J/mol, counts that of feed rich in place of that of feed lean");
    EXPECT_EQ(firstWarning({stream("hot", 40, mixed, 1600, 20000)}).text,
              "the enthalpy, 20000 J/mol, is the heat flow of the feeds in W");
    EXPECT_EQ(firstWarning({rich, stream("heated", 10, lean.fraction, 310, 150)}).text, "");
}

TEST_F(OpenBalanceTest, comparesOutputsWithTheStreams) {
    const std::vector<double> kilograms{0, 1, -1}, moles{0, 0, -1, 0, 0, 1}, kelvin{0, 0, 0, 0, 1},
        pascal{-1, 1, -2};
    const double mass = rich.massFlow + lean.massFlow,
                 ethane = 23 * molarMass(compounds, std::array{0., 1., 0.});
    struct Row {
        const char* name;
        double value;
        const std::vector<double>& dimensionality;
        const char* text;
    };
    const Row rows[] = {
        {"mass flow", mass, kilograms, ""},
        {"mass flow", 1000 * mass, kilograms, "1024.196 kg/s, is the mass flow of all feeds in g/s"},
        {"mass flow", 3600 * mass, kilograms, "3687.106 kg/s, is the mass flow of all feeds in kg/h"},
        {"ethane", 3.6 * ethane, kilograms, "2.489796 kg/s, is the mass flow of ethane in all feeds in t/h"},
        {"additive", mass / 1000, kilograms, ""},
        {"mass flow of the feeds", 40, kilograms, ""},
        {"mass flow", 40, kilograms, "40 kg/s, is the flow of all feeds in mol/s"},
        {"rest mass flow", 12, kilograms, "12 kg/s, is the flow of stream rest in mol/s"},
        {"gas mass flow", 12, kilograms, ""},
        {"reflux", gas.massFlow, moles, "0.6762224 mol/s, is the mass flow of stream gas in kg/s"},
        {"flow of the gas", gas.massFlow, moles, "0.6762224 mol/s, is the mass flow of stream gas in kg/s"},
        {"rest mass flow", gas.massFlow, kilograms,
         "0.6762224 kg/s, is the mass flow of stream gas, not of stream rest"},
        {"mass flow of rest", rest.massFlow, kilograms, ""},
        {"methane in rest, mass flow", gas.massFlow, kilograms, ""},
        {"lean temperature", 300, kelvin, "300 K, is the temperature of stream rich, not of stream lean"},
        {"temperature rise of lean", 300, kelvin, ""},
        {"outlet temperature", 310, kelvin, ""}, // there are two
        {"gas", 3.6 * 28, moles, "100.8 mol/s, is the flow of stream gas in kmol/h"},
        {"reflux", 3.7 * 28, moles, ""},
        {"temperature", 300 - 273.15, kelvin, "26.85 K, is the temperature of stream rich in degC"},
        {"temperature drop", 300 - 273.15, kelvin, ""},
        {"temperature range", 300 - 273.15, kelvin, ""},
        {"temperature", 1e5, kelvin, "100000 K, is the pressure of stream rich"},
        {"temperature", 7000, kelvin, "7000 K, is no temperature of a process"},
        {"E/R", 7000, kelvin, ""},
        {"outlet pressure", 1, pascal, "1 Pa, is the pressure of stream rich in bar"},
        {"pressure drop", 100, pascal, ""},
    };
    UnitResult unit{.name = "U", .parameters = {{.name = "output", .isInput = false}}};
    const auto textFor = [&](const Row& row) {
        ModelParameter& output = unit.parameters.front();
        output.name = row.name;
        output.value = row.value;
        output.dimensionality = row.dimensionality;
        std::vector<Warning> warnings;
        addOutputWarnings({unit, {}, compounds, std::array{&rich, &lean}, std::array{&gas, &rest}}, warnings);
        return textOf(warnings);
    };
    for (const Row& row : rows)
        EXPECT_EQ(textFor(row),
                  *row.text == '\0' ? "" : "parameter " + std::string(row.name) + ": the value, " + row.text);
    unit.parameters.push_back({.name = "reflux ratio", .value = 3.6});
    EXPECT_EQ(textFor({"reflux", 3.6 * 28, moles, ""}), "");
}

} // namespace

} // namespace solvane::host
