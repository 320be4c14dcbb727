#include "AutomationClient.h"
#include "channel/DedicatedServer.h"

#include "com/Text.h"

#include <gmock/gmock.h>

#include <algorithm>

namespace solvane::engine {

namespace {

using testing::StartsWith;

class Execute : public testing::Test {
protected:
    AutomationClient octave;
};

TEST_F(Execute, returnsAllThatACommandPrints) {
    struct Case {
        const wchar_t* command;
        const wchar_t* printed;
    };
    // One after the other in one workspace.
    const Case cases[] = {
        {L"x = 6;", L""},
        {L"", L""},
        {L"x * 7", L"ans = 42\n"},
        {L"warning('hot'); printf('%d\\n', x)", L"warning: hot\n6\n"},
        {L"if x == 6\n  disp('lines')\nend", L"lines\n"},
        {L"s = 'it''s \\n \"quoted\"'", L"s = it's \\n \"quoted\"\n"},
        {L"disp('a'); return; disp('b')", L"a\n"},
        {L"try, nosuch, catch, disp(lasterr), end", L"'nosuch' undefined near line 1, column 6\n"},
        {L"if ispc(), and = '&'; else, and = ';'; end, system(['echo from below' and ' exit 3']);",
         L"from below\n"},
        {L"disp(['naïve Ω ' '漢字 😀'])", L"naïve Ω 漢字 😀\n"},
    };
    for (const Case& test : cases)
        EXPECT_EQ(octave.execute(test.command), test.printed);
}

TEST_F(Execute, failsWithTheErrorThatACommandRaises) {
    EXPECT_EQ(octave.failureOf(L"x = 1; error(\"first\\n  second é\")"), L"first\n  second é");
    EXPECT_EQ(octave.failureOf(L"nosuch"), L"'nosuch' undefined near line 1, column 1");
    EXPECT_THAT(octave.failureOf(L"y = ["), StartsWith(L"parse error"));
    EXPECT_EQ(octave.execute(L"disp(x)"), L"1\n") << "what came before the error is done";
}

TEST_F(Execute, failsAtOnceIfAScriptWaitsForAUser) {
    for (const std::wstring name : {L"input", L"pause", L"yes_or_no", L"kbhit", L"dbstop", L"keyboard"})
        EXPECT_THAT(octave.failureOf(name), StartsWith(name + L" waits for a user"));
    EXPECT_EQ(octave.execute(L"pause(0.01), disp(1)"), L"1\n");
    EXPECT_THAT(octave.failureOf(L"path(''); clear all, evalc('keyboard');"), StartsWith(L"keyboard waits"));
    EXPECT_THAT(octave.failureOf(L"fork"), StartsWith(L"fork: "));
    // Octave's own reads the nothing that its input is.
    EXPECT_THAT(octave.failureOf(L"try, builtin('input', ''), catch, disp('caught'), end"),
                StartsWith(L"the output of the command is lost"));
    EXPECT_EQ(octave.execute(L"disp(1)"), L"1\n");
}

TEST_F(Execute, doesNotWaitForProgramsInTheBackground) {
    if (octave.isOnWindows())
        GTEST_SKIP() << "the command processor of Windows has no background";
    const ULONGLONG start = GetTickCount64();
    EXPECT_EQ(octave.execute(L"system('sleep 30 & echo started');"), L"started\n");
    EXPECT_LT(GetTickCount64() - start, 15000u);
}

TEST_F(Execute, takesWhatLateBoundClientsSend) {
    const Variant number(LONG{17});
    EXPECT_EQ(octave.call(L"execute", DISPATCH_METHOD | DISPATCH_PROPERTYGET, &number).value.text(),
              L"ans = 17\n");
    EXPECT_EQ(octave.call(L"Execute", DISPATCH_METHOD).result, DISP_E_BADPARAMCOUNT);
    EXPECT_EQ(octave.call(L"Evaluate", DISPATCH_METHOD).result, DISP_E_UNKNOWNNAME);

    const Variant yes(true);
    const Variant zero(LONG{0});
    EXPECT_EQ(octave.call(L"Visible", DISPATCH_PROPERTYPUT, &yes).result, S_OK);
    EXPECT_EQ(octave.call(L"Visible", DISPATCH_PROPERTYGET).value.integer(), 1);
    EXPECT_EQ(octave.call(L"Visible", DISPATCH_PROPERTYPUT, &zero).result, S_OK);
    EXPECT_EQ(octave.call(L"Visible", DISPATCH_PROPERTYGET).value.integer(), 0);
    EXPECT_EQ(octave.call(dedicatedServerProperty, DISPATCH_PROPERTYGET).value.boolean(), VARIANT_TRUE);
}

TEST_F(Execute, survivesChangesOfScriptsToOctave) {
    ScriptFolder folder;
    for (const wchar_t* command : {L"clear functions", L"clear globals", L"clear variables", L"clear all",
                                   L"clear -all", L"clear mex", L"restoredefaultpath;", L"echo on all",
                                   L"function cd, error('mine'), end, clear cd", L"close all; fclose all;"}) {
        octave.execute(command);
        EXPECT_EQ(octave.execute(L"cd '" + folder.path() + L"'"), L"") << command;
        EXPECT_EQ(octave.execute(L"disp(1)"), L"1\n") << command;
    }
    ScriptFolder toolbox;
    toolbox.write(L"answer.m", "disp(42)\n");
    octave.execute(L"addpath '" + toolbox.path() + L"'");
    for (const wchar_t* command : {L"restoredefaultpath;", L"path('');", L"rmpath(path());"}) {
        octave.execute(L"x = 1; " + std::wstring(command));
        EXPECT_EQ(octave.execute(L"answer"), L"42\n") << command;
        EXPECT_EQ(octave.execute(L"cd '" + folder.path() + L"'"), L"") << command;
    }
    octave.execute(L"rmpath '" + toolbox.path() + L"'");
    EXPECT_EQ(octave.execute(L"disp(exist('answer'))"), L"0\n") << "the client may take its own away";
}

TEST_F(Execute, reportsACommandThatAnOverrideStops) {
    const ScriptFolder folder;
    octave.execute(L"cd '" + folder.path() + L"'");
    folder.write(L"evalin.m", "function evalin(varargin)\n");
    octave.execute(L"rehash");
    EXPECT_THAT(octave.failureOf(L"disp(1)"), StartsWith(L"the command did not run"));
    std::filesystem::remove(folder.path() + L"\\evalin.m");
    EXPECT_EQ(octave.execute(L"disp(1)"), L"1\n");
}

TEST_F(Execute, readsScriptsInTheAnsiCodePageAndInUtf8) {
    const ScriptFolder folder;
    folder.write(L"start.m", "clear functions\necho ansi on\nutf8, ansi\necho ansi off\ndisp(v)\n");
    folder.write(L"utf8.m", "disp('Zürich €')\nscript\n");
    folder.write(L"ansi.m", "function ansi\ndisp('Z\xfcrich \x80'), utf8\n");
    folder.write(L"script.m", "v = '\xe9t\xe9';\n");
    octave.execute(L"cd '" + folder.path() + L"'");
    const std::wstring printed = octave.execute(L"start");
    EXPECT_EQ(printed.substr(0, 9), L"Zürich €\n");
    EXPECT_THAT(narrow(printed, CP_UTF8), testing::HasSubstr("disp('Zürich €'), utf8")) << "its echo";
    EXPECT_THAT(narrow(printed, CP_UTF8), testing::EndsWith("\nZürich €\nZürich €\n+ \nété\n"));
    EXPECT_EQ(folder.read(L"ansi.m"), "function ansi\ndisp('Z\xfcrich \x80'), utf8\n");
    folder.write(L"ansi.m", "disp('Zürich')\n");
    folder.write(L"script.m", "v = 2;\n");
    octave.execute(L"cd '" + folder.path() + L"'");
    EXPECT_THAT(octave.execute(L"start"), testing::EndsWith(L"Zürich\n2\n")) << "after a change to UTF-8";
    std::filesystem::remove(folder.path() + L"\\script.m");
    EXPECT_THAT(octave.failureOf(L"start"), StartsWith(L"'script' undefined"));
    octave.execute(L"cd 'C:\\'");
    EXPECT_FALSE(std::filesystem::exists(folder.path() + L"\\private"));
}

TEST_F(Execute, findsWhatHasChangedWhenAClientChangesToTheSameFolder) {
    if (octave.isOnWindows())
        GTEST_SKIP()
            << "Octave for Windows keeps what it has read until it is cleared, as each run of a unit does";
    const ScriptFolder here;
    const ScriptFolder toolbox;
    here.write(L"changed.m", "disp(1)\n");
    here.write(L"removed.m", "function removed\n");
    const std::wstring cd = L"cd '" + here.path() + L"'";
    octave.execute(L"addpath '" + toolbox.path() + L"'");
    here.makeOld();
    toolbox.makeOld();
    octave.execute(cd);
    EXPECT_EQ(octave.execute(L"changed"), L"1\n");
    EXPECT_EQ(octave.execute(cd), L"");
    here.write(L"changed.m", "disp(2)\n");
    octave.execute(cd);
    EXPECT_EQ(octave.execute(L"changed"), L"2\n") << "a file was written";
    here.write(L"changed.m", "disp(3)\n");
    octave.execute(cd);
    EXPECT_EQ(octave.execute(L"changed"), L"3\n") << "and again at once";

    here.write(L"added.m", "disp(4)\n");
    std::filesystem::remove(here.path() + L"\\removed.m");
    octave.execute(cd);
    EXPECT_EQ(octave.execute(L"added"), L"4\n");
    EXPECT_THAT(octave.failureOf(L"removed"), StartsWith(L"'removed' undefined"));
    here.makeOld();
    octave.execute(cd);
    toolbox.write(L"tool.m", "disp(5)\n");
    octave.execute(cd);
    EXPECT_EQ(octave.execute(L"tool"), L"5\n") << "in another folder of the path";
}

TEST_F(Execute, takesWindowsPathsInCommandsAndScripts) {
    const ScriptFolder here;
    const ScriptFolder there;
    here.write(L"goThere.m", "change(other, home)\n");
    here.write(L"change.m", "function change(other, home)\ncd(other)\naddpath(home, other)\nrehash\n");
    there.write(L"answer.m", "function a = answer\na = 42;\n");
    here.makeOld();
    there.makeOld();
    std::wstring loud = here.path();
    std::transform(loud.begin(), loud.end(), loud.begin(),
                   [](wchar_t c) { return c < 128 ? std::towupper(c) : c; });

    EXPECT_EQ(octave.execute(L"cd '" + loud + L"\\'"), L"") << "a trailing backslash, another case";
    EXPECT_EQ(octave.execute(L"home = '" + here.path() + L"'; other = '" + there.path() + L"';"), L"");
    EXPECT_EQ(octave.execute(L"goThere"), L"");
    EXPECT_EQ(octave.execute(L"cd .."), L"");
    EXPECT_EQ(octave.execute(L"answer"), L"ans = 42\n") << "found on the path";
    EXPECT_EQ(octave.execute(L"rmpath(other); disp(exist('answer'))"), L"0\n");

    // A folder's name in apostrophes as it is, and what only looks like that.
    const std::wstring names = here.path() + L"\\O'Brien''s'";
    std::filesystem::create_directory(names);
    for (const std::wstring& command : {L"addpath '" + names + L"'", L"cd '" + names + L"\\'"})
        EXPECT_EQ(octave.execute(command), L"");
    EXPECT_EQ(octave.execute(L"disp(pwd()(end-10:end)), disp(any(strfind(path(), pwd())))"),
              L"O'Brien''s'\n1\n");
    EXPECT_EQ(octave.execute(L"cd '..'; disp('left')"), L"left\n");

    for (const wchar_t* missing : {L"cd 'C:\\no such folder'", L"cd 'J:\\'"})
        EXPECT_NE(octave.failureOf(missing), L"") << missing;
    EXPECT_NE(octave.execute(L"addpath 'C:\\no such folder'"), L"");
}

TEST_F(Execute, returnsFiftyMegabytes) {
    const std::wstring printed =
        octave.execute(L"for k = 1:50, disp(repmat(char(64 + mod(k, 26)), 1, 1e6)); end");
    ASSERT_EQ(printed.size(), 50u * 1000001u);
    EXPECT_EQ(printed[0], L'A');
    EXPECT_EQ(printed[printed.size() - 2], L'X');
    EXPECT_EQ(octave.execute(L"disp(1)"), L"1\n");
}

} // namespace

} // namespace solvane::engine
