// The gateway as Matlab loads it, with a unit on the other side of the block.
#include "Caller.h"
#include "UnitSide.h"

#include "gateway/UnitClaim.h"

#include <gtest/gtest.h>

#include <cmath>
#include <future>
#include <limits>
#include <stdexcept>

extern "C" __declspec(dllimport) StandInHooks standInHooks;

using solvane::Wire;
using solvane::wireOf;

namespace {

constexpr double nan = std::numeric_limits<double>::quiet_NaN();
constexpr double infinity = std::numeric_limits<double>::infinity();

/// A run with two compounds and the phases Vapor and Liquid, whose block has 2048 bytes.
class Gateway : public testing::Test {
protected:
    Gateway() : unit(2048) {
        // Nothing here calls it, so nothing else would load it.
        LoadLibraryA("libmx.dll");
        useGateway(standInHooks, 2, {u"Vapor", u"Liquid"});
        if (const std::string complaint = open(); !complaint.empty())
            throw std::runtime_error(complaint);
    }
    ~Gateway() override { call(0, {2}); }

    std::string open() { return call(0, {1, unit.wideId()}); }

    UnitSide unit;
};

mxArray* composition() {
    return matrix(2, 1, {0.25, 0.75});
}

struct RequestCase {
    Arguments arguments;
    Wire request;
};

TEST_F(Gateway, everyCommandPacksItsRequest) {
    const std::vector<RequestCase> cases{
        {{u"getFeedProp", 3, u"pressure"}, wireOf(1u, 3, "pressure")},
        {{u"getFeedProp", integer(-2), u""}, wireOf(1u, -2, "")},
        {{u"setProduct", 2, 10, composition(), u"temperature", 300, u"vaporFraction", true},
         wireOf(2u, 2, 10., 0.25, 0.75, 300., 1., "temperature", "vaporFraction")},
        {{u"setReport", u"Duties"}, wireOf(3u, "Duties")},
        {{u"getParameter", u"Duty"}, wireOf(4u, "Duty")},
        {{u"setParameter", u"Duty", -2.5}, wireOf(5u, "Duty", 0u, -2.5)},
        {{u"setParameter", u"Duty", integer(7)}, wireOf(5u, "Duty", 0u, 7.)},
        {{u"setParameter", u"Duty", nan}, wireOf(5u, "Duty", 0u, nan)},
        {{u"setParameter", u"On", true}, wireOf(5u, "On", 2u, 1)},
        {{u"setParameter", u"Mode", u"fast"}, wireOf(5u, "Mode", 3u, "fast")},
        {{u"getCompoundConstant", u"charge"}, wireOf(6u, "charge")},
        {{u"getTDependentProperty", u"vaporPressure", 350}, wireOf(7u, 350., "vaporPressure")},
        {{u"getPDependentProperty", u"meltingTemperature", 1e5}, wireOf(8u, 1e5, "meltingTemperature")},
        {{u"getSinglePhaseProperty", u"volume", u"Vapor", 300, 2e5, matrix(1, 2, {0.4, 0.6})},
         wireOf(9u, 300., 2e5, 0.4, 0.6, "volume", "Vapor")},
        {{u"getTwoPhaseProperty", u"kvalue", u"Vapor", u"Liquid", 300, 2e5, composition(),
          matrix(1, 2, {0.4, 0.6})},
         wireOf(10u, 300., 2e5, 0.25, 0.75, 0.4, 0.6, "kvalue", "Vapor", "Liquid")},
        {{u"getPropertyUnit", u"volume"}, wireOf(11u, "volume")},
        {{u"getUnitName"}, wireOf(12u)},
        {{u"getFeedCount"}, wireOf(13u)},
        {{u"getProductCount"}, wireOf(14u)},
        {{u"getFeedEquilibrium", 1}, wireOf(15u, 1)},
        {{u"flashEquilibrium", composition(), u"pressure", 1e5, u"enthalpy", -3e4},
         wireOf(16u, 0.25, 0.75, 1e5, -3e4, "pressure", "enthalpy")},
        {{u"flashProperty", composition(), u"pressure", 1e5, u"temperature", 300, u"entropy"},
         wireOf(17u, 0.25, 0.75, 1e5, 300., "pressure", "temperature", "entropy")},
        {{u"logMessage", u"converged"}, wireOf(18u, "converged")},
        // Latin letters of the code page, one byte each.
        {{u"logMessage", u"Z\u00fcrich \u00e9\u20ac"}, wireOf(18u, "Z\xfcrich \xe9\x80")},
    };
    for (const RequestCase& row : cases) {
        unit.answer(wireOf(0u, 0u, 0., 0., 0., 0.));
        call(0, row.arguments);
        EXPECT_EQ(unit.takeRequest(), row.request.bytes()) << "row " << &row - cases.data();
    }
}

struct ReplyCase {
    int outputCount;
    Arguments arguments;
    Wire reply;
    std::string outputs;
};

TEST_F(Gateway, answersBecomeTheScriptsValues) {
    const Arguments feedProp{u"getFeedProp", 1, u"flow"};
    const Arguments twoPhase{u"getTwoPhaseProperty", u"kvalue",    u"Vapor", u"Liquid", 300, 2e5,
                             composition(),          composition()};
    const Arguments constant{u"getCompoundConstant", u"charge"};
    const Arguments parameter{u"getParameter", u"p"};
    const Arguments equilibrium{u"getFeedEquilibrium", 1};
    const std::vector<ReplyCase> cases{
        {1, feedProp, wireOf(0u, 0u, 300.), "1x1 [300]"},
        {0, feedProp, wireOf(0u, 1u, 4., 6.), "2x1 [4 6]"},
        {1, twoPhase, wireOf(0u, 5u),
         "error: getTwoPhaseProperty: the unit answered with an unknown shape, 5"},
        {1, {u"getTDependentProperty", u"x", 300}, wireOf(0u, 4., 6.), "2x1 [4 6]"},
        {1, constant, wireOf(0u, 0u, 0., nan), "2x1 [0 nan]"},
        {1, constant, wireOf(0u, 1u, "64-17-5", ""), "2x1 {'64-17-5' ''}"},
        {1, constant, wireOf(0u, 2u),
         "error: getCompoundConstant: the unit answered with an unknown kind of constant, 2"},
        {1, parameter, wireOf(0u, 0u, 2.5), "1x1 [2.5]"},
        {1, parameter, wireOf(0u, 1u, -7), "1x1 [-7]"},
        {1, parameter, wireOf(0u, 2u, 1), "1x1 [1]"},
        {1, parameter, wireOf(0u, 3u, "caf\xe9"), "'caf\xe9'"},
        {1, parameter, wireOf(0u, 4u),
         "error: getParameter: the unit answered with an unknown kind of value, 4"},
        {1, {u"getPropertyUnit", u"x"}, wireOf(0u, ""), "''"},
        {0, {u"getUnitName"}, wireOf(0u, "Mixer"), "'Mixer'"},
        {1, {u"getFeedCount"}, wireOf(0u, 3u), "1x1 [3]"},
        {1, {u"flashProperty", composition(), u"a", 1, u"b", 2, u"c"}, wireOf(0u, -12.5), "1x1 [-12.5]"},
        // Indices in another order than phaseNames; compositions come compound by compound.
        {5, equilibrium, wireOf(0u, 2, 2, 1, 0.3, 0.7, 0.1, 0.2, 0.9, 0.8, 300., 1e5),
         "1x2 {'Liquid' 'Vapor'} 1x2 [0.3 0.7] 2x2 [0.1 0.9 0.2 0.8] 1x1 [300] 1x1 [100000]"},
        {5, equilibrium, wireOf(0u, -2, "gas", "oil", 0.3, 0.7, 0.1, 0.2, 0.9, 0.8, 300., 1e5),
         "1x2 {'gas' 'oil'} 1x2 [0.3 0.7] 2x2 [0.1 0.9 0.2 0.8] 1x1 [300] 1x1 [100000]"},
        {5, equilibrium, wireOf(0u, 0, 300., 1e5), "1x0 {} 1x0 [] 2x0 [] 1x1 [300] 1x1 [100000]"},
        {0, equilibrium, wireOf(0u, 1, 1, 1., 0.25, 0.75, 300., 1e5), "1x1 {'Vapor'}"},
        {1, equilibrium, wireOf(0u, 1, 3, 1., 0.25, 0.75, 300., 1e5),
         "error: getFeedEquilibrium: the unit answered with an unknown phase, 3"},
        {1, equilibrium, wireOf(0u, std::numeric_limits<std::int32_t>::min()),
         "error: getFeedEquilibrium: the unit answered with an unknown number of phases, 2147483648"},
        {0, {u"logMessage", u""}, wireOf(18u), ""},
        {1, constant, wireOf(6u),
         "error: getCompoundConstant: the unit gave no answer: its material does not give this constant for "
         "all compounds"},
        {1, parameter, wireOf(1u, "Invalid parameter name: p"), "error: Invalid parameter name: p"},
        {1, parameter, wireOf(1u, ""), "error: getParameter: it failed, and the unit gave no reason"},
        // A wrong name that is close to a known one.
        {1,
         {u"getFeedProp", 1, u"enthalpi"},
         wireOf(1u, "Unknown/unsupported property \"enthalpi\" in getFeedProp"),
         "error: Unknown/unsupported property \"enthalpi\" in getFeedProp; did you mean 'enthalpy'?"},
        {1,
         {u"flashEquilibrium", composition(), u"pressure", 1, u"vapourFractoin", 1},
         wireOf(1u, "\"vapourFractoin\" is not valid"),
         "error: \"vapourFractoin\" is not valid; did you mean 'vaporFraction'?"},
        {1,
         {u"flashProperty", composition(), u"a", 1, u"b", 2, u"Enthalpynf"},
         wireOf(1u, "Invalid or unsupported overall property: Enthalpynf"),
         "error: Invalid or unsupported overall property: Enthalpynf; did you mean 'enthalpyNF'?"},
        {1,
         {u"getPropertyUnit", u"vaporPresure.Dtemperature"},
         wireOf(1u, "Unknown property: vaporPresure"),
         "error: Unknown property: vaporPresure; did you mean 'vaporPressure'?"},
        {1,
         {u"getCompoundConstant", u"criticalTemprature"},
         wireOf(1u, "Invalid return values from GetCompoundConstant: values not available"),
         "error: Invalid return values from GetCompoundConstant: values not available; did you mean "
         "'criticalTemperature'?"},
        {1,
         {u"getCompoundConstant", u"criticalTemprature"},
         wireOf(6u),
         "error: getCompoundConstant: the unit gave no answer: its material does not give this constant for "
         "all compounds; did you mean 'criticalTemperature'?"},
        {1,
         {u"getCompoundConstant", u"criticalTemprature"},
         wireOf(1u, "No calculation material available"),
         "error: No calculation material available"},
        {1, feedProp, wireOf(1u, "no flow"), "error: no flow"},
        {1,
         {u"getPropertyUnit", u"molarmass"},
         wireOf(1u, "Unknown property: molarmass"),
         "error: Unknown property: molarmass; did you mean 'molecularWeight'?"},
        {1,
         {u"getTDependentProperty", u"Cp", 300},
         wireOf(1u, "Unknown property: Cp"),
         "error: Unknown property: Cp; did you mean 'idealGasHeatCapacity'?"},
        {1,
         {u"getParameter", u"dty"},
         wireOf(1u, "no dty", "\x1ameant dty", "Duty"),
         "error: no dty; did you mean 'Duty'?"},
        // What an earlier failure left.
        {1, {u"getParameter", u"abc"}, wireOf(1u, "no abc", "\x1ameant dty", "Duty"), "error: no abc"},
        {1, {u"getFeedProp", 1, u"duty"}, wireOf(1u, "no duty"), "error: no duty"},
        {1, {u"getFeedProp", 1, u"enthalpi"}, wireOf(1u, "out of range"), "error: out of range"},
    };
    for (const ReplyCase& row : cases) {
        unit.answer(row.reply);
        EXPECT_EQ(call(row.outputCount, row.arguments), row.outputs) << "row " << &row - cases.data();
    }
}

TEST_F(Gateway, derivativesHaveARowForEachCompound) {
    useGateway(standInHooks, 3, {});
    ASSERT_EQ(open(), "");
    const auto x = [] { return matrix(3, 1, {0.2, 0.3, 0.5}); };
    const std::pair<std::uint32_t, std::string> shapes[] = {
        {2, "3x3 [1 2 3 4 5 6 7 8 9]"},
        {3, "3x2 [1 2 3 4 5 6]"},
        {4, "3x6 [1 2 3 4 5 6 7 8 9 10 11 12 13 14 15 16 17 18]"},
    };
    for (const auto& [code, value] : shapes) {
        Wire reply = wireOf(0u, code);
        for (double i = 1; i <= 18; ++i)
            reply << i;
        unit.answer(reply);
        EXPECT_EQ(call(1, {u"getTwoPhaseProperty", u"kvalue", u"Vapor", u"Liquid", 300, 2e5, x(), x()}),
                  value);
    }
}

TEST_F(Gateway, phasesKeepTheirNamesWhateverTheScriptDoesWithItsGlobals) {
    for (const Arguments& globals : {Arguments{u"Liquid"}, Arguments{}}) {
        useGateway(standInHooks, 1, globals);
        unit.answer(wireOf(0u, 2, 1, 2, 0.3, 0.7, 0.1, 0.2, 0.9, 0.8, 300., 1e5));
        EXPECT_EQ(call(1, {u"getFeedEquilibrium", 1}), "1x2 {'Vapor' 'Liquid'}");
    }
}

TEST_F(Gateway, readsAnAnswerToTheEndOfTheBlockAndNotBeyond) {
    const std::string longest(2048 - 5, 'x');
    unit.answer(wireOf(1u, longest.c_str()));
    EXPECT_EQ(call(1, {u"getUnitName"}), "error: " + longest);

    // The view ends with its page, and not one byte of this answer ends a text.
    UnitSide page(4096);
    useGateway(standInHooks, 600, {});
    ASSERT_EQ(call(0, {1, page.wideId()}), "");
    page.answer(wireOf(0u));
    EXPECT_EQ(call(1, {u"getUnitName"}), "error: getUnitName: the unit's answer is longer than its block");
    EXPECT_EQ(call(1, {u"getTDependentProperty", u"x", 300}),
              "error: getTDependentProperty: the unit's answer is longer than its block");
}

struct MisuseCase {
    Arguments arguments;
    std::string complaint;
};

TEST_F(Gateway, misuseNamesTheFunctionAndItsUsageAndNeverReachesTheUnit) {
    const std::string feedUsage = "Usage: value = getFeedProp(feed, property)";
    const auto badPort = [&](const std::string& got) {
        return "getFeedProp: feed must be one whole number, counted from 1, got " + got + ". " + feedUsage;
    };
    const std::string flashUsage = "Usage: value = flashProperty(X, name1, value1, name2, value2, property)";
    const auto badX = [&](const std::string& got) {
        return "flashProperty: X must be a full vector of 2 real, finite doubles, the mole fraction of each "
               "compound, got " +
               got + ". " + flashUsage;
    };
    const std::string logUsage = ". Usage: logMessage(text)";
    const auto feed = [](Argument port) -> Arguments { return {u"getFeedProp", port, u"flow"}; };
    const auto flash = [](Argument x, Argument value1) -> Arguments {
        return {u"flashProperty", x, u"a", value1, u"b", 1, u"c"};
    };
    mxArray* complexNumber = matrix(1, 1, {1});
    complexNumber->isComplex = true;
    mxArray* sparseVector = composition();
    sparseVector->isSparse = true;
    mxArray* textColumn = text(u"ab");
    std::swap(textColumn->rows, textColumn->columns);

    const std::vector<MisuseCase> cases{
        {{u"getFeedProp", 1}, "getFeedProp: expected 2 arguments, got 1. " + feedUsage},
        {{u"getUnitName", 1}, "getUnitName: expected 0 arguments, got 1. Usage: name = getUnitName()"},
        {feed(1.5), badPort("1.5")},
        {feed(nan), badPort("nan")},
        {feed(3e9), badPort("3e+09")},
        {feed(matrix(1, 2, {1, 2})), badPort("1 by 2 values")},
        {feed(matrix(0, 0, {})), badPort("0 by 0 values")},
        {feed(u"1"), badPort("text")},
        {feed(complexNumber), badPort("1 by 1 complex values")},
        {{u"getFeedProp", 1, 2}, "getFeedProp: property must be text in single quotes, got 2. " + feedUsage},
        {{u"getCompoundConstant", u""},
         "getCompoundConstant: name must not be empty. Usage: values = getCompoundConstant(name)"},
        {flash(matrix(3, 1, {0.2, 0.3, 0.5}), 1), badX("3 by 1 values")},
        {flash(matrix(2, 2, {0.2, 0.3, 0.5, 0}), 1),
         badX("2 by 2 values; a row with a column makes a matrix: write x(:) for each")},
        {flash(matrix(2, 1, {0.5, nan}), 1), badX("2 by 1 values, number 2 is NaN")},
        {flash(sparseVector, 1), badX("2 by 1 sparse values")},
        {flash(u"ab", 1), badX("text")},
        {flash(composition(), infinity),
         "flashProperty: value1 must be one real, finite number, got inf. " + flashUsage},
        {{u"setParameter", u"p", matrix(1, 2, {1, 2})},
         "setParameter: value must be one real number, one logical value, or text in single quotes, got 1 by "
         "2 "
         "values. Usage: setParameter(name, value)"},
        {{u"logMessage", textColumn},
         "logMessage: text must be text in single quotes, got 2 by 1 characters; [a; b] stacks texts: write "
         "[a b]" +
             logUsage},
        {{u"logMessage", std::u16string_view(u"a\0b", 3)},
         "logMessage: text must not hold the character with code 0" + logUsage},
        {{u"logMessage", u"\u0391\u0101"},
         "logMessage: text holds a character that is not in the system's ANSI code page" + logUsage},
        {{u"reportBytes", u"\u0391"},
         "setReport: content holds a character that is not in the system's ANSI code page. Usage: "
         "setReport(name, content)"},
        {{u"reportBytes"}, "setReport: content is missing. Usage: setReport(name, content)"},
        {{u"getfeedprop", 1, u"flow"}, "CapeOpenUnitMex: there is no command 'getfeedprop'"},
        {{3}, "CapeOpenUnitMex: Usage: CapeOpenUnitMex(1,unit_ID) begins a run, CapeOpenUnitMex(2) ends it"},
        {{},
         "CapeOpenUnitMex: it is called by the functions of its library, such as getFeedProp, and wants the "
         "name of a command"},
    };
    EXPECT_EQ(call(1, {u"logMessage", u"a"}),
              "error: logMessage: expected at most 0 outputs, got 1" + logUsage);
    for (const MisuseCase& row : cases) {
        EXPECT_EQ(call(0, row.arguments), "error: " + row.complaint) << "row " << &row - cases.data();
        EXPECT_EQ(unit.takeRequest(), "") << "row " << &row - cases.data();
    }
}

TEST_F(Gateway, aRequestFillsTheBlockAtMost) {
    EXPECT_EQ(call(0, {u"logMessage", std::u16string(2048 - 5, u'x')}), "");
    EXPECT_EQ(unit.takeRequest().size(), 2048u);
    EXPECT_EQ(call(0, {u"logMessage", std::u16string(2048 - 4, u'x')}),
              "error: logMessage: the text is too long: the arguments take 2049 bytes, and there is room for "
              "2048. Usage: logMessage(text)");
    EXPECT_EQ(unit.takeRequest(), "");
}

TEST_F(Gateway, theBlocksSizeFollowsTheCountsOfTheRun) {
    struct Size {
        double compounds;
        Arguments phases;
        std::size_t bytes;
    };
    for (const Size& size :
         {Size{20, {u"a", u"b"}, 3208}, Size{15, {}, 2352}, Size{12, Arguments(20, u"a"), 2168}}) {
        useGateway(standInHooks, size.compounds, size.phases);
        ASSERT_EQ(open(), "");
        const std::string complaint = call(0, {u"logMessage", std::u16string(4000, u'x')});
        EXPECT_NE(complaint.find("room for " + std::to_string(size.bytes) + "."), std::string::npos)
            << complaint;
    }
}

TEST_F(Gateway, aReportsTextIsGivenInTheCodePage) {
    EXPECT_EQ(call(1, {u"reportBytes", u"a\n\u20ac"}), "1x3 [97 10 128]");
}

TEST_F(Gateway, commandsWorkOnlyBetweenBeginAndEnd) {
    EXPECT_EQ(standInHooks.locks, 1);
    EXPECT_EQ(open(), "") << "a run that was broken off gives way to the next";
    EXPECT_EQ(standInHooks.locks, 1);
    EXPECT_EQ(call(0, {2}), "");
    EXPECT_EQ(standInHooks.locks, 0);
    EXPECT_EQ(call(0, {2}), "error: CapeOpenUnitMex: no run is open");
    EXPECT_EQ(call(1, {u"getUnitName"}), "error: getUnitName: it can only be called from the script of a "
                                         "unit operation, while the unit calculates");
    EXPECT_EQ(call(0, {1, u"{nobody}"}),
              "error: CapeOpenUnitMex: no unit operation is calculating under the id {nobody}");
    useGateway(standInHooks, nan, {});
    EXPECT_EQ(open(), "error: CapeOpenUnitMex: the global variable nComp is not set");
}

TEST_F(Gateway, aUnitServesOneScriptAtATime) {
    const std::string refusal = "another script is running for the unit operation " + unit.id() +
                                ": wait until its calculation has ended";
    std::string error;
    std::thread([&] { // as another Matlab
        solvane::UnitClaim claim;
        EXPECT_FALSE(claim.take(unit.id(), error));
    })
        .join();
    EXPECT_EQ(error, refusal);

    ASSERT_EQ(call(0, {2}), "");
    std::promise<void> isTaken, mayEnd;
    std::thread other([&] {
        solvane::UnitClaim claim;
        EXPECT_TRUE(claim.take(unit.id(), error)) << error;
        isTaken.set_value();
        mayEnd.get_future().wait();
    });
    isTaken.get_future().wait();
    EXPECT_EQ(open(), "error: CapeOpenUnitMex: " + refusal);
    mayEnd.set_value();
    other.join();
    EXPECT_EQ(open(), "");
}

TEST_F(Gateway, aSlowUnitIsWaitedForAndADeadOneIsNot) {
    unit.answer(wireOf(0u, 3u), 1500);
    EXPECT_EQ(call(1, {u"getFeedCount"}), "1x1 [3]");
    unit.answer(wireOf(0u, 4u));
    EXPECT_EQ(call(1, {u"getFeedCount"}), "1x1 [4]");

    unit.answer(wireOf(0u), INFINITE);
    std::thread death([this] {
        Sleep(200);
        unit.die();
    });
    EXPECT_EQ(call(1, {u"getFeedCount"}), "error: getFeedCount: the unit operation is no longer running");
    death.join();
    EXPECT_EQ(call(1, {u"getFeedCount"}), "error: getFeedCount: the unit operation is no longer running");
}

} // namespace
