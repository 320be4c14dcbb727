#include "channel/FlashProperties.h"
#include "channel/StringMap.h"

#include <gtest/gtest.h>

#include <string>

namespace solvane {

namespace {

using enum FlashProperty;

/// The names follow a rule, with one exception: the letters of both constraints, temperature or pressure
/// before the other, and the vapor fraction after it.
TEST(FlashType, ignoresTheOrderOfAPair) {
    struct Letters {
        FlashProperty code;
        std::wstring letters;
    };
    const Letters others[] = {
        {enthalpy, L"H"},  {enthalpyF, L"HF"},  {enthalpyNF, L"HNF"},   {entropy, L"S"},
        {entropyF, L"SF"}, {entropyNF, L"SNF"}, {internalEnergy, L"U"}, {volume, L"V"},
    };
    const auto expectType = [](FlashProperty a, FlashProperty b, const std::wstring& name) {
        for (const wchar_t* type : {flashType(a, b), flashType(b, a)})
            EXPECT_STREQ(type, name.c_str());
    };
    expectType(temperature, pressure, L"TP");
    expectType(temperature, vaporFraction, L"TVF");
    expectType(pressure, vaporFraction, L"PVF");
    for (const Letters& other : others) {
        expectType(temperature, other.code, L"T" + other.letters);
        expectType(pressure, other.code, L"P" + other.letters);
        expectType(vaporFraction, other.code, other.code == enthalpyF ? L"HFVf" : other.letters + L"VF");
    }
}

TEST(FlashPropertyCodes, ignoreCase) {
    // By their codes; the names up to 10 are those of constraints.
    const std::vector<std::wstring> names[] = {
        {L"temperature"},   {L"pressure"},
        {L"VAPORfraction"}, {L"enthalpy"},
        {L"enthalpyF"},     {L"ENTHALPYnf"},
        {L"entropy"},       {L"entropyF"},
        {L"entropyNF"},     {L"internalEnergy", L"energy"},
        {L"volume"},        {L"enthalpyN", L"", L"energyF"},
        {L"flow"},          {L"totalflow"},
        {L"fraction"},
    };
    for (const auto& row : names)
        for (const std::wstring& name : row)
            EXPECT_EQ(static_cast<int>(flashPropertyCode(name)), &row - names) << name;
}

TEST(StringMap, findsNamesOfAnyLength) {
    StringMap<int> map;
    for (const int length : {1, 126, 127, 128, 129, 1000})
        map.add(std::wstring(static_cast<std::size_t>(length), L'x'), length);
    for (const int length : {1, 126, 127, 128, 129, 1000}) {
        const int* found = map.find(std::wstring(static_cast<std::size_t>(length), L'X'));
        ASSERT_NE(found, nullptr) << length;
        EXPECT_EQ(*found, length);
    }
    EXPECT_EQ(map.find(std::wstring(500, L'x')), nullptr);
}

} // namespace

} // namespace solvane
