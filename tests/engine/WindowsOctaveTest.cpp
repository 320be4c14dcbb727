#include "AutomationClient.h"

#include "com/Handle.h"
#include "com/Text.h"

#include <gtest/gtest.h>

#include <tlhelp32.h>

namespace solvane::engine {

namespace {

std::wstring testFile(const wchar_t* name) {
    return builtFile(L"..\\tests\\") + name;
}

bool isRunning(const wchar_t* program) {
    const FileHandle snapshot(CreateToolhelp32Snapshot(TH32CS_SNAPPROCESS, 0));
    PROCESSENTRY32W entry{};
    entry.dwSize = sizeof entry;
    for (BOOL more = Process32FirstW(snapshot.get(), &entry); more;
         more = Process32NextW(snapshot.get(), &entry))
        if (compareNoCase(entry.szExeFile, program) == 0)
            return true;
    return false;
}

bool hasEnded(const wchar_t* program) {
    for (int i = 0; i < 100 && isRunning(program); ++i)
        Sleep(50);
    return !isRunning(program);
}

/// Has the server run another Octave.
class WindowsOctave : public testing::Test {
protected:
    static void useOctave(const std::wstring& program) {
        SetEnvironmentVariableW(L"SOLVANE_OCTAVE", program.c_str());
    }
    ~WindowsOctave() override { SetEnvironmentVariableW(L"SOLVANE_OCTAVE", nullptr); }
};

TEST_F(WindowsOctave, takesCommandsDiesAndIsReplaced) {
    useOctave(testFile(L"windows_octave.exe"));
    AutomationClient octave;
    EXPECT_EQ(octave.execute(L"disp('é')"), L"ran disp('é')");
    const Variant deadly(std::wstring_view(L"die"));
    EXPECT_EQ(octave.call(L"Execute", DISPATCH_METHOD, &deadly).result,
              HRESULT_FROM_WIN32(ERROR_PROCESS_ABORTED));
    EXPECT_EQ(octave.execute(L"again"), L"ran again");
    octave.release();
    EXPECT_TRUE(hasEnded(L"windows_octave.exe"));
}

TEST_F(WindowsOctave, aProgramThatEndsAtOnceFailsTheCreationAtOnce) {
    useOctave(L"C:\\windows\\system32\\hostname.exe");
    const ULONGLONG start = GetTickCount64();
    ComRef<IDispatch> object;
    EXPECT_EQ(AutomationClient::create(object), HRESULT_FROM_WIN32(ERROR_PROCESS_ABORTED));
    EXPECT_LT(GetTickCount64() - start, 15000u) << "nothing was to be waited for";
}

TEST_F(WindowsOctave, endsWithItsServerEvenWhereAScriptNeverDoes) {
    useOctave(testFile(L"windows_octave.exe"));
    const ScriptFolder folder;
    folder.write(L"hang.vbs", "CreateObject(\"SolvaneOctave.Application\").Execute \"hang\"\n");
    std::wstring command = L"cscript //nologo \"" + folder.path() + L"\\hang.vbs\"";
    STARTUPINFOW startup{};
    startup.cb = sizeof startup;
    PROCESS_INFORMATION started{};
    ASSERT_TRUE(CreateProcessW(nullptr, command.data(), nullptr, nullptr, FALSE, 0, nullptr, nullptr,
                               &startup, &started));
    const Handle client(started.hProcess);
    const Handle thread(started.hThread);
    for (int i = 0; i < 200 && !isRunning(L"windows_octave.exe"); ++i)
        Sleep(50);
    ASSERT_TRUE(isRunning(L"windows_octave.exe"));
    Sleep(1500); // until the command runs
    ASSERT_TRUE(isRunning(L"windows_octave.exe"));
    TerminateProcess(client.get(), 1);
    EXPECT_TRUE(hasEnded(L"windows_octave.exe"));
}

} // namespace

} // namespace solvane::engine
