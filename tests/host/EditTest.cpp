// The host's edit command, with a user at the window that it opens.
#include "CaseFolder.h"
#include "Program.h"
#include "WindowDriver.h"
#include "com/Handle.h"
#include "com/Text.h"
#include "resources/ResourceIds.h"

#include <gtest/gtest.h>

namespace solvane::host {

namespace {

Outcome edit(const std::string& path, const WindowDriver::Actions& actions,
             const std::wstring& options = L"") {
    Program program(builtFile(L"SolvaneHost.exe") + L" edit \"" + filePath(path).wstring() + L"\"" + options);
    WindowDriver::follow(program.threadId(), actions);
    return program.wait();
}

TEST(EditCommand, savesAChangedModelToItsFile) {
    const CaseFolder folder;
    const std::string path = folder.write("unit.json", R"({
        "compounds": ["methane"],
        "feeds": [{"name": "F", "temperature": 300, "pressure": 1e5, "flow": 1, "composition": {"methane": 1}}],
        "products": ["P"], "model": {"script": ["x = 1;"]}})");
    const auto close = [](WindowDriver& user) { user.press(L"&Close"); };
    const auto addFeed = [](WindowDriver& user) {
        user.press(L"&Add");
        user.key(VK_RETURN);
        user.press(L"&Close");
    };
    const std::filesystem::path target = filePath(path).replace_extension(".svm");
    Outcome outcome = edit(path, close);
    EXPECT_EQ(outcome.exitCode, 0u);
    EXPECT_EQ(outcome.printed, "Nothing was changed.\n");
    EXPECT_FALSE(exists(target));

    outcome = edit(path, addFeed);
    EXPECT_EQ(outcome.exitCode, 0u);
    EXPECT_EQ(outcome.printed,
              "Saved the model to " + pathText(target) +
                  "\nThe case file is unchanged; set \"model\": \"unit.svm\" in it to use this model.\n");
    std::string before, after, error;
    ASSERT_TRUE(readFile(target, before, error)) << error;

    const std::string beside = folder.write("unit.svm.part", "the user's");
    outcome = edit(pathText(target), addFeed);
    EXPECT_TRUE(exists(filePath(beside)));
    EXPECT_EQ(outcome.printed, "Saved the model to " + pathText(target) + "\n");
    ASSERT_TRUE(readFile(target, after, error)) << error;
    EXPECT_NE(before, after);

    // The window opens again if the file cannot be written, until the user gives up.
    const FileHandle inUse(
        CreateFileW(target.c_str(), GENERIC_READ, FILE_SHARE_READ, nullptr, OPEN_EXISTING, 0, nullptr));
    outcome = edit(pathText(target), [&](WindowDriver& user) {
        const HWND first = user.here();
        addFeed(user);
        for (int turn = 0; turn < 500 && IsWindow(first); ++turn)
            Sleep(10);
        user.await(L"Solvane CAPE-OPEN Unit Operation:");
        close(user);
    });
    EXPECT_EQ(outcome.exitCode, 1u) << outcome.printed;
    EXPECT_NE(outcome.printed.find("cannot be written"), std::string::npos);
    EXPECT_TRUE(readFile(target, before, error) && before == after);
}

/// What the help's walk shows: the case, the script, and what comes of them, in the order of the page.
std::vector<std::string> readWalk() {
    std::string page, error;
    EXPECT_TRUE(readFile(filePath(SOLVANE_HELP "/pages/alone.html"), page, error)) << error;
    std::vector<std::string> steps;
    const std::string begin = "<pre class=\"walk\">\n";
    for (std::size_t at = 0; (at = page.find(begin, at)) != page.npos;) {
        at += begin.size();
        steps.push_back(page.substr(at, page.find("</pre>", at) - at));
    }
    return steps;
}

std::string withReturns(const std::string& text) {
    std::string result;
    for (const char c : text)
        result += c == '\n' ? "\r\n" : std::string(1, c);
    return result;
}

constexpr int matlabTab = 3;
constexpr int scriptPage = 0;

/// Presses "Test", and returns the output once the run has ended.
std::string test(WindowDriver& user) {
    user.press(L"&Test");
    return narrow(user.text(IDC_MATLAB_OUTPUT)) + "\r\n";
}

TEST(EditCommand, makesAUnitWithoutASimulatorAsTheHelpShows) {
    const std::vector<std::string> walk = readWalk();
    ASSERT_EQ(walk.size(), 7u);
    const CaseFolder folder;
    const std::string path = folder.write("heater.json", walk[0]);
    std::string mended = walk[1];
    mended.replace(mended.find("presure"), 7, "pressure");
    Outcome outcome = edit(path, [&](WindowDriver& user) {
        user.pickTab(IDC_EDIT_TABS, matlabTab);
        user.type(IDC_MATLAB_SCRIPT, widen(withReturns(walk[1])));
        EXPECT_EQ(test(user), withReturns(walk[2]));
        EXPECT_EQ(user.text(IDC_MATLAB_PLACE), L"The error is in line 3, column 5");
        user.pickTab(IDC_MATLAB_TABS, scriptPage);
        user.type(IDC_MATLAB_SCRIPT, widen(withReturns(mended)));
        EXPECT_EQ(test(user), withReturns(walk[3]));
        user.press(L"&Close");
    });
    EXPECT_EQ(outcome.exitCode, 0u) << outcome.printed;
    const std::filesystem::path model = filePath(path).replace_extension(".svm");
    std::string before, after, error;
    ASSERT_TRUE(readFile(model, before, error)) << outcome.printed;

    // Neither the streams nor a test change the model.
    const std::size_t options = walk[6].find(" --feed");
    const std::string feed = walk[6].substr(options, walk[6].find('\n') - options);
    for (const std::wstring& streams : {L" --with \"" + filePath(path).wstring() + L"\"", widen(feed)}) {
        outcome = edit(
            pathText(model),
            [&](WindowDriver& user) {
                user.pickTab(IDC_EDIT_TABS, matlabTab);
                EXPECT_EQ(test(user), withReturns(walk[3]));
                user.press(L"&Close");
            },
            streams);
        EXPECT_EQ(outcome.printed, "Nothing was changed.\n");
        EXPECT_TRUE(readFile(model, after, error) && before == after);
    }

    std::string text = walk[0];
    folder.write("heater.json", text.insert(text.rfind('}'), walk[4]));
    Program run(builtFile(L"SolvaneHost.exe") + L" run \"" + filePath(path).wstring() + L"\"");
    outcome = run.wait();
    EXPECT_NE(outcome.printed.find(walk[5]), std::string::npos) << outcome.printed;
}

TEST(EditCommand, warnsOfStreamsThatTheModelHasNoPortFor) {
    const CaseFolder folder;
    const auto caseWith = [&](const char* name, const char* product) {
        return folder.write(name, std::string(R"({"compounds": ["methane"], "feeds": [], "products": [")") +
                                      product + R"("], "model": {"script": ["x = 1;"]}})");
    };
    const std::string path = caseWith("unit.json", "P");
    edit(path, [](WindowDriver& user) {
        user.press(L"&Add");
        user.key(VK_RETURN);
        user.press(L"&Close");
    });
    const Outcome outcome = edit(
        pathText(filePath(path).replace_extension(".svm")), [](WindowDriver& user) { user.press(L"&Close"); },
        L" --with \"" + filePath(caseWith("other.json", "Top")).wstring() + L"\"");
    EXPECT_NE(outcome.printed.find("warning: the stream is not connected: Looking for the port \"Top\""),
              std::string::npos)
        << outcome.printed;
    EXPECT_EQ(outcome.exitCode, 0u);
}

} // namespace

} // namespace solvane::host
