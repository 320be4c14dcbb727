// The gateway as Matlab loads it, with a unit on the other side of the block.
#include "Caller.h"
#include "UnitSide.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <stdexcept>

extern "C" __declspec(dllimport) StandInHooks standInHooks;

namespace {

constexpr double nan = std::numeric_limits<double>::quiet_NaN();
constexpr double infinity = std::numeric_limits<double>::infinity();

/// A run with two compounds and the phases Vapor and Liquid, whose block has
/// 2048 bytes.
class Gateway : public testing::Test {
protected:
    Gateway() : unit(2048) {
        // Nothing here calls it, so nothing else would load it.
        LoadLibraryA("libmx.dll");
        useGateway(standInHooks, 2, {text(u"Vapor"), text(u"Liquid")});
        if (const std::string complaint = open(); !complaint.empty())
            throw std::runtime_error(complaint);
    }
    ~Gateway() override { call(0, {number(2)}); }

    std::string open() {
        return call(0, {number(1), text(std::u16string(unit.id().begin(), unit.id().end()))});
    }

    UnitSide unit;
};

mxArray* composition() {
    return matrix(2, 1, {0.25, 0.75});
}

struct RequestCase {
    std::vector<mxArray*> arguments;
    Bytes request;
};

TEST_F(Gateway, everyCommandPacksItsRequest) {
    const std::vector<RequestCase> cases{
        {{text(u"getFeedProp"), number(3), text(u"pressure")}, Bytes() << 1u << 3 << "pressure"},
        {{text(u"getFeedProp"), integer(-2), text(u"")}, Bytes() << 1u << -2 << ""},
        {{text(u"setProduct"), number(2), number(10), composition(), text(u"temperature"), number(300),
          text(u"vaporFraction"), logical(true)},
         Bytes() << 2u << 2 << 10. << 0.25 << 0.75 << 300. << 1. << "temperature"
                 << "vaporFraction"},
        {{text(u"setReport"), text(u"Duties")}, Bytes() << 3u << "Duties"},
        {{text(u"getParameter"), text(u"Duty")}, Bytes() << 4u << "Duty"},
        {{text(u"setParameter"), text(u"Duty"), number(-2.5)}, Bytes() << 5u << "Duty" << 0u << -2.5},
        {{text(u"setParameter"), text(u"Duty"), integer(7)}, Bytes() << 5u << "Duty" << 0u << 7.},
        {{text(u"setParameter"), text(u"Duty"), number(nan)}, Bytes() << 5u << "Duty" << 0u << nan},
        {{text(u"setParameter"), text(u"On"), logical(true)}, Bytes() << 5u << "On" << 2u << 1},
        {{text(u"setParameter"), text(u"Mode"), text(u"fast")}, Bytes() << 5u << "Mode" << 3u << "fast"},
        {{text(u"getCompoundConstant"), text(u"charge")}, Bytes() << 6u << "charge"},
        {{text(u"getTDependentProperty"), text(u"vaporPressure"), number(350)},
         Bytes() << 7u << 350. << "vaporPressure"},
        {{text(u"getPDependentProperty"), text(u"meltingTemperature"), number(1e5)},
         Bytes() << 8u << 1e5 << "meltingTemperature"},
        {{text(u"getSinglePhaseProperty"), text(u"volume"), text(u"Vapor"), number(300), number(2e5),
          matrix(1, 2, {0.4, 0.6})},
         Bytes() << 9u << 300. << 2e5 << 0.4 << 0.6 << "volume"
                 << "Vapor"},
        {{text(u"getTwoPhaseProperty"), text(u"kvalue"), text(u"Vapor"), text(u"Liquid"), number(300),
          number(2e5), composition(), matrix(1, 2, {0.4, 0.6})},
         Bytes() << 10u << 300. << 2e5 << 0.25 << 0.75 << 0.4 << 0.6 << "kvalue"
                 << "Vapor"
                 << "Liquid"},
        {{text(u"getPropertyUnit"), text(u"volume")}, Bytes() << 11u << "volume"},
        {{text(u"getUnitName")}, Bytes() << 12u},
        {{text(u"getFeedCount")}, Bytes() << 13u},
        {{text(u"getProductCount")}, Bytes() << 14u},
        {{text(u"getFeedEquilibrium"), number(1)}, Bytes() << 15u << 1},
        {{text(u"flashEquilibrium"), composition(), text(u"pressure"), number(1e5), text(u"enthalpy"),
          number(-3e4)},
         Bytes() << 16u << 0.25 << 0.75 << 1e5 << -3e4 << "pressure"
                 << "enthalpy"},
        {{text(u"flashProperty"), composition(), text(u"pressure"), number(1e5), text(u"temperature"),
          number(300), text(u"entropy")},
         Bytes() << 17u << 0.25 << 0.75 << 1e5 << 300. << "pressure"
                 << "temperature"
                 << "entropy"},
        {{text(u"logMessage"), text(u"converged")}, Bytes() << 18u << "converged"},
        // Latin letters of the code page, one byte each.
        {{text(u"logMessage"), text(u"Z\u00fcrich \u00e9\u20ac")}, Bytes() << 18u << "Z\xfcrich \xe9\x80"},
    };
    for (const RequestCase& row : cases) {
        unit.answer(Bytes() << 0u << 0u << 0. << 0. << 0. << 0.);
        call(0, row.arguments);
        EXPECT_EQ(unit.takeRequest(), std::string(row.request)) << "row " << &row - cases.data();
    }
}

struct ReplyCase {
    std::vector<mxArray*> arguments;
    int outputCount;
    Bytes reply;
    std::string outputs;
};

TEST_F(Gateway, answersBecomeTheScriptsValues) {
    const std::vector<mxArray*> feedProp{text(u"getFeedProp"), number(1), text(u"flow")};
    const std::vector<mxArray*> twoPhase{text(u"getTwoPhaseProperty"),
                                         text(u"kvalue"),
                                         text(u"Vapor"),
                                         text(u"Liquid"),
                                         number(300),
                                         number(2e5),
                                         composition(),
                                         composition()};
    const std::vector<mxArray*> constant{text(u"getCompoundConstant"), text(u"charge")};
    const std::vector<mxArray*> parameter{text(u"getParameter"), text(u"p")};
    const std::vector<mxArray*> equilibrium{text(u"getFeedEquilibrium"), number(1)};
    const std::vector<ReplyCase> cases{
        {feedProp, 1, Bytes() << 0u << 0u << 300., "1x1 [300]"},
        {feedProp, 0, Bytes() << 0u << 1u << 4. << 6., "2x1 [4 6]"},
        {twoPhase, 1, Bytes() << 0u << 2u << 1. << 2. << 3. << 4., "2x2 [1 2 3 4]"},
        {twoPhase, 1, Bytes() << 0u << 3u << 1. << 2. << 3. << 4., "2x2 [1 2 3 4]"},
        {twoPhase, 1, Bytes() << 0u << 4u << 1. << 2. << 3. << 4. << 5. << 6. << 7. << 8.,
         "2x4 [1 2 3 4 5 6 7 8]"},
        {twoPhase, 1, Bytes() << 0u << 5u,
         "error: getTwoPhaseProperty: the unit answered with an unknown shape, "
         "5"},
        {{text(u"getTDependentProperty"), text(u"x"), number(300)},
         1,
         Bytes() << 0u << 4. << 6.,
         "2x1 [4 6]"},
        {constant, 1, Bytes() << 0u << 0u << 0. << nan, "2x1 [0 nan]"},
        {constant, 1,
         Bytes() << 0u << 1u << "64-17-5"
                 << "",
         "2x1 {'64-17-5' ''}"},
        {constant, 1, Bytes() << 0u << 2u,
         "error: getCompoundConstant: the unit answered with an unknown kind of "
         "constant, 2"},
        {parameter, 1, Bytes() << 0u << 0u << 2.5, "1x1 [2.5]"},
        {parameter, 1, Bytes() << 0u << 1u << -7, "1x1 [-7]"},
        {parameter, 1, Bytes() << 0u << 2u << 1, "1x1 [1]"},
        {parameter, 1, Bytes() << 0u << 3u << "caf\xe9", "'caf\xe9'"},
        {parameter, 1, Bytes() << 0u << 4u,
         "error: getParameter: the unit answered with an unknown kind of value, "
         "4"},
        {{text(u"getPropertyUnit"), text(u"x")}, 1, Bytes() << 0u << "", "''"},
        {{text(u"getUnitName")}, 0, Bytes() << 0u << "Mixer", "'Mixer'"},
        {{text(u"getFeedCount")}, 1, Bytes() << 0u << 3u, "1x1 [3]"},
        {{text(u"flashProperty"), composition(), text(u"a"), number(1), text(u"b"), number(2), text(u"c")},
         1,
         Bytes() << 0u << -12.5,
         "1x1 [-12.5]"},
        // Indices in another order than phaseNames; compositions come compound by
        // compound.
        {equilibrium, 5,
         Bytes() << 0u << 2 << 2 << 1 << 0.3 << 0.7 << 0.1 << 0.2 << 0.9 << 0.8 << 300. << 1e5,
         "1x2 {'Liquid' 'Vapor'} 1x2 [0.3 0.7] 2x2 [0.1 0.9 0.2 0.8] 1x1 [300] "
         "1x1 [100000]"},
        {equilibrium, 5,
         Bytes() << 0u << -2 << "gas"
                 << "oil" << 0.3 << 0.7 << 0.1 << 0.2 << 0.9 << 0.8 << 300. << 1e5,
         "1x2 {'gas' 'oil'} 1x2 [0.3 0.7] 2x2 [0.1 0.9 0.2 0.8] 1x1 [300] 1x1 "
         "[100000]"},
        {equilibrium, 5, Bytes() << 0u << 0 << 300. << 1e5, "1x0 {} 1x0 [] 2x0 [] 1x1 [300] 1x1 [100000]"},
        {equilibrium, 0, Bytes() << 0u << 1 << 1 << 1. << 0.25 << 0.75 << 300. << 1e5, "1x1 {'Vapor'}"},
        {equilibrium, 1, Bytes() << 0u << 1 << 3 << 1. << 0.25 << 0.75 << 300. << 1e5,
         "error: getFeedEquilibrium: phase 3 is not in the global variable "
         "phaseNames"},
        {equilibrium, 1, Bytes() << 0u << std::numeric_limits<std::int32_t>::min(),
         "error: getFeedEquilibrium: the unit answered with an unknown number of "
         "phases, 2147483648"},
        {{text(u"logMessage"), text(u"")}, 0, Bytes() << 18u, ""},
        {constant, 1, Bytes() << 6u,
         "error: getCompoundConstant: the unit gave no answer: its material does "
         "not give this constant for "
         "all "
         "compounds"},
        {parameter, 1, Bytes() << 1u << "Invalid parameter name: p", "error: Invalid parameter name: p"},
        {parameter, 1, Bytes() << 1u << "", "error: getParameter: it failed, and the unit gave no reason"},
    };
    for (const ReplyCase& row : cases) {
        unit.answer(row.reply);
        EXPECT_EQ(call(row.outputCount, row.arguments), row.outputs) << "row " << &row - cases.data();
    }
}

TEST_F(Gateway, readsAnAnswerToTheEndOfTheBlockAndNotBeyond) {
    const std::string longest(2048 - 5, 'x');
    unit.answer(Bytes() << 1u << longest.c_str());
    EXPECT_EQ(call(1, {text(u"getUnitName")}), "error: " + longest);

    // The view ends with its page, and not one byte of this answer ends a text.
    UnitSide page(4096);
    useGateway(standInHooks, 600, {});
    ASSERT_EQ(call(0, {number(1), text(std::u16string(page.id().begin(), page.id().end()))}), "");
    page.answer(Bytes() << 0u);
    EXPECT_EQ(call(1, {text(u"getUnitName")}),
              "error: getUnitName: the unit's answer is longer than its block");
    EXPECT_EQ(call(1, {text(u"getTDependentProperty"), text(u"x"), number(300)}),
              "error: getTDependentProperty: the unit's answer is longer than "
              "its block");
}

struct MisuseCase {
    std::vector<mxArray*> arguments;
    int outputCount;
    std::string complaint;
};

TEST_F(Gateway, misuseNamesTheFunctionAndItsUsageAndNeverReachesTheUnit) {
    const std::string feedUsage = "Usage: value = getFeedProp(feed, property)";
    const std::string badPort =
        "error: getFeedProp: feed must be one whole number, counted from 1. " + feedUsage;
    const std::string flashUsage = "Usage: value = flashProperty(X, name1, value1, name2, value2, property)";
    const std::string badX = "error: flashProperty: X must be a full vector of 2 real, finite doubles, the "
                             "mole fraction of each compound. " +
                             flashUsage;
    const std::string logUsage = ". Usage: logMessage(text)";
    const auto feed = [](mxArray* port) -> std::vector<mxArray*> {
        return {text(u"getFeedProp"), port, text(u"flow")};
    };
    const auto flash = [](mxArray* x, mxArray* value1) -> std::vector<mxArray*> {
        return {text(u"flashProperty"), x, text(u"a"), value1, text(u"b"), number(1), text(u"c")};
    };
    mxArray* complexNumber = number(1);
    complexNumber->isComplex = true;
    mxArray* sparseVector = composition();
    sparseVector->isSparse = true;
    mxArray* textColumn = text(u"ab");
    std::swap(textColumn->rows, textColumn->columns);

    const std::vector<MisuseCase> cases{
        {{text(u"getFeedProp"), number(1)},
         1,
         "error: getFeedProp: 2 arguments are wanted, 1 given. " + feedUsage},
        {{text(u"getUnitName"), number(1)},
         1,
         "error: getUnitName: 0 arguments are wanted, 1 given. Usage: name = "
         "getUnitName()"},
        {{text(u"logMessage"), text(u"a")}, 1, "error: logMessage: it returns 0 values, 1 wanted" + logUsage},
        {feed(number(1.5)), 1, badPort},
        {feed(number(nan)), 1, badPort},
        {feed(number(3e9)), 1, badPort},
        {feed(matrix(1, 2, {1, 2})), 1, badPort},
        {feed(matrix(0, 0, {})), 1, badPort},
        {feed(text(u"1")), 1, badPort},
        {feed(complexNumber), 1, badPort},
        {{text(u"getFeedProp"), number(1), number(2)},
         1,
         "error: getFeedProp: property must be text in single quotes. " + feedUsage},
        {flash(matrix(3, 1, {0.2, 0.3, 0.5}), number(1)), 1, badX},
        {flash(matrix(2, 2, {0.2, 0.3, 0.5, 0}), number(1)), 1, badX},
        {flash(matrix(2, 1, {0.5, nan}), number(1)), 1, badX},
        {flash(sparseVector, number(1)), 1, badX},
        {flash(text(u"ab"), number(1)), 1, badX},
        {flash(composition(), number(infinity)), 1,
         "error: flashProperty: value1 must be one real, finite number. " + flashUsage},
        {{text(u"setParameter"), text(u"p"), matrix(1, 2, {1, 2})},
         0,
         "error: setParameter: value must be one real number, one logical value, "
         "or text in single quotes. "
         "Usage: "
         "setParameter(name, value)"},
        {{text(u"logMessage"), textColumn},
         0,
         "error: logMessage: text must be text in single quotes" + logUsage},
        {{text(u"logMessage"), text(std::u16string_view(u"a\0b", 3))},
         0,
         "error: logMessage: text must not hold the character with code 0" + logUsage},
        {{text(u"logMessage"), text(u"\u0391\u0101")},
         0,
         "error: logMessage: text holds a character that is not in the system's "
         "ANSI code page" +
             logUsage},
        {{text(u"reportBytes"), text(u"\u0391")},
         1,
         "error: setReport: content holds a character that is not in the "
         "system's ANSI code page. Usage: "
         "setReport(name, content)"},
        {{text(u"reportBytes")}, 1, "error: setReport: content is missing. Usage: setReport(name, content)"},
        {{text(u"getfeedprop"), number(1), text(u"flow")},
         1,
         "error: CapeOpenUnitMex: there is no command 'getfeedprop'"},
        {{number(3)},
         0,
         "error: CapeOpenUnitMex: Usage: CapeOpenUnitMex(1,unit_ID) begins a "
         "run, CapeOpenUnitMex(2) ends "
         "it"},
        {{},
         0,
         "error: CapeOpenUnitMex: it is called by the functions of its library, "
         "such as getFeedProp, and "
         "wants the "
         "name of a command"},
    };
    for (const MisuseCase& row : cases) {
        EXPECT_EQ(call(row.outputCount, row.arguments), row.complaint) << "row " << &row - cases.data();
        EXPECT_EQ(unit.takeRequest(), "") << "row " << &row - cases.data();
    }
}

TEST_F(Gateway, aRequestFillsTheBlockAtMost) {
    EXPECT_EQ(call(0, {text(u"logMessage"), text(std::u16string(2048 - 5, u'x'))}), "");
    EXPECT_EQ(unit.takeRequest().size(), 2048u);
    EXPECT_EQ(call(0, {text(u"logMessage"), text(std::u16string(2048 - 4, u'x'))}),
              "error: logMessage: the text is too long: the arguments take 2049 bytes, "
              "and there is room for 2048. "
              "Usage: logMessage(text)");
    EXPECT_EQ(unit.takeRequest(), "");
}

TEST_F(Gateway, theBlocksSizeFollowsTheCountsOfTheRun) {
    struct Size {
        double compounds;
        std::vector<mxArray*> phases;
        std::size_t bytes;
    };
    for (const Size& size : {Size{20, {text(u"a"), text(u"b")}, 3208}, Size{15, {}, 2352},
                             Size{12, std::vector<mxArray*>(20, text(u"a")), 2168}}) {
        useGateway(standInHooks, size.compounds, size.phases);
        ASSERT_EQ(open(), "");
        const std::string complaint = call(0, {text(u"logMessage"), text(std::u16string(4000, u'x'))});
        EXPECT_NE(complaint.find("room for " + std::to_string(size.bytes) + "."), std::string::npos)
            << complaint;
    }
}

TEST_F(Gateway, aReportsTextIsGivenInTheCodePage) {
    EXPECT_EQ(call(1, {text(u"reportBytes"), text(u"a\n\u20ac")}), "1x3 [97 10 128]");
}

TEST_F(Gateway, commandsWorkOnlyBetweenBeginAndEnd) {
    EXPECT_EQ(standInHooks.locks, 1);
    EXPECT_EQ(open(), "") << "a run that was broken off gives way to the next";
    EXPECT_EQ(standInHooks.locks, 1);
    EXPECT_EQ(call(0, {number(2)}), "");
    EXPECT_EQ(standInHooks.locks, 0);
    EXPECT_EQ(call(0, {number(2)}), "error: CapeOpenUnitMex: no run is open");
    EXPECT_EQ(call(1, {text(u"getUnitName")}),
              "error: getUnitName: it can only be called from the script of a unit "
              "operation, while the unit calculates");
    EXPECT_EQ(call(0, {number(1), text(u"{nobody}")}),
              "error: CapeOpenUnitMex: no unit operation is calculating under "
              "the id {nobody}");
    useGateway(standInHooks, nan, {});
    EXPECT_EQ(open(), "error: CapeOpenUnitMex: the global variable nComp is not set");
}

TEST_F(Gateway, aSlowUnitIsWaitedForAndADeadOneIsNot) {
    unit.answer(Bytes() << 0u << 3u, 1500);
    EXPECT_EQ(call(1, {text(u"getFeedCount")}), "1x1 [3]");
    unit.answer(Bytes() << 0u << 4u);
    EXPECT_EQ(call(1, {text(u"getFeedCount")}), "1x1 [4]");

    unit.answer(Bytes() << 0u, INFINITE);
    std::thread death([this] {
        Sleep(200);
        unit.die();
    });
    EXPECT_EQ(call(1, {text(u"getFeedCount")}), "error: getFeedCount: the unit operation has gone");
    death.join();
    EXPECT_EQ(call(1, {text(u"getFeedCount")}), "error: getFeedCount: the unit operation has gone");
}

} // namespace
