// The unit recognizes its host by the program in the command line.

#include "Program.h"
#include "ServerTest.h"
#include "com/Text.h"

namespace solvane {

namespace {

constexpr DWORD offered = 0;
constexpr DWORD refused = 1;

using HostProgram = ServerTest;

/// The probe's answer when it is started by this command line.
DWORD answerOf(const std::wstring& program, const std::wstring& commandLine) {
    return Program(commandLine, program.c_str()).wait().exitCode;
}

const std::wstring probe = builtFile(L"..\\tests\\host_probe.exe");

// PRO/II is to save the unit through its stream.
TEST_F(HostProgram, hidesThePropertyBagFromProIIOnly) {
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
        EXPECT_EQ(answerOf(probe, row.commandLine), row.answer) << narrow(row.commandLine);
}

} // namespace

} // namespace solvane
