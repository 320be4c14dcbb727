// getParameter and setParameter, called by a client in place of the gateway.

#include "RuntimeTest.h"
#include "channel/Hints.h"
#include "com/VariantArray.h"

#include <cmath>
#include <limits>

namespace solvane {

namespace {

/// Appends a value with its tag.
using Value = std::function<Wire(Wire)>;

template <class T>
Value tagged(std::uint32_t tag, T value) {
    return [=](Wire wire) { return wire << tag << value; };
}
Value real(double value) {
    return tagged(0, value);
}
Value integer(std::int32_t value) {
    return tagged(1, value);
}
Value boolean(std::int32_t value) {
    return tagged(2, value);
}
Value text(const std::string& value) {
    return tagged(3, value);
}

Wire get(const std::string& name) {
    return request(CommandCode::getParameter) << name;
}
Wire set(const std::string& name, const Value& value) {
    return value(request(CommandCode::setParameter) << name);
}

constexpr double notANumber = std::numeric_limits<double>::quiet_NaN();
constexpr double infinity = std::numeric_limits<double>::infinity();
constexpr std::int32_t lowest = std::numeric_limits<std::int32_t>::min();

class ParameterCommands : public RuntimeTest {
protected:
    ParameterCommands() {
        bag.script("")
            .parameter(L"Duty", L"real", Variant(1.5))
            .parameter(L"Bounded", L"real", Variant(5.0))
            .with(L"Bounded", L"minimum", Variant(-1.0))
            .with(L"Bounded", L"maximum", Variant(10.0))
            .parameter(L"At least", L"real", Variant(5.0))
            .with(L"At least", L"minimum", Variant(-1.0))
            .parameter(L"At most", L"real", Variant(5.0))
            .with(L"At most", L"maximum", Variant(10.0))
            .parameter(L"Stages", L"int", Variant(LONG{-7}))
            .parameter(L"Tray", L"int", Variant(LONG{1}))
            .with(L"Tray", L"minimum", Variant(LONG{1}))
            .with(L"Tray", L"maximum", Variant(LONG{20}))
            .parameter(L"Adiabatic", L"bool", Variant(true))
            .parameter(L"Note", L"string", Variant(std::wstring_view(L"caf\u00e9")))
            .parameter(L"Mode", L"string", Variant(std::wstring_view(L"fast")))
            .with(L"Mode", L"options", VariantArray::of(std::vector<std::wstring>{L"fast", L"slow"}))
            .with(L"Mode", L"restricted", Variant(true));
    }

    ModelBag bag;
};

TEST_F(ParameterCommands, readEachKindWithItsTag) {
    bag.parameter(L"Empty", L"string", Variant(std::wstring_view())).parameter(L"Unset", L"real", Variant());
    bag.values.erase(L"Unset \\ value");
    calculate(bag, [](GatewayClient& script) {
        script.expect(get("dUTY"), real(1.5)(succeeded()));
        script.expect(get("Stages"), integer(-7)(succeeded()));
        script.expect(get("Adiabatic"), boolean(1)(succeeded()));
        script.expect(get("Note"), text("caf\xe9")(succeeded()));
        script.expect(get("Empty"), text("")(succeeded()));
        script.expect(get("Unset"), real(notANumber)(succeeded()));
        script.expect(get("Dutie"), refused("Invalid parameter name: Dutie"));
        script.expect(get(""), refused("Invalid parameter name: "));
    });
}

TEST_F(ParameterCommands, areFoundByTheirNameOfTheMoment) {
    const HostedUnit unit = createUnit(bag);
    const auto parameter = unit.findParameter(L"Duty").as<ICapeIdentification>();
    matlab.onRun = [&](const std::wstring& folder) {
        GatewayClient script(folder);
        script.expect(get("Duty"), real(1.5)(succeeded()));
        parameter->put_ComponentName(Bstr(L"Power").get());
        script.expect(get("Duty"), refused("Invalid parameter name: Duty"));
        script.expect(get("power"), real(1.5)(succeeded()));
        return MatlabAnswer();
    };
    EXPECT_EQ(unit.calculate(), S_OK) << testing::PrintToString(unit.error());
}

TEST_F(ParameterCommands, rejectTextsThatExceedTheBlock) {
    bag.parameter(L"Fits", L"string", Variant(std::wstring_view(std::wstring(2048 - 12, L'f'))))
        .parameter(L"Too long", L"string", Variant(std::wstring_view(std::wstring(2048 - 11, L'f'))));
    calculate(bag, [](GatewayClient& script) {
        script.expect(get("Too long"), refused("String value too large for allocated memory"));
        const std::string block = script.call(get("Fits"));
        EXPECT_EQ(block.substr(0, 2048 - 4),
                  text(std::string(2048 - 12, 'f'))(succeeded()).bytes().substr(0, 2048 - 4));
    });
}

TEST_F(ParameterCommands, convertAndCheckWhatAScriptSets) {
    const std::string below = "Value below minimum value";
    const std::string above = "Value above maximum value";
    const std::string noOption = "Invalid value for parameter: value is not in list of exclusive options";
    const std::string noReal = "Cannot assign string to real parameter";
    const std::string noBoolean = "Cannot assign string to boolean parameter";
    const std::string noText = "Cannot assign numeric value to string parameter";
    const struct {
        std::string name;
        Value set;
        Value read; ///< then
        std::string refusal = {};
    } rows[] = {
        {"DUTY", real(-2.25), real(-2.25)},
        {"Duty", integer(-3), real(-3)},
        {"Duty", boolean(1), real(1)},
        {"Duty", text("2"), real(1), noReal},
        {"Duty", tagged(4, std::string("2")), real(1), noReal},
        {"Duty", real(infinity), real(infinity)},
        {"Duty", real(notANumber), real(notANumber)},
        {"Bounded", real(-1), real(-1)},
        {"Bounded", real(10), real(10)},
        {"Bounded", real(-1.0001), real(10), below},
        {"Bounded", integer(-2), real(10), below},
        {"Bounded", real(10.0001), real(10), above},
        {"Bounded", real(notANumber), real(10), below},
        {"At least", real(notANumber), real(5), below},
        {"At least", real(infinity), real(infinity)},
        {"At most", real(notANumber), real(5), above},
        {"At most", real(-infinity), real(-infinity)},
        {"Stages", real(2.5), integer(3)}, // rounds halves up
        {"Stages", real(-2.5), integer(-2)},
        {"Stages", real(2.499), integer(2)},
        {"Stages", real(2147483647.4), integer(2147483647)},
        {"Stages", real(1e12), integer(lowest)},
        {"Stages", real(notANumber), integer(lowest)},
        {"Stages", integer(12), integer(12)},
        {"Stages", boolean(1), integer(1)},
        {"Stages", text("4"), integer(1), "Cannot assign string to integer parameter"},
        {"Tray", integer(20), integer(20)},
        {"Tray", real(20.5), integer(20), above},
        {"Tray", real(0.5), integer(1)},
        {"Tray", integer(0), integer(1), below},
        {"Adiabatic", real(0), boolean(0)},
        {"Adiabatic", real(-0.5), boolean(1)},
        {"Adiabatic", real(-0.0), boolean(0)},
        {"Adiabatic", real(notANumber), boolean(1)},
        {"Adiabatic", integer(0), boolean(0)},
        {"Adiabatic", boolean(256), boolean(1)},
        {"Adiabatic", text("false"), boolean(0)},
        {"Adiabatic", text("true"), boolean(1)},
        {"Adiabatic", text("FALSE"), boolean(1), noBoolean},
        {"Adiabatic", text("0"), boolean(1), noBoolean},
        {"Note", text("\xfc"), text("\xfc")},
        {"Note", text(""), text("")},
        {"Note", real(1), text(""), noText},
        {"Note", integer(1), text(""), noText},
        {"Note", boolean(1), text(""), "Cannot assign boolean value to string parameter"},
        {"mode", text("slow"), text("slow")},
        {"Mode", text("Fast"), text("slow"), noOption},
        {"Mode", text(""), text("slow"), noOption},
    };
    calculate(bag, [&](GatewayClient& script) {
        for (const auto& row : rows) {
            SCOPED_TRACE(row.name + ", row " + std::to_string(&row - rows));
            if (row.refusal.empty())
                script.expect(set(row.name, row.set), succeeded());
            else // hints follow the record
                EXPECT_TRUE(script.call(set(row.name, row.set)).starts_with(refused(row.refusal).bytes()));
            script.expect(get(row.name), row.read(succeeded()));
        }
        script.expect(set("Speed", real(1)), refused("Invalid parameter name: Speed"));
        const auto hint = [&](const char* name, const Value& value, const std::string& about) {
            const std::string block = script.call(set(name, value));
            return readHint(std::string_view(block).substr(refused(about).bytes().size()), about);
        };
        EXPECT_EQ(hint("tray", real(20.5), above), "parameter 'Tray' is at most 20, got 21");
        EXPECT_EQ(hint("bounded", real(-2.5), below), "parameter 'Bounded' is at least -1, got -2.5");
        EXPECT_EQ(hint("mode", text("Fast"), noOption), "parameter 'Mode' takes fast, slow");
        const auto meant = [&](const std::string& name) {
            const std::string block = script.call(get(name));
            const std::size_t end = refused("Invalid parameter name: " + name).bytes().size();
            return readHint(std::string_view(block).substr(end), name);
        };
        EXPECT_EQ(meant("Adibatic"), "Adiabatic");
        EXPECT_EQ(meant("least"), "At least");
        EXPECT_EQ(meant("at mo"), "At most");
        EXPECT_EQ(meant("at "), ""); // two have the word
    });
}

// A value that a script sets neither changes the model nor requires a new validation.
TEST_F(ParameterCommands, showTheHostWhatTheScriptSet) {
    const HostedUnit unit = createUnit(bag);
    EXPECT_EQ(unit.validate(), L"");
    matlab.onRun = [](const std::wstring& folder) {
        GatewayClient script(folder);
        script.expect(set("Duty", real(42)), succeeded());
        script.expect(set("Adiabatic", boolean(1)), succeeded());
        return MatlabAnswer();
    };
    ASSERT_EQ(unit.calculate(), S_OK);
    EXPECT_EQ(unit.parameter(L"Duty").real(), 42.0);
    EXPECT_EQ(unit.parameter(L"Adiabatic").boolean(), VARIANT_TRUE);
    EXPECT_EQ(unit.status(), CAPE_VALID);
    EXPECT_EQ(unit.as<IPersistStream>()->IsDirty(), S_FALSE);
}

} // namespace

} // namespace solvane
