#include "Thermodynamics.h"

#include <gmock/gmock.h>

#include <limits>

namespace solvane::host {

namespace {

using enum FlashVariable;
using testing::HasSubstr;

constexpr double nan = std::numeric_limits<double>::quiet_NaN();
const std::vector<double> feed{0.50, 0.20, 0.15, 0.10, 0.05};

struct Failure {
    std::vector<double> composition;
    FlashCondition first;
    FlashCondition second;
    const char* text;
};

} // namespace

TEST(Failures, nameTheFault) {
    const FlashCondition warm{temperature, 300};
    const FlashCondition mild{pressure, 20e5};
    const Failure failures[] = {
        {{0.5, 0.5}, warm, mild, "the composition has 2 values for 5 compounds"},
        {{0.5, 0.2, -0.15, 0.1, 0.05}, warm, mild, "the mole fraction of propane, -0.15, is negative"},
        {{0.5, 0.2, 0.15, 0.1, nan}, warm, mild, "the mole fraction of n-pentane, nan, is not a number"},
        {{0, 0, 0, 0, 0}, warm, mild, "the mole fractions sum to 0"},
        {feed, warm, {pressure, 0}, "the pressure 0 Pa is not positive"},
        {feed, warm, {pressure, nan}, "the pressure nan Pa is not a number"},
        {feed, {temperature, 49.9}, mild, "the temperature 49.9 K lies outside 50 to 3000 K"},
        {feed, {temperature, 3001}, mild, "the temperature 3001 K lies outside 50 to 3000 K"},
        {feed, warm, {pressure, 1.1e9}, "the pressure 1.1e+09 Pa lies outside 0 to 1e+09 Pa"},
        {feed, mild, {vaporFraction, 1.5}, "the vapor fraction 1.5 lies outside 0 to 1"},
        {feed, {volume, 1}, {enthalpy, 1e5}, "a flash at given volume and enthalpy is not supported"},
        {feed, mild, {enthalpy, 1e9}, "the enthalpy 1e+09 at 2e+06 Pa lies outside"},
        {feed, warm, {enthalpy, 1e9}, "the enthalpy 1e+09 at 300 K lies outside"},
        {feed, {vaporFraction, 0.5}, {volume, -1}, "the volume -1 at vapor fraction 0.5 lies outside"},
        {feed,
         {temperature, 500},
         {vaporFraction, 0.5},
         "no state with vapor fraction 0.5 was found at 500 K"},
        {{0, 0, 1, 0, 0},
         {temperature, 370},
         {vaporFraction, 0.5},
         "propane does not boil at 370 K: its critical temperature is 369.8 K"},
        {{0, 0, 1, 0, 0},
         {vaporFraction, 0},
         {pressure, 43e5},
         "propane does not boil at 4.3e+06 Pa: its critical pressure is 4.25e+06 Pa"},
    };
    const PropertyPackage package = lightGases();
    for (const Failure& failure : failures) {
        Equilibrium result;
        std::string error;
        EXPECT_FALSE(package.flash(failure.composition, failure.first, failure.second, result, error))
            << failure.text;
        EXPECT_THAT(error, HasSubstr(failure.text));
        EXPECT_TRUE(result.phases.empty()) << failure.text;
    }
}

TEST(Failures, namePhasePropertyFaults) {
    const PropertyPackage package = lightGases();
    std::vector<double> values;
    std::string error;
    EXPECT_FALSE(package.phaseProperty(PhaseProperty::volume, Phase::vapor, nan, 1e5, feed, values, error));
    EXPECT_EQ(error, "the temperature nan K is not a number");
    EXPECT_FALSE(package.twoPhaseProperty(TwoPhaseProperty::kvalue,
                                          {{Phase::vapor, Phase::liquid}, {feed, std::span(feed).first(1)}},
                                          300, 1e5, values, error));
    EXPECT_EQ(error, "the composition has 1 values for 5 compounds");
}

} // namespace solvane::host
