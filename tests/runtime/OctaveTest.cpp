// End to end: the unit, the engine that is registered as Matlab, the gateway in it, and real scripts. The
// examples of the help book cover each command.

#include "HostTest.h"
#include "HostedUnit.h"
#include "com/Text.h"
#include "materials/FakeMaterial11.h"

#include <gmock/gmock.h>

namespace solvane {

namespace {

using testing::AllOf;
using testing::HasSubstr;
using testing::Not;
using testing::StartsWith;

class OctaveRun : public testing::Test {
protected:
    static HostedUnit createUnit(const UnitModule& module, ModelBag& bag) {
        const HostedUnit unit(module);
        EXPECT_EQ(unit.as<ICapeUtilities>()->Initialize(), S_OK) << narrow(unit.errorDescription());
        EXPECT_EQ(unit.load(bag), S_OK);
        return unit;
    }
    HostedUnit createUnit(ModelBag& bag) const { return createUnit(module, bag); }

    /// Replaces the unit's script.
    static void rewrite(const HostedUnit& unit, ModelBag& bag, const std::string& script) {
        ModelBag another;
        another.values = bag.values;
        another.script(script);
        EXPECT_EQ(unit.load(another), S_OK);
    }

    /// Connects a feed "F" with these compounds.
    static void feed(const HostedUnit& unit, const std::vector<std::wstring>& compounds) {
        FakeStream stream = makeFakeStream(compounds.size());
        stream.compounds = compounds;
        ASSERT_EQ(unit.connect(L"F", FakeMaterial11::create(stream)->dispatch()), S_OK);
    }

    const Apartment apartment;
    const UnitModule module;
};

TEST_F(OctaveRun, reportsErrorsOfTheScriptToTheHost) {
    ModelBag bag;
    const HostedUnit unit = createUnit(bag.script(""));
    const struct {
        const char* script;
        const char* error;
    } cases[] = {
        {"x = 1;\ny = nosuchthing + x;\n", "'nosuchthing' undefined in line 2"},
        {"error(\"two\\n  lines\");\n", "two, lines"},
        {"getParameter('Duty');\n", "Invalid parameter name: Duty"},
        {"getFeedProp(1, 'temperature');\n", "port number out of range for getFeedProp"},
        {"getCompoundConstant('molecularWeight');\n", "No calculation material available"},
        {"x = [1 2\ny = );\n", "parse error"},
        {"input('x')\n", "input waits for a user"},
        {"try, quit, catch, exit(1), end\n", "exit would end Octave, not only the script; use return"},
    };
    for (const auto& row : cases) {
        rewrite(unit, bag, row.script);
        EXPECT_EQ(unit.calculate(), capeFailure) << row.script;
        EXPECT_THAT(narrow(unit.errorDescription()), HasSubstr(row.error)) << row.script;
        EXPECT_THAT(narrow(unit.errorDescription()), Not(HasSubstr("\n")));
        EXPECT_THAT(narrow(unit.output()), StartsWith("MATLAB output:\n"));
    }
    rewrite(unit, bag, "try; getParameter('Duty'); catch; disp('caught'); end\n");
    EXPECT_EQ(unit.calculate(), S_OK);
    EXPECT_EQ(unit.output(), L"MATLAB output:\ncaught\nMATLAB done\n");
}

TEST_F(OctaveRun, warnsInTermsOfTheScript) {
    ModelBag bag;
    const HostedUnit unit = createUnit(bag.script(""));
    const char* const table = "T,P\n1,2e5\n3,1.5 bar\n";
    // In the code page, which the engine translates into a copy.
    const char* const tidy = "function tidy\n% \xe9\nx = 1;\nif x = 2, end\n";
    const struct {
        const char* script;
        const char* printed;
    } rows[] = {
        {"if true\n x = 1;\nend\nend\ndisp(1)\n",
         "warning: 'end' in line 4 ends no block, and what follows it never runs\n"},
        {"if true\n x = 1;\nend\n% d\ndisp(1)\n", "1\n"}, // as long, and mostly written in the same second
        {"% all of it\n\nfunction y = f(x)\ny = x;\n", "warning: the script begins with the function in line "
                                                       "3, which nothing calls, and what follows it never "
                                                       "runs\n"},
        {"f(1)\nend\n% its own\nfunction f(x)\nwarning('hot')\nend\n",
         "warning: hot\nwarning: called from\n    script at line 5 column 1\n    script at line 1 column "
         "1\n\n"},
        {"x = 1; if x = 2, tidy, end\nwhile x(1) = 0, end\n",
         "warning: '=' in line 1 assigns and does not compare\n"
         "warning: '=' in line 2 assigns and does not compare\n"
         "warning: '=' in line 4 of tidy.m assigns and does not compare\n"},
        {"try, x = 1;\n nosuch; catch e, disp(e.message), end\n", "'nosuch' undefined in line 2\n"},
        {"x = csvread('t.csv'); disp(x(1,2))\n",
         "warning: \"T\" in line 1 of t.csv is not a number, but is read as one\n0\n"},
        {"x = dlmread('t.csv', ',', 1, 0); disp(x(1,2))\n",
         "warning: \"1.5 bar\" in line 3 of t.csv is not a number, but is read as one\n200000\n"},
        {"x = dlmread('t.csv', ',', [1 0 1 1]); x = dlmread('t.csv', 'emptyvalue', NaN);\n", ""},
        {"x = dlmread('p.csv', ';');\n",
         "warning: \"2,5\" in line 1 of p.csv is not a number, but is read as one\n"},
        {"x = dlmread('p.csv');\n",
         "warning: \"2,5\" in line 1 of p.csv is not a number, but is read as one\n"},
        // All columns, or only the second one: Octave takes "5" for it.
        {"x = csvread('p.csv', 0, 1);\n",
         "warning: the numbers in line 1 of p.csv are separated by semicolons, but are not read so\n"},
        {"x = csvread('tabs.csv', 1, 0);\n",
         "warning: the numbers in line 2 of tabs.csv are separated by tabs, but are not read so\n"},
        {"x = dlmread('tabs.csv', '\\t', 1, 0); x = dlmread('tabs.csv', '', 1, 0); disp(x)\n", "   1  -2\n"},
        {"x = csvread('blanks.csv');\n",
         "warning: \"3 -4\" in line 2 of blanks.csv is not a number, but is read as one\n"},
        {"x = csvread('latin.csv', 1, 0); x = csvread('latin.csv');\n",
         "warning: \"T\" in line 1 of latin.csv is not a number, but is read as one\n"},
        {"x = csvread('comma.csv', 1, 0);\n",
         "warning: lines 3 and 4 of comma.csv have 3 and 2 cells, and their columns do not match\n"},
        {"x = csvread('comma.csv', [1 0 1 2]);\n",
         "warning: lines 1 and 2 of comma.csv have 2 and 3 cells, and their columns do not match\n"},
        {"x = csvread('comma.csv', [1 0 4 1]); x = csvread('comma.csv', [3 0 4 1]);\n", ""},
        {"x = csvread('t.csv', 3, 0);\n", "warning: t.csv has no numbers where it is read\n"},
        {"fclose(fopen('none.csv', 'w')); x = csvread('none.csv');\n",
         "warning: none.csv has no numbers where it is read\n"},
        {"x = csvread('utf16.csv');\n", "warning: utf16.csv is not plain text, but is read as such\n"},
    };
    for (const auto& row : rows) {
        EXPECT_EQ(unit.load(ModelBag()
                                .script(row.script)
                                .file("t.csv", table)
                                .file("p.csv", "1;2,5\n")
                                .file("tidy.m", tidy)
                                .file("comma.csv", "T,p\n600,1,200\n700,1,300\n800,900,,\n\n850,950")
                                .file("tabs.csv", "T\tP\n1\t-2\n")
                                .file("blanks.csv", "\xEF\xBB\xBF"
                                                    "1, 1 + 2i\n3 -4\n")
                                .file("latin.csv", "T,\xE9\n1,2\n")
                                .file("utf16.csv", std::string("\xFF\xFE"
                                                               "1\0,\0"
                                                               "2\0",
                                                               8))),
                  S_OK);
        EXPECT_EQ(unit.calculate(), S_OK) << row.script << narrow(unit.errorDescription());
        EXPECT_EQ(narrow(unit.output()), std::string("MATLAB output:\n") + row.printed + "MATLAB done\n");
    }
}

TEST_F(OctaveRun, reportsTheCauseOfFailuresOutsideTheScript) {
    ModelBag lost;
    const HostedUnit unit = createUnit(lost.script("try; builtin('input', ''); catch; end\n"));
    EXPECT_EQ(unit.calculate(), capeFailure);
    EXPECT_THAT(narrow(unit.errorDescription()),
                AllOf(StartsWith("Failed to calculate: Call to Execute failed: "),
                      HasSubstr("the output of the command is lost")));

    ModelBag gateway;
    gateway.file("CapeOpenUnitMex.m", "function CapeOpenUnitMex(varargin)\nerror('no gateway')\n");
    const HostedUnit another = createUnit(gateway.script(""));
    EXPECT_EQ(another.calculate(), capeFailure);
    EXPECT_THAT(narrow(another.errorDescription()),
                AllOf(StartsWith("Failed to calculate: "), HasSubstr(": no gateway")));

    ModelBag quotes;
    EXPECT_EQ(unit.load(quotes.script("").feeds({L"F"})), S_OK);
    const struct {
        std::vector<std::wstring> compounds;
        const char* error;
    } rows[] = {{{L"O'Brien"}, "parse error"},
                {{L"b' 'c"}, "compNames does not hold the names of the compounds"},
                {{L"5'-3'", L"B"}, "compNames does not hold the names of the compounds"}};
    for (const auto& row : rows) {
        feed(unit, row.compounds);
        EXPECT_EQ(unit.calculate(), capeFailure);
        EXPECT_THAT(narrow(unit.errorDescription()),
                    AllOf(StartsWith("Failed to calculate: "), HasSubstr(row.error)));
    }
    feed(unit, {L"OBrien"});
    EXPECT_EQ(unit.calculate(), S_OK) << narrow(unit.errorDescription());
}

TEST_F(OctaveRun, supportsTheLettersOfTheCodePage) {
    const std::string script = "if ~strcmp(compNames{1}, 'Müller €'), error('other name'), end\n"
                               "setParameter('Stoff', compNames{1}); check\n"
                               "setReport('Übersicht', compNames{1});\n";
    const std::string check = "function check\nglobal compNames\n"
                              "if ~strcmp(getParameter('Stoff'), compNames{1}), error('other é'), end\n";
    // As editors and the unit's window write it.
    for (const auto encode : {+[](const std::string& text) { return text; },
                              +[](const std::string& text) { return narrow(widen(text, CP_UTF8)); }}) {
        ModelBag bag;
        bag.feeds({L"F"})
            .reports({L"Übersicht"})
            .parameter(L"Stoff", L"string", Variant(std::wstring_view()));
        const HostedUnit unit = createUnit(bag.script(encode(script)).file("check.m", encode(check)));
        feed(unit, {L"Müller €", L"Öl"});
        EXPECT_EQ(unit.calculate(), S_OK) << narrow(unit.errorDescription());
        EXPECT_EQ(unit.output(), L"MATLAB output:\nMATLAB done\n");
        EXPECT_EQ(unit.parameter(L"Stoff").text(), L"Müller €");
        EXPECT_EQ(unit.report(L"Übersicht"), L"Müller €");
    }
}

TEST_F(OctaveRun, supportsAnApostropheInTheTemporaryFolder) {
    const TemporaryFolder temporary(L"Zoë O'Brien's");
    ModelBag bag;
    const HostedUnit unit = createUnit(
        bag.reports({L"R"}).script("extra\nsetReport('R', '1');\n").file("extra.m", "disp('\xe9')\n"));
    ASSERT_EQ(unit.calculate(), S_OK) << narrow(unit.errorDescription());
    EXPECT_EQ(unit.output(), L"MATLAB output:\né\nMATLAB done\n");
    EXPECT_EQ(unit.report(L"R"), L"1");
    EXPECT_EQ(unit.terminate(), S_OK);
    for (const std::wstring& name : namesIn(temporary.path()))
        EXPECT_NE(name[0], L'{') << "the working folder";
}

TEST_F(OctaveRun, startsWithoutTheVariablesOfTheLastRun) {
    ModelBag bag;
    const HostedUnit unit = createUnit(bag.script("evalin('base', 'left = 1;');\n"));
    ASSERT_EQ(unit.calculate(), S_OK);
    rewrite(unit, bag, "disp(evalin('base', 'exist(''left'')'));\n");
    ASSERT_EQ(unit.calculate(), S_OK);
    EXPECT_EQ(unit.output(), L"MATLAB output:\n0\nMATLAB done\n");
}

TEST_F(OctaveRun, echoesTheScriptsLinesOnly) {
    ModelBag bag;
    bag.values[L"info level"] = Variant(LONG{1});
    bag.file("helper.m", "function helper\ninside = 1;\n");
    const HostedUnit unit =
        createUnit(bag.script("answer = nComp + AGGSTATE_SOLID;\nhelper\nerror('stop')\n"));
    EXPECT_EQ(unit.calculate(), capeFailure);
    EXPECT_THAT(narrow(unit.output()), HasSubstr("answer = nComp + AGGSTATE_SOLID;"));
    EXPECT_THAT(narrow(unit.output()), Not(HasSubstr("inside")));
    EXPECT_THAT(narrow(unit.output()), HasSubstr("Evaluation error: stop\nMATLAB done\n"));
    ModelBag quiet;
    ASSERT_EQ(unit.load(quiet.file("helper.m", "function helper\ninside = 1;\n").script("helper\n")), S_OK);
    ASSERT_EQ(unit.calculate(), S_OK);
    EXPECT_EQ(unit.output(), L"MATLAB output:\nMATLAB done\n");
}

TEST_F(OctaveRun, keepsTheLastTextOfAReportInAnyFolder) {
    ModelBag bag;
    // Another unit's scripts are on the path, as with an interpreter that units share.
    const HostedUnit unit = createUnit(bag.reports({L"R"}).script(R"(
setReport('R', 'former');
other = tempname(); mkdir(other); addpath(other);
for name = {'runUnit.m', 'unitCalc.m'}, fclose(fopen(fullfile(other, name{1}), 'w')); end
cd(tempdir); setReport('R', 'last');
confirm_recursive_rmdir(false); rmdir(other, 's');
)"));
    EXPECT_EQ(unit.calculate(), S_OK) << narrow(unit.errorDescription());
    EXPECT_EQ(unit.report(L"R"), L"last");
}

// Octave detects a changed file by its time in seconds, and these files change more often.
TEST_F(OctaveRun, findsTheFilesOfItsModel) {
    const HostedUnit unit(module);
    ASSERT_EQ(unit.as<ICapeUtilities>()->Initialize(), S_OK);
    for (int k = 1; k <= 8; ++k) {
        const std::string number = std::to_string(k);
        ModelBag bag;
        bag.file("same.m", "function same\ndisp(" + number + "0)\n")
            .file("extra" + number + ".m", "disp('new file')\n")
            .script("disp(" + number + ")\nsame\nextra" + number + "\n");
        ASSERT_EQ(unit.load(bag), S_OK);
        EXPECT_EQ(unit.calculate(), S_OK) << narrow(unit.errorDescription());
        EXPECT_EQ(narrow(unit.output()),
                  "MATLAB output:\n" + number + "\n" + number + "0\nnew file\nMATLAB done\n");
    }
}

// With sockets alone, each command takes Wine's server three times as many requests.
TEST_F(OctaveRun, reachesTheUnitThroughPipes) {
    ModelBag bag;
    const HostedUnit unit = createUnit(bag.script(R"(
pipes = 0;
for descriptor = 3:20
    pipes = pipes + strncmp(readlink(sprintf('/proc/self/fd/%d', descriptor)), 'pipe:', 5);
end
disp(pipes + 2*ispc)
)"));
    ASSERT_EQ(unit.calculate(), S_OK) << narrow(unit.errorDescription());
    EXPECT_EQ(unit.output(), L"MATLAB output:\n2\nMATLAB done\n");
}

// Each has its own Octave, working folder and channel.
TEST_F(OctaveRun, isolatesTheUnitsOfAProcess) {
    ModelBag bag1, bag2;
    const HostedUnit first = createUnit(bag1.script("x = getParameter('a'); setParameter('a', x + 1);\n")
                                            .parameter(L"a", L"real", Variant(1.0)));
    const HostedUnit second = createUnit(
        bag2.script("setParameter('a', 10*getParameter('a'));\n").parameter(L"a", L"real", Variant(1.0)));
    for (int i = 0; i < 3; ++i) {
        EXPECT_EQ(first.calculate(), S_OK) << narrow(first.errorDescription());
        EXPECT_EQ(second.calculate(), S_OK) << narrow(second.errorDescription());
    }
    EXPECT_EQ(first.parameter(L"a").real(), 4);
    EXPECT_EQ(second.parameter(L"a").real(), 1000);
}

} // namespace

} // namespace solvane
