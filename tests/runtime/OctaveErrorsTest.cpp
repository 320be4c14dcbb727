// Where an error of a script is, as the engine prints it after the run: in the user's own files and lines.

#include "HostTest.h"
#include "HostedUnit.h"
#include "channel/ErrorStack.h"
#include "com/Text.h"
#include "materials/FakeMaterial11.h"

#include <gmock/gmock.h>

namespace solvane {

namespace {

using testing::AnyOf;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;

struct Mistake {
    const char* line;
    const char* error; ///< a part of it
    long column;
};

constexpr Mistake mistakes[] = {
    {"y = nosuch;", "'nosuch' undefined", 5},
    {"y = getFedProp(1, 'flow');", "; did you mean 'getFeedProp'?", 5},
    {"y = = 3;", "parse error in line ", 5},
    {"1 = y;", "invalid constant left hand side of assignment: 1 = y;", 3},
    {"y = [1, 'end', (3), % ]", "parse error: '[' in line ", 5},
    {"y = max(1, 2;", "parse error: '(' in line ", 8},
    {"disp(\"it's ]);", "parse error: the text that starts in line ", 6},
    {"y = x'; c = {x', 'it''s', 'a};", "parse error: the text that starts in line ", 27},
    {"disp('the feed's flow');", "ends at the quote before 's'; write '' for one inside it", 15},
    {"disp(['a' \"the \"best\" flow\"]);", "ends at the quote before 'best'; write \"\" for one inside it",
     16},
    {"y = max('two feeds' flow');", "ends at the quote before 'flow'; write '' for one inside it", 19},
    {"if y == 'a' y = x'; z = = 3; end % don't", ": if y == 'a'", 25},
    {"y = {'a' x', (3};", "parse error: '{' in line ", 5},
    {"if x, y = x(end); s.end = 1; % end", "parse error: 'if' in line ", 1},
    {"if x, y = 1; else if y, x = 2; end", ": 'else if' in line ", 19},
    {"if x && y = 3, end", ": write == to compare, '=' assigns: if x", 11},
    {"y = x <> 3;", ": write ~= for <>: y = x <> 3;", 8},
    {"y = 2.5x;", ": write * to multiply by a name: y", 8},
    {"y = [1 2 3] + [1 2];", "operator +: nonconformant arguments", 3},
    {"v = 1:3; y = v(5);", "out of bound", 12},
    {"c = {1}; y = c + 1;", "binary operator '+' not implemented", 12},
    {"y = strsplit(3);", "strsplit: S and DEL must be string values", 5},
    {"y = 2 + chol(-eye(2)); % not chol", "chol: input matrix must be positive definite", 9},
    {"y = fzero(@(t) nosuch(t), 1);", "'nosuch' undefined", 16},
    {"error('mine');", "mine", 1},
    {"T = getFeedProp(1, 'temprature');", "\"temprature\" in getFeedProp; did you mean 'temperature'?", 5},
    {"flashEquilibrium([1 0 0], 'temperature', 300, 'pressure', 1e5);",
     "the mole fraction of each compound, got 1 by 3 values. Usage: ", 1},
    {"z = getFeedProp(2, 'fraction');", "out of range for getFeedProp; expected 1, got 2", 5},
    {"setParameter('Pressure', 3);", "above maximum value; parameter 'pressure' is at most 2.5, got 3", 1},
    {"setParameter('pressure', 'x');", "Cannot assign string to real parameter; parameter 'pressure'", 1},
    {"p = getParameter('prssure');", "Invalid parameter name: prssure; did you mean 'pressure'?", 5},
    {"setReport('Sumary', 'x');", "Invalid report name: Sumary; did you mean 'Summary'?", 1},
};

/// The mistake as the last line of each place that a user's code can have.
struct Layout {
    std::string script;
    std::string file; ///< of the function "tidy"
    ErrorPlace error;
    std::vector<ErrorPlace> calls;
};

std::vector<Layout> layoutsOf(const Mistake& mistake) {
    const std::string line = mistake.line;
    return {
        {"x = 1;\n\n" + line, "", {"", 3, mistake.column}, {}},
        {"\ninner\n\nfunction inner\n  % one\n" + line, "", {"", 6, mistake.column}, {{"", 2, 1}}},
        // In the code page, which the engine translates into a copy.
        {"x = 1;\n if x, tidy, end",
         "function tidy\n% \xe9\n\n" + line,
         {"tidy.m", 4, mistake.column},
         {{"", 2, 8}}},
    };
}

TEST(OctaveErrors, haveTheirPlaceInTheUsersFiles) {
    const Apartment apartment;
    const UnitModule module;
    const HostedUnit unit(module);
    ASSERT_EQ(unit.as<ICapeUtilities>()->Initialize(), S_OK) << narrow(unit.errorDescription());
    const auto run = [&](const std::string& script, const std::string& file) {
        ModelBag bag;
        EXPECT_EQ(unit.load(bag.feeds({L"F"})
                                .script(script)
                                .reports({L"Summary"})
                                .file("tidy.m", file)
                                .parameter(L"pressure", L"real", Variant(1.0))
                                .with(L"pressure", L"maximum", Variant(2.5))),
                  S_OK);
        EXPECT_EQ(unit.connect(L"F", FakeMaterial11::create(makeFakeStream(2))->dispatch()), S_OK);
        EXPECT_EQ(unit.calculate(), capeFailure) << script;
        EXPECT_THAT(narrow(unit.errorDescription()), Not(HasSubstr("at script")));
        return readErrorStack(narrow(unit.output(), CP_UTF8));
    };
    for (const Mistake& mistake : mistakes)
        for (const Layout& layout : layoutsOf(mistake)) {
            std::vector<ErrorPlace> stack = run(layout.script, layout.file);
            EXPECT_THAT(narrow(unit.errorDescription()), HasSubstr(mistake.error)) << layout.script;
            ASSERT_THAT(stack, Not(IsEmpty())) << layout.script << narrow(unit.output());
            EXPECT_EQ(stack.front(), layout.error) << narrow(unit.output());
            // A script with a wrong syntax calls nothing.
            const bool isCalled = layout.error.isInScript() &&
                                  narrow(unit.errorDescription()).find("parse error") != std::string::npos;
            if (!layout.calls.empty() && !isCalled) {
                EXPECT_EQ(stack.back(), layout.calls.back()) << narrow(unit.output());
            }
        }

    // The name in a statement of several lines; a function without end; an error that the script reports
    // itself.
    EXPECT_THAT(run("x = 1 + ...\n  2 + ...\n  nosuch;", "1;"), ElementsAre(ErrorPlace{"", 3, 3}));
    EXPECT_THAT(run("tidy", "function tidy\ntidy"),
                ElementsAre(ErrorPlace{"tidy.m", 2, 1}, ErrorPlace{"", 1, 1}));
    // Of some errors, Octave does not know the place.
    EXPECT_THAT(run("x = {1};\n\ny = sum(x) + tidy; % sum(x)", "function y = tidy\ny = sum ({1});"),
                IsEmpty());
    EXPECT_THAT(narrow(unit.errorDescription()),
                HasSubstr("sum: wrong type argument 'cell'; sum is called in line 3, line 2 of tidy.m"));
    EXPECT_THAT(run("try, nosuch, catch, end, disp('Evaluation error: x')", "1;"), IsEmpty());

    // What Octave notices only at the end: the indentation shows which block, and functions end alike.
    // Characters that look like others.
    const struct {
        const char* script;
        const char* error;
        ErrorPlace place;
    } unclosed[] = {
        {"for k = 1:3\n  if k > 1\n    x = 1;\n  y = k;\nend\n\nz = 1;\n",
         "'if' in line 2 has no 'end'",
         {"", 2, 3}},
        {"%{\nif [ '\n%}\ndo\r\n  x = 1;\r\nz = 1;\r\n", "'do' in line 4 has no 'until'", {"", 4, 1}},
        {"x = f(1);\nfunction y = f(x)\ny = x;\nend\n",
         "'end' in line 4 ends a function: in a script",
         {"", 4, 1}},
        {"x = 1;\nend\nfunction y = f(x)\ny = x;\n", "'end' in line 2 ends no block", {"", 2, 1}},
        {"if 1\n  %{\n  x = 1;\nend\n",
         "parse error: the block comment that starts in line 2 is not closed",
         {"", 2, 3}},
        {"x = f(1);\n%{\nfunction y = f(x)\ny = x;\n",
         "the block comment that starts in line 2 is not closed and hides what follows: 'f' undefined in "
         "line 1",
         {"", 2, 1}},
        {"x = nosuch;\n%{\nnosuch\n", "'nosuch' undefined in line 1", {"", 1, 5}},
        {"% don’t\ns = 'a–b'; disp(“it's”);",
         "a typographic quote (U+201C) in line 2; write \"",
         {"", 2, 17}},
        {"x = 3 \xe2\x88\x92 2;", "a typographic dash (U+2212) in line 1; write -", {"", 1, 7}},
        {"x =\xc2\xa0 3;", "a non-breaking space (U+00A0) in line 1; write a blank", {"", 1, 4}},
        {"x = 3;\xe2\x80\x8b", "an invisible character (U+200B) in line 1; remove it", {"", 1, 7}},
        {"größe = 3;",
         "a character that is allowed only in texts and comments (U+00F6) in line 1",
         {"", 1, 3}},
        {"tidy", "the function in line 4 of tidy.m has no 'end'", {"tidy.m", 4, 1}},
    };
    for (const auto& row : unclosed) {
        EXPECT_EQ(run(row.script, "function tidy\nother\nend\nfunction other\n").front(), row.place)
            << row.script;
        EXPECT_THAT(narrow(unit.errorDescription()), HasSubstr(row.error));
        EXPECT_THAT(narrow(unit.errorDescription() + unit.output()), Not(HasSubstr("unitCalc")));
    }
    // Octave for Windows stops one column before.
    EXPECT_THAT(run("if x\n  x = 1;\nendfor\n", "1;").front(),
                AnyOf(ErrorPlace{"", 3, 7}, ErrorPlace{"", 3, 6}));
    EXPECT_THAT(narrow(unit.errorDescription()), HasSubstr("'endif' command matched by 'endfor'"));
}

TEST(OctaveErrors, areReadFromTheEndOfTheOutput) {
    EXPECT_THAT(readErrorStack("at script line 1\nMATLAB done\nat a b.m line 7, column 2\nat script line 3\n"
                               "at last line\nat script line 4\n"),
                ElementsAre(ErrorPlace{"a b.m", 7, 2}, ErrorPlace{"", 3, 0}));
    EXPECT_THAT(readErrorStack("MATLAB done\nat script line -1\n"), IsEmpty());
    EXPECT_THAT(readErrorStack("at script line 1, column 2\n"), IsEmpty());
}

} // namespace

} // namespace solvane
