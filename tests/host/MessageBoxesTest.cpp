#include "flowsheet/MessageBoxes.h"

#include <gtest/gtest.h>

namespace solvane::host {

namespace {

TEST(MessageBoxes, areReportedAndAnswered) {
    std::string reported;
    const MessageBoxes boxes(
        [&](const std::string& title, const std::string& text) { reported += title + "|" + text + "\n"; });
    EXPECT_EQ(MessageBoxA(nullptr, "Report is missing name\r\n", "Unit:", MB_ICONWARNING), IDOK);
    EXPECT_EQ(MessageBoxW(nullptr, L"Gr\u00fc\u00dfe?", L"Frage", MB_OKCANCEL | MB_DEFBUTTON2), IDCANCEL);
    EXPECT_EQ(reported, "Unit:|Report is missing name\r\n\nFrage|Grüße?\n");
}

} // namespace

} // namespace solvane::host
