// The host's edit command, with a user at the window that it opens.
#include "CaseFolder.h"
#include "Program.h"
#include "WindowDriver.h"
#include "com/Handle.h"

#include <gtest/gtest.h>

namespace solvane::host {

namespace {

Outcome edit(const std::string& path, const WindowDriver::Actions& actions) {
    Program program(builtFile(L"SolvaneHost.exe") + L" edit \"" + filePath(path).wstring() + L"\"");
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

} // namespace

} // namespace solvane::host
