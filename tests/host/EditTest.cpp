// The host's edit command, with a user before the window that it opens.
#include "CaseFolder.h"
#include "WindowDriver.h"
#include "com/Handle.h"
#include "com/Text.h"

namespace solvane::host {

namespace {

struct Outcome {
    DWORD exitCode = 0;
    std::string printed;
};

/// Both streams of the program go into one file.
Outcome edit(const CaseFolder& folder, const std::string& path, const WindowDriver::Actions& actions) {
    const std::wstring log = filePath(folder.write("printed", "")).wstring();
    SECURITY_ATTRIBUTES inherited{sizeof inherited, nullptr, TRUE};
    FileHandle output(CreateFileW(log.c_str(), FILE_APPEND_DATA, FILE_SHARE_READ | FILE_SHARE_WRITE,
                                  &inherited, OPEN_EXISTING, 0, nullptr));
    STARTUPINFOW start{};
    start.cb = sizeof start;
    start.dwFlags = STARTF_USESTDHANDLES;
    start.hStdOutput = start.hStdError = output.get();
    std::wstring command = L"\"" + filePath(SOLVANE_BIN "/SolvaneHost.exe").wstring() + L"\" edit \"" +
                           filePath(path).wstring() + L"\"";
    PROCESS_INFORMATION started{};
    EXPECT_TRUE(CreateProcessW(nullptr, command.data(), nullptr, nullptr, TRUE, 0, nullptr, nullptr, &start,
                               &started));
    const Handle process(started.hProcess), thread(started.hThread);
    WindowDriver::follow(started.dwThreadId, actions);
    Outcome outcome;
    std::string error;
    EXPECT_EQ(WaitForSingleObject(process.get(), 30'000), WAIT_OBJECT_0);
    GetExitCodeProcess(process.get(), &outcome.exitCode);
    EXPECT_TRUE(readFile(log, outcome.printed, error)) << error;
    return outcome;
}

TEST(EditCommand, aChangedModelGoesToItsFile) {
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
    Outcome outcome = edit(folder, path, close);
    EXPECT_EQ(outcome.exitCode, 0u);
    EXPECT_EQ(outcome.printed, "Nothing was changed.\n");
    EXPECT_FALSE(exists(target));

    outcome = edit(folder, path, addFeed);
    EXPECT_EQ(outcome.exitCode, 0u);
    EXPECT_EQ(outcome.printed,
              "Saved the model to " + pathText(target) +
                  "\nThe case stays as it is: with \"model\": \"unit.svm\" it uses this one.\n");
    std::string before, after, error;
    ASSERT_TRUE(readFile(target, before, error)) << error;

    outcome = edit(folder, pathText(target), addFeed);
    EXPECT_EQ(outcome.printed, "Saved the model to " + pathText(target) + "\n");
    ASSERT_TRUE(readFile(target, after, error)) << error;
    EXPECT_NE(before, after);

    // What cannot be written comes up again, until the user gives up.
    create_directory(filePath(pathText(target) + ".part"));
    outcome = edit(folder, pathText(target), [&](WindowDriver& user) {
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
