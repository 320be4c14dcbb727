#include "AutomationClient.h"
#include "Folders.h"
#include "com/Handle.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <fstream>

namespace solvane::engine {

namespace {

const std::wstring windowsOctave = builtFile(L"..\\tests\\windows_octave.exe");

std::ptrdiff_t countOf(const std::wstring& folder, std::wstring_view prefix) {
    return std::ranges::count_if(namesIn(folder),
                                 [=](const std::wstring& name) { return name.starts_with(prefix); });
}

TEST(WindowsOctave, takesCommandsDiesAndIsReplaced) {
    const OctaveSetting setting(windowsOctave);
    AutomationClient octave;
    EXPECT_EQ(octave.execute(L"disp('é')"), L"ran disp('é')");
    const Variant deadly(std::wstring_view(L"die"));
    EXPECT_EQ(octave.call(L"Execute", DISPATCH_METHOD, &deadly).result,
              HRESULT_FROM_WIN32(ERROR_PROCESS_ABORTED));
    EXPECT_EQ(octave.execute(L"again"), L"ran again");
    const std::wstring folder = octave.execute(L"pwd");
    EXPECT_TRUE(std::filesystem::exists(folder));
    octave.release();
    EXPECT_TRUE(hasEnded(L"windows_octave.exe"));
    // Only now, since Windows keeps the current folder of a process.
    EXPECT_TRUE(waitUntil([&] { return !std::filesystem::exists(folder); }));
}

TEST(WindowsOctave, endsWithItsServerDuringAnEndlessScript) {
    const OctaveSetting setting(windowsOctave);
    const TemporaryFolder temporary;
    const ScriptFolder folder;
    const Handle hangs(CreateEventW(nullptr, TRUE, FALSE, L"SolvaneWindowsOctaveHangs"));
    const Program client =
        startClient(folder, "CreateObject(\"SolvaneOctave.Application\").Execute \"hang\"\n");
    ASSERT_EQ(WaitForSingleObject(hangs.get(), 30000), WAIT_OBJECT_0);
    ASSERT_TRUE(isRunning(L"windows_octave.exe"));
    TerminateProcess(client.handle(), 1);
    EXPECT_TRUE(hasEnded(L"windows_octave.exe"));

    // Windows has kept its current folder, which the next server removes, but not the folder of one that
    // runs.
    const auto enginesFolders = [&] { return countOf(temporary.path(), L"SolvaneOctave-"); };
    ASSERT_EQ(enginesFolders(), 1);
    AutomationClient next;
    const std::filesystem::path used = next.execute(L"pwd");
    EXPECT_EQ(enginesFolders(), 1);
    std::ofstream(used / "oct-1") << "printed by a program";
    AutomationClient another;
    another.execute(L"pwd");
    EXPECT_TRUE(std::filesystem::exists(used / "oct-1"));
}

} // namespace

} // namespace solvane::engine
