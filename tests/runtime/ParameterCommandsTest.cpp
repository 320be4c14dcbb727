// getParameter and setParameter, from a client that plays the gateway.

#include "RuntimeTest.h"
#include "com/VariantArray.h"

#include <cmath>
#include <limits>

namespace solvane {

namespace {

constexpr std::uint32_t real = 0;
constexpr std::uint32_t integer = 1;
constexpr std::uint32_t boolean = 2;
constexpr std::uint32_t text = 3;

Wire get(const std::string& name) {
    return request(4) << name;
}
Wire set(const std::string& name, std::uint32_t tag) {
    return request(5) << name << tag;
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

TEST_F(ParameterCommands, eachKindIsReadWithItsTag) {
    bag.parameter(L"Empty", L"string", Variant(std::wstring_view())).parameter(L"Unset", L"real", Variant());
    bag.values.erase(L"Unset \\ value");
    calculate(bag, [](GatewayClient& script) {
        script.expect(get("Duty"), succeeded() << real << 1.5);
        script.expect(get("dUTY"), succeeded() << real << 1.5);
        script.expect(get("Stages"), succeeded() << integer << -7);
        script.expect(get("Adiabatic"), succeeded() << boolean << 1);
        script.expect(get("Note"), succeeded() << text << "caf\xe9");
        script.expect(get("Empty"), succeeded() << text << "");
        script.expect(get("Unset"), succeeded() << real << notANumber);
        script.expect(get("Dutie"), refused("Invalid parameter name: Dutie"));
        script.expect(get(""), refused("Invalid parameter name: "));
    });
}

TEST_F(ParameterCommands, aTextMustFitTheBlock) {
    bag.parameter(L"Fits", L"string", Variant(std::wstring_view(std::wstring(2048 - 12, L'f'))))
        .parameter(L"Too long", L"string", Variant(std::wstring_view(std::wstring(2048 - 11, L'f'))));
    calculate(bag, [](GatewayClient& script) {
        script.expect(get("Too long"), refused("String value too large for allocated memory"));
        const std::string block = script.call(get("Fits"));
        EXPECT_EQ(block.substr(0, 8), (succeeded() << text).bytes());
        EXPECT_EQ(block.substr(8, 2048 - 12), std::string(2048 - 12, 'f'));
    });
}

/// What a request to set a parameter answers, and the value that the script then reads.
struct SetCase {
    Wire request;
    Wire reply;
    Wire read;
};

void expectCases(GatewayClient& script, const std::string& name, const std::vector<SetCase>& cases) {
    for (const SetCase& row : cases) {
        SCOPED_TRACE(name + ", row " + std::to_string(&row - cases.data()));
        script.expect(row.request, row.reply);
        script.expect(get(name), row.read);
    }
}

TEST_F(ParameterCommands, aRealParameterTakesNumbers) {
    const auto is = [](double value) { return succeeded() << real << value; };
    const Wire below = refused("Value below minimum value");
    const Wire above = refused("Value above maximum value");
    calculate(bag, [&](GatewayClient& script) {
        expectCases(script, "Duty",
                    {{set("DUTY", real) << -2.25, succeeded(), is(-2.25)},
                     {set("Duty", integer) << -3, succeeded(), is(-3)},
                     {set("Duty", boolean) << 1, succeeded(), is(1)},
                     {set("Duty", text) << "2", refused("Cannot assign string to real parameter"), is(1)},
                     {set("Duty", 4) << "2", refused("Cannot assign string to real parameter"), is(1)},
                     {set("Duty", real) << infinity, succeeded(), is(infinity)},
                     {set("Duty", real) << notANumber, succeeded(), is(notANumber)}});
        expectCases(script, "Bounded",
                    {{set("Bounded", real) << -1.0, succeeded(), is(-1)},
                     {set("Bounded", real) << 10.0, succeeded(), is(10)},
                     {set("Bounded", real) << -1.0001, below, is(10)},
                     {set("Bounded", integer) << -2, below, is(10)},
                     {set("Bounded", real) << 10.0001, above, is(10)},
                     {set("Bounded", real) << notANumber, below, is(10)}});
    });
}

TEST_F(ParameterCommands, anIntegerParameterRoundsHalvesUp) {
    const auto is = [](std::int32_t value) { return succeeded() << integer << value; };
    calculate(bag, [&](GatewayClient& script) {
        expectCases(
            script, "Stages",
            {{set("Stages", real) << 2.5, succeeded(), is(3)},
             {set("Stages", real) << -2.5, succeeded(), is(-2)},
             {set("Stages", real) << 2.499, succeeded(), is(2)},
             {set("Stages", real) << 2147483647.4, succeeded(), is(2147483647)},
             {set("Stages", real) << 1e12, succeeded(), is(lowest)},
             {set("Stages", real) << notANumber, succeeded(), is(lowest)},
             {set("Stages", integer) << 12, succeeded(), is(12)},
             {set("Stages", boolean) << 1, succeeded(), is(1)},
             {set("Stages", text) << "4", refused("Cannot assign string to integer parameter"), is(1)}});
        expectCases(script, "Tray",
                    {{set("Tray", integer) << 20, succeeded(), is(20)},
                     {set("Tray", real) << 20.5, refused("Value above maximum value"), is(20)},
                     {set("Tray", real) << 0.5, succeeded(), is(1)},
                     {set("Tray", integer) << 0, refused("Value below minimum value"), is(1)}});
    });
}

TEST_F(ParameterCommands, aBooleanParameterTakesNumbersAndItsTwoWords) {
    const auto is = [](std::int32_t value) { return succeeded() << boolean << value; };
    const Wire refusal = refused("Cannot assign string to boolean parameter");
    calculate(bag, [&](GatewayClient& script) {
        expectCases(script, "Adiabatic",
                    {{set("Adiabatic", real) << 0.0, succeeded(), is(0)},
                     {set("Adiabatic", real) << -0.5, succeeded(), is(1)},
                     {set("Adiabatic", real) << -0.0, succeeded(), is(0)},
                     {set("Adiabatic", real) << notANumber, succeeded(), is(1)},
                     {set("Adiabatic", integer) << 0, succeeded(), is(0)},
                     {set("Adiabatic", boolean) << 256, succeeded(), is(1)},
                     {set("Adiabatic", text) << "false", succeeded(), is(0)},
                     {set("Adiabatic", text) << "true", succeeded(), is(1)},
                     {set("Adiabatic", text) << "FALSE", refusal, is(1)},
                     {set("Adiabatic", text) << "0", refusal, is(1)}});
    });
}

TEST_F(ParameterCommands, aStringParameterTakesTexts) {
    const auto is = [](const std::string& value) { return succeeded() << text << value; };
    const Wire numeric = refused("Cannot assign numeric value to string parameter");
    const Wire refusal = refused("Invalid value for parameter: value is not in list of exclusive options");
    calculate(bag, [&](GatewayClient& script) {
        expectCases(script, "Note",
                    {{set("Note", text) << "\xfc"
                                           "ber",
                      succeeded(),
                      is("\xfc"
                         "ber")},
                     {set("Note", text) << "", succeeded(), is("")},
                     {set("Note", real) << 1.0, numeric, is("")},
                     {set("Note", integer) << 1, numeric, is("")},
                     {set("Note", boolean) << 1, refused("Cannot assign boolean value to string parameter"),
                      is("")}});
        expectCases(script, "Mode",
                    {{set("mode", text) << "slow", succeeded(), is("slow")},
                     {set("Mode", text) << "Fast", refusal, is("slow")},
                     {set("Mode", text) << "", refusal, is("slow")}});
        script.expect(set("Speed", real) << 1.0, refused("Invalid parameter name: Speed"));
    });
}

// What a script sets is neither a change of the model nor a reason to validate again.
TEST_F(ParameterCommands, theHostSeesWhatTheScriptSet) {
    const HostedUnit unit = createUnit(bag);
    EXPECT_EQ(unit.validate(), L"");
    matlab.onRun = [](const std::wstring& folder) {
        GatewayClient script(folder);
        script.expect(set("Duty", real) << 42.0, succeeded());
        script.expect(set("Adiabatic", boolean) << 1, succeeded());
        return MatlabAnswer();
    };
    ASSERT_EQ(unit.calculate(), S_OK);
    EXPECT_EQ(unit.parameter(L"Duty").real(), 42.0);
    EXPECT_EQ(unit.parameter(L"Adiabatic").boolean(), VARIANT_TRUE);
    CapeValidationStatus status = CAPE_NOT_VALIDATED;
    EXPECT_EQ(unit.as<ICapeUnit>()->get_ValStatus(&status), S_OK);
    EXPECT_EQ(status, CAPE_VALID);
    EXPECT_EQ(unit.as<IPersistStream>()->IsDirty(), S_FALSE);
}

} // namespace

} // namespace solvane
