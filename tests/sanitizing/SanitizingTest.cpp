#include "Faults.h"
#include "cmake/sanitizing/Finding.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>

namespace {

constexpr wchar_t faultVariable[] = L"SOLVANE_FAULT";

// This program again, which commits the fault before its tests begin; its findings go to a file of their own.
DWORD exitCodeAfter(const Fault& fault, const std::filesystem::path& findings) {
    wchar_t program[MAX_PATH];
    GetModuleFileNameW(nullptr, program, MAX_PATH);
    SetEnvironmentVariableA("SOLVANE_FAULT", fault.name);
    SetEnvironmentVariableW(L"SOLVANE_FINDINGS", findings.c_str());
    STARTUPINFOW start{};
    start.cb = sizeof start;
    PROCESS_INFORMATION process{};
    EXPECT_TRUE(
        CreateProcessW(program, nullptr, nullptr, nullptr, FALSE, 0, nullptr, nullptr, &start, &process));
    WaitForSingleObject(process.hProcess, 30000);
    DWORD code = 0;
    GetExitCodeProcess(process.hProcess, &code);
    CloseHandle(process.hThread);
    CloseHandle(process.hProcess);
    SetEnvironmentVariableW(faultVariable, nullptr);
    SetEnvironmentVariableW(L"SOLVANE_FINDINGS", nullptr);
    return code;
}

const bool faultCommitted = [] {
    char name[100] = "";
    GetEnvironmentVariableA("SOLVANE_FAULT", name, sizeof name);
    for (const Fault& fault : faults())
        if (std::string(name) == fault.name)
            fault.commit();
    return *name != 0;
}();

} // namespace

TEST(Sanitizing, FindsDeliberateFaults) {
    ASSERT_FALSE(faultCommitted) << "the fault went unnoticed";
    const std::filesystem::path findings = std::filesystem::temp_directory_path() / "SolvaneFindings.txt";
    for (const Fault& fault : faults()) {
        if (*fault.build && std::string(fault.build) != SOLVANE_SANITIZER)
            continue;
        SCOPED_TRACE(fault.name);
        std::filesystem::remove(findings);
        EXPECT_EQ(exitCodeAfter(fault, findings), findingExitCode);
        std::ifstream file(findings);
        const std::string report{std::istreambuf_iterator<char>(file), {}};
        EXPECT_NE(report.find(fault.report), std::string::npos) << report;
        EXPECT_NE(report.find("sanitizing_test.exe+0x"), std::string::npos) << report;
    }
    std::filesystem::remove(findings);
}
