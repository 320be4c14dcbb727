#include "warnings/FailureHint.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace solvane::host {

namespace {

using testing::HasSubstr;
using testing::IsEmpty;
using testing::StartsWith;

/// A unit with two feeds of A and B, of which only the first has B, and none has C.
class FailureHints : public testing::Test {
protected:
    FailureHints() {
        results_.compounds = {"A", "B", "C"};
        results_.streams = {{"in", 300, 2e5, 2, {0.5, 0.5, 0}, 1, 10337.63, -110345.6},
                            {"side", 350, 3e5, 6, {1, 0, 0}, 1, 12000, -50000}};
    }

    std::string hint(const std::string& message) { return failureHint(message, {results_, unit_, nullptr}); }

    RunResults results_;
    UnitResult unit_{.name = "U",
                     .feeds = {"in", "side"},
                     .products = {"out", "purge"},
                     .parameters = {{.name = "P", .value = 5e5, .dimensionality = {-1, 1, -2}}}};
};

TEST_F(FailureHints, nameWhatAnEnthalpyOutOfRangeIs) {
    const auto of = [&](const std::string& enthalpy) {
        return hint("The flash failed: the " + enthalpy +
                    " at 100000 Pa lies outside -18304.9 to 223208, the values from 50 K (J/mol)");
    };
    EXPECT_THAT(of("enthalpyF 10337.6"), StartsWith("stream in has this 'enthalpy'"));
    EXPECT_THAT(of("enthalpy -110346"), StartsWith("stream in has this 'enthalpyF'"));
    EXPECT_THAT(of("enthalpyF -110.346"), StartsWith("stream in has a thousand times this"));
    EXPECT_THAT(of("enthalpyF -300000"), StartsWith("stream side carries this much in W"));
    EXPECT_THAT(of("enthalpy -65086.4"), StartsWith("the mixture of the feeds has this 'enthalpyF'"));
    EXPECT_THAT(of("enthalpy 500000"), StartsWith("this value is a pressure"));
    EXPECT_THAT(of("enthalpy 6.27294e+06"), StartsWith("flashes take values per mol"));
    EXPECT_THAT(of("enthalpy 6.27294e+09"), IsEmpty());
    EXPECT_THAT(of("enthalpy -220800"), IsEmpty());
    EXPECT_THAT(hint("the enthalpyF -880000 at 100000 Pa lies outside -164900 to -33080"),
                StartsWith("flashes take values per mol")); // 8 mol/s
}

TEST_F(FailureHints, nameWhatMakesAMoleFractionNegative) {
    const auto of = [&](const std::string& fraction, const std::string& where) {
        return hint("Failed to calculate equilibrium: The flash failed: the mole fraction of " + fraction +
                    ", is negative" + where);
    };
    const std::string inOde = ", in a step of ode15s";
    EXPECT_THAT(of("A, -96334.9", inOde), StartsWith("a rate, or the step, is far too large"));
    EXPECT_THAT(of("B, -0.4", inOde), StartsWith("a rate, or the step, is far too large"));
    EXPECT_THAT(of("C, -96334.9", inOde), StartsWith("a rate, or the step, is far too large"));
    EXPECT_THAT(of("C, -0.0001", inOde), StartsWith("no feed has it, and yet it is used up"));
    EXPECT_THAT(of("C, -0.0001", ""), StartsWith("no feed has it, and yet it is used up"));
    EXPECT_THAT(of("D, -0.0001", ""), StartsWith("more is taken away than there is"));
    EXPECT_THAT(of("B, -0.0001", inOde), HasSubstr("tighten RelTol"));
    EXPECT_THAT(of("B, -0.0001", ""), StartsWith("more is taken away than there is"));
    EXPECT_THAT(of("B, -1.2e-17", inOde), StartsWith("so little is rounding"));
    EXPECT_THAT(of("B, -0.0001", ", in a step of fzero"), StartsWith("fzero tries such values on its way"));
}

TEST_F(FailureHints, nameWhatOtherConditionsOutOfRangeAre) {
    const std::string range = " K lies outside 50 to 3000 K";
    EXPECT_EQ(hint("the temperature 39.1621" + range), "temperatures are in K: 39.1621 degC are 312.312 K");
    EXPECT_THAT(hint("the temperature 300000" + range), StartsWith("this value is a pressure"));
    EXPECT_THAT(hint("the temperature 3200" + range), IsEmpty());
    EXPECT_THAT(hint("Failed to calculate equilibrium: the temperature 39" + range + ", in a step of fsolve"),
                StartsWith("fsolve tries such values on its way"));
    EXPECT_THAT(hint("the entropy 1131.77 at 500000 Pa lies outside -141.607 to 157.242"),
                StartsWith("flashes take values per mol"));
    EXPECT_THAT(hint("the pressure -1e+06 Pa is not positive"), StartsWith("more pressure is lost"));
    EXPECT_THAT(hint("the pressure 0 Pa is not positive"), IsEmpty());
}

TEST_F(FailureHints, numberThePortsThatAScriptNames) {
    const std::string wrong = " must be one whole number, counted from 1, got text. Usage: ";
    EXPECT_EQ(hint("setProduct: product" + wrong), "products are numbered: 'out' is 1, 'purge' is 2");
    EXPECT_EQ(hint("getFeedProp: feed" + wrong), "feeds are numbered: 'in' is 1, 'side' is 2");
}

TEST_F(FailureHints, readMessagesOfAnyLength) {
    EXPECT_THAT(hint(std::string(1'000'000, 'x') + ", is negative"), IsEmpty());
}

} // namespace

} // namespace solvane::host
