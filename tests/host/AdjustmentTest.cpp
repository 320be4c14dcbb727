// Targets: what users write, and what is said of an output that does not reach its target.
#include "studies/Adjustment.h"
#include "cases/UnitOfMeasure.h"

#include <gmock/gmock.h>

#include <cmath>
#include <functional>

namespace solvane::host {

namespace {

using testing::HasSubstr;

/// A unit whose duty is a function of the parameter "P".
class Adjustments : public testing::Test {
protected:
    Adjustments() {
        flowsheet.compounds = {findCompound("methane"), findCompound("ethane")};
        flowsheet.feeds = {
            {.name = "F", .temperature = 300, .pressure = 1e5, .flow = 3, .composition = {0.5, 0.5}}};
        flowsheet.units = {{.products = {{"out", "Product"}}}};
        const std::vector<double> kelvin = parseUnit("K")->exponents;
        std::vector<double> rise = kelvin;
        rise.push_back(1);
        parameters = {{{.name = "P", .maximum = 9e6, .dimensionality = parseUnit("Pa")->exponents},
                       {.name = "n", .kind = ParameterKind::integer},
                       {.name = "duty", .isInput = false, .dimensionality = parseUnit("W")->exponents},
                       {.name = "rise", .isInput = false, .dimensionality = rise},
                       {.name = "note", .kind = ParameterKind::text, .isInput = false}}};
    }

    bool reach(const AdjustmentRequest& request, const std::function<double(double)>& duty) {
        Adjustment adjustment;
        error.clear();
        results = {};
        lines = 0;
        return readAdjustment(flowsheet, parameters, request, adjustment, error) &&
               reachTarget(
                   flowsheet, adjustment,
                   [&](const Variation& variation, RunResults& trial, std::string& text) {
                       trial = {};
                       UnitResult& unit = trial.units.emplace_back();
                       unit.parameters = parameters[0];
                       unit.parameters[2].value = duty(std::get<double>(variation.parameters[0][0].value));
                       text = "too hot";
                       return !std::isinf(std::get<double>(*unit.parameters[2].value));
                   },
                   [&](const AdjustmentResult& progress) { lines += progress.trials.size(); }, results,
                   error);
    }

    Case flowsheet;
    UnitParameters parameters;
    RunResults results;
    std::size_t lines = 0;
    std::string error;
};

TEST_F(Adjustments, findTheValueInTheUnitsOfTheUser) {
    ASSERT_TRUE(reach({"p=1 bar:20 bar", "Duty=2.5 kW"}, [](double p) { return p * p / 1e8; })) << error;
    const AdjustmentResult& found = *results.adjustment;
    EXPECT_NEAR(found.trials.back().value, 5e5, 1);
    EXPECT_NEAR(found.trials.back().output, 2500, 2500e-6);
    EXPECT_EQ(found.variableUnit + ", " + found.outputUnit, "bar, kW");
    EXPECT_EQ(lines, found.trials.size() * (found.trials.size() + 1) / 2) << "a line for each trial";
    ASSERT_TRUE(reach({"P=1e5:2e6", "duty=0"}, [](double p) { return 1e6 * std::log(p / 3e5); })) << error;
    EXPECT_NEAR(results.adjustment->trials.back().value, 3e5, 3);
    ASSERT_TRUE(reach({"P=1:2", "duty=1"}, [](double) { return 1; }));
    EXPECT_EQ(results.adjustment->trials.size(), 1u) << "the first end has the target";
}

TEST_F(Adjustments, sayWhatIsWrong) {
    const auto square = [](double p) { return p * p / 1e8; };
    const struct {
        AdjustmentRequest request;
        std::function<double(double)> duty;
        const char* message;
    } rows[] = {
        {{"Q=1:2", "duty=1"}, square, "--adjust: the variable \"Q\" is unknown; variables: P, n, F.temp"},
        {{"P=1:2:3", "duty=1"}, square, "--adjust: P: expected a bracket FIRST:LAST"},
        {{"P=1", "duty=1"}, square, "--adjust: P: expected a bracket FIRST:LAST"},
        {{"n=1:2", "duty=1"}, square, "--adjust: n: only a real number can be adjusted"},
        {{"P=1:1e7", "duty=1"}, square, "above the maximum"},
        {{"P=1:2", "dutty=1"}, square, "--target: the output \"dutty\" is unknown; did you mean \"duty\"?"},
        {{"P=1:2", "P=1"}, square, "outputs: duty, rise, note, F.temperature, F.pressure, F.flow, "},
        {{"P=1:2", "note=1"}, square, "--target: note: only a number can have a target"},
        {{"P=1:2", "duty=1 bar"}, square, "wrong dimension"},
        {{"P=1:2", "Product.flow"}, square, "not of the form OUTPUT=VALUE"},
        {{"P=1 bar:5 bar", "duty=3 kW"},
         square,
         "The target, duty = 3 kW, does not lie between the outputs at the ends of the bracket: 0.1 kW at P "
         "= 1 bar, 2.5 kW at P = 5 bar"},
        {{"P=1 bar:5 bar", "duty=3 W"},
         [](double p) { return p > 2e5 ? 5 : 1; },
         "The output jumps over the target, duty = 3 W: at P = 2 bar from "},
        {{"P=1 bar:5 bar", "duty=3 W"},
         [](double p) { return p < 2e5   ? 1
                               : p > 4e5 ? 5
                                         : INFINITY; },
         "At P = 3 bar: too hot"},
        {{"P=1 bar:5 bar", "duty=3 W"},
         [](double) { return NAN; },
         "At P = 1 bar: the output \"duty\" has no"},
        {{.variable = "P=1 bar:5 bar", .target = "duty=2 kW", .limit = 3},
         square,
         "The target, duty = 2 kW, is not reached within 3 trials: the closest output is "},
    };
    for (const auto& row : rows) {
        EXPECT_FALSE(reach(row.request, row.duty)) << row.message;
        EXPECT_THAT(error, HasSubstr(row.message));
        EXPECT_EQ(results.adjustment && results.adjustment->reached, false);
        EXPECT_EQ(results.failure.has_value(), results.adjustment.has_value()) << row.message;
    }
    Adjustment adjustment;
    ASSERT_TRUE(readAdjustment(flowsheet, parameters, {"P=1:2", "rise=9 degF"}, adjustment, error)) << error;
    EXPECT_DOUBLE_EQ(adjustment.plan.target, 5) << "a difference has no zero of its own";
    EXPECT_EQ(adjustment.plan.outputUnit, "K");
}

} // namespace

} // namespace solvane::host
