// The unit knows its host by the program in the command line.

#include "ServerTest.h"
#include "com/Text.h"

namespace solvane {

namespace {

constexpr DWORD offered = 0;
constexpr DWORD refused = 1;

class HostProgram : public ServerTest {
protected:
    const std::wstring folder =
        UnitModule::builtPath().substr(0, UnitModule::builtPath().rfind(L"\\bin\\")) + L"\\tests\\";

    /// The probe's answer when it is started by this command line.
    DWORD answerOf(const std::wstring& program, std::wstring commandLine) {
        STARTUPINFOW startup{};
        startup.cb = sizeof startup;
        PROCESS_INFORMATION process{};
        if (!CreateProcessW(program.c_str(), commandLine.data(), nullptr, nullptr, FALSE, 0, nullptr, nullptr,
                            &startup, &process))
            return 3;
        const Handle thread(process.hThread);
        const Handle running(process.hProcess);
        DWORD code = 4;
        if (WaitForSingleObject(running.get(), 30000) == WAIT_OBJECT_0)
            GetExitCodeProcess(running.get(), &code);
        else
            TerminateProcess(running.get(), code);
        return code;
    }
};

// PRO/II is to save the unit through its stream.
TEST_F(HostProgram, onlyProIIIsRefusedThePropertyBag) {
    const struct {
        const wchar_t* commandLine;
        DWORD answer;
    } cases[] = {
        {L"\"C:\\Program Files\\PROII\\proii.exe\" case.prz", refused},
        {L"C:\\PROII\\ProII.EXE\tcase.prz", refused},
        {L"proii.exe", refused},
        {L"\"proii.exe", refused},
        {L"C:\\Program Files\\proii.exe", offered}, // cut at the first blank
        {L"proii", offered},
        {L"myproii.exe", offered},
        {L"proii.exe\\flowsheet.exe", offered},
        {L"flowsheet.exe proii.exe", offered},
        {L"apwin.exe", offered},
        {L"brume64.exe", offered},
    };
    for (const auto& row : cases)
        EXPECT_EQ(answerOf(folder + L"host_probe.exe", row.commandLine), row.answer)
            << narrow(row.commandLine);
}

TEST_F(HostProgram, aProgramOfThatNameIsRefusedIt) {
    const std::wstring program = folder + L"proii.exe";
    CopyFileW((folder + L"host_probe.exe").c_str(), program.c_str(), FALSE);
    EXPECT_EQ(answerOf(program, L"\"" + program + L"\""), refused);
    DeleteFileW(program.c_str());
}

} // namespace

} // namespace solvane
