// What the script's page finds out about a script, without a window.

#include "com/Text.h"
#include "ui/controls/ScriptTokens.h"
#include "ui/tabs/ErrorPlace.h"

#include <gmock/gmock.h>

namespace solvane {
namespace {

TEST(ErrorPlace, countsLinesInTheUsersScript) {
    const std::wstring script = L"a = 1;\r\n\tb = a + foo;\r\nc = 2;\r\n";
    struct Row {
        const wchar_t* error;
        long line = 0; // none
        long column = 1;
    };
    for (const Row& row : {
             Row{L"'foo' undefined near line 4, column 10", 2, 10},
             Row{L"'foo' undefined near line 4 column 10", 2, 10},
             Row{L"`foo' undefined near line 4 column 10", 2, 10},
             Row{L"something near line 5, column 3", 3, 3},
             // in a function of another file
             Row{L"'foo' undefined near line 5, column 10"},
             Row{L"'x' undefined near line 40, column 1"},
             Row{L"'x' undefined near line 3, column 1, error: called from, helper at line 3 column 1, "
                 L"unitCalc at line 5 column 2",
                 3, 2},
             Row{L"error: called from\n    unitCalc at line 5 column -1", 3},
             Row{L"parse error near line 4 of file /tmp/{A, B}/unitCalc.m, syntax error, >>> b = = 3;", 2},
             Row{L"parse error near line 4 of file C:\\work\\unitCalc.m\n\n  syntax error", 2},
             Row{L"parse error near line 4 of file C:\\work\\helper.m\n\n  syntax error"},
             Row{L"Error in ==> unitCalc at 5\r\nx", 3},
             Row{L"Error in ==> helper at 9, Error in ==> unitCalc at 5", 3},
             Row{L"Error using helper (line 3), Undefined 'x'., Error in unitCalc (line 4)", 2},
             Row{L"Error: File: C:\\work\\unitCalc.m Line: 5 Column: 3, Unexpected operator.", 3, 3},
             Row{L"Error: File: helper.m Line: 5 Column: 3"},
             Row{L"Error in unitCalc (line 2)"},
             Row{L"unitCalc at line 99999999999 column 1"},
             Row{L"operator *: nonconformant arguments"},
         }) {
        const std::vector<ErrorPlace> places = findErrorPlaces(L"", row.error, script);
        EXPECT_EQ(places.empty(), row.line == 0) << row.error;
        if (!places.empty()) {
            EXPECT_EQ(places, std::vector({ErrorPlace{{}, row.line, row.column}})) << row.error;
        }
    }
}

TEST(ScriptTokens, followTheLanguage) {
    // Below each character: k keyword, s text, c comment, n number.
    const std::pair<std::wstring, std::string> scripts[] = {
        {L"for i = 1:10 % all of 'them'", "kkk     n nn ccccccccccccccc"},
        {L"a = b' + 'it''s' # 1", "         sssssss ccc"},
        {L"x(end).if = [c' 'd' 1.5e-3];", "                sss nnnnnn"},
        {L"printf(\"%d\\\"\", 0x1F); end", "       ssssss  nnnn   kkk"},
        {L"y = .5 + a1; ...rest", "    nn       ccccccc"},
        {L"f(1, ...\r  end)\rend", "  n  ccc        kkk"},
        {L"%{\r if\r%}\rif", "cc ccc cc kk"},
        {L"%{ one line\rif", "ccccccccccc kk"},
        {L"'open\rwhile", "sssss kkkkk"},
    };
    for (const auto& [script, kinds] : scripts) {
        std::string found(script.size(), ' ');
        for (const ScriptSpan& span : spansOf(script))
            std::fill(found.begin() + static_cast<int>(span.begin),
                      found.begin() + static_cast<int>(span.end),
                      "kscn"[static_cast<std::size_t>(span.token)]);
        EXPECT_EQ(found.substr(0, kinds.size()), kinds) << narrow(script);
        EXPECT_EQ(found.find_last_not_of(' ') + 1, kinds.size()) << narrow(script);
    }
}

} // namespace
} // namespace solvane
