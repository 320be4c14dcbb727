#include "com/Text.h"

#include <gtest/gtest.h>

namespace solvane {
namespace {

TEST(CompareNoCase, ignoresTheCaseOfAsciiLettersOnly) {
    EXPECT_EQ(compareNoCase(L"Feed 1", L"fEED 1"), 0);
    EXPECT_NE(compareNoCase(L"\u00C4thylen", L"\u00E4thylen"), 0);
    EXPECT_NE(compareNoCase(L"[", L"{"), 0); // 32 apart, as letters are
    EXPECT_NE(compareNoCase(L"@", L"`"), 0);
}

TEST(CompareNoCase, ordersAPrefixBeforeTheWhole) {
    EXPECT_LT(compareNoCase(L"Feed", L"FEED 1"), 0);
    EXPECT_GT(compareNoCase(L"feed 1", L"FEED"), 0);
    EXPECT_EQ(compareNoCase(L"", L""), 0);
}

TEST(Text, roundTripsTheCharactersOfTheCodePage) {
    const std::wstring text = L"caf\u00E9 \u00FC";
    EXPECT_EQ(widen(narrow(text, 1252), 1252), text);
    EXPECT_EQ(narrow(text, 1252).size(), text.size());
    EXPECT_EQ(narrow(L"\u4E2D", 1252), "?");
    EXPECT_EQ(widen(narrow(L"\u4E2D", CP_UTF8), CP_UTF8), L"\u4E2D");
}

} // namespace
} // namespace solvane
