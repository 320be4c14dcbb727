// What a parameter's editor makes of what is typed, and unit texts.

#include "ui/controls/NumberFields.h"
#include "ui/parameters/UnitOfMeasure.h"

#include <windows.h>

#include <gtest/gtest.h>

namespace solvane {
namespace {

const _locale_t locale = _create_locale(LC_NUMERIC, "C");

struct Typed {
    const wchar_t* value;
    const wchar_t* defaultValue;
    const wchar_t* minimum;
    const wchar_t* maximum;
    const wchar_t* fault; ///< null: accepted
};

template <class T>
void expectFaults(std::initializer_list<Typed> cases) {
    const auto read = [](const wchar_t* text) { return readNumber<T>(text, locale); };
    for (const Typed& typed : cases) {
        const NumberFields<T> fields{read(typed.value), read(typed.defaultValue), read(typed.minimum),
                                     read(typed.maximum)};
        EXPECT_STREQ(fields.fault(), typed.fault) << testing::PrintToString(typed.value);
    }
}

constexpr wchar_t invalid[] = L"You must supply a valid current value for the parameter";

TEST(ParameterNumbers, areCheckedInOrder) {
    const std::initializer_list<Typed> cases{
        {L"abc", L"", L"", L"", invalid},
        {L"", L"1", L"", L"", invalid},
        {L" +5x", L"abc", L"x", L"-", nullptr},
        {L"5", L"5", L"5", L"5", nullptr},
        {L"4", L"3", L"5", L"", L"Value below minimum value"},
        {L"5", L"4", L"5", L"", L"Default value below minimum value"},
        {L"3", L"1", L"2", L"2", L"Default value below minimum value"}, // before the maximum
        {L"6", L"7", L"", L"5", L"Value above maximum value"},
        {L"5", L"6", L"", L"5", L"Default value above maximum value"},
        {L"5", L"", L"5", L"1", L"Value above maximum value"},
    };
    expectFaults<double>(cases);
    expectFaults<LONG>(cases);
    expectFaults<double>({
        {L"nan", L"", L"", L"", invalid},
        {L"-1.7976931348623157e308", L"", L"", L"", invalid},
        {L"1.25", L"nan", L"1.2", L"1.3", nullptr},
        {L"0", L"-0.5", L"-.4", L"", L"Default value below minimum value"},
    });
    expectFaults<LONG>({
        {L"-2147483648", L"", L"", L"", nullptr},
        {L"2147483648", L"", L"", L"", invalid},
    });
}

TEST(ParameterNumbers, areReadFromTheStartOfTheText) {
    EXPECT_EQ(readNumber<double>(L"1.5abc", locale), 1.5);
    EXPECT_EQ(readNumber<double>(L"2,5", locale), 2.0);
    EXPECT_EQ(readNumber<double>(L"\t-1e3e", locale), -1000.0);
    EXPECT_EQ(readNumber<LONG>(L"12abc", locale), 12);
    EXPECT_EQ(readNumber<LONG>(L"1.9", locale), 1);
}

TEST(UnitOfMeasure, writesNumeratorsFirst) {
    const std::vector<std::pair<std::vector<double>, const wchar_t*>> cases{
        {{}, L""},
        {{1, 1, -2}, L"m kg / s2"},
        {{0, 0, -1}, L"1 / s"},
        {{-1, 1, -2}, L"kg / m / s2"},
        {{-3, 0, -1}, L"1 / m3 / s"},
        {{0, 0, 0, 1, 1, 1, 1, 1}, L"A K mol cd rad"},
        {{0.5, 0, -1.25}, L"m0.5 / s1.25"},
        {{1 + 1e-11, 0, -1 + 1e-11}, L"m / s"},
        {{0, 0, 0, 0, 0, 0, 0, 0, 1}, L""}, // a difference
    };
    for (const auto& [exponents, text] : cases)
        EXPECT_EQ(unitText(exponents), text);
}

TEST(UnitOfMeasure, readsExponentsUpToTheLastOne) {
    using Vector = std::vector<double>;
    EXPECT_EQ(readDimensionality({}, false, locale), Vector());
    EXPECT_EQ(readDimensionality({L"1", L"", L"-1", L"", L"x"}, false, locale), (Vector{1, 0, -1}));
    EXPECT_EQ(readDimensionality({L"a", L"", L"", L"2b"}, false, locale), (Vector{0, 0, 0, 2}));
    EXPECT_EQ(readDimensionality({}, true, locale), (Vector{0, 0, 0, 0, 0, 0, 0, 0, 1}));
    EXPECT_EQ(readDimensionality({L"", L"3"}, true, locale), (Vector{0, 3, 0, 0, 0, 0, 0, 0, 1}));
}

} // namespace
} // namespace solvane
