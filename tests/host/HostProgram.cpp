#include "HostProgram.h"

#include "cases/FilePath.h"

#include <gtest/gtest.h>

namespace solvane::host {

HostProgram::HostProgram(const std::wstring& arguments)
    : log_(L"SolvaneHost" + std::to_wstring(GetCurrentProcessId()) + L".txt") {
    SECURITY_ATTRIBUTES inherited{sizeof inherited, nullptr, TRUE};
    const FileHandle output(CreateFileW(log_.c_str(), FILE_APPEND_DATA, FILE_SHARE_READ | FILE_SHARE_WRITE,
                                        &inherited, CREATE_ALWAYS, 0, nullptr));
    STARTUPINFOW start{};
    start.cb = sizeof start;
    start.dwFlags = STARTF_USESTDHANDLES;
    start.hStdOutput = start.hStdError = output.get();
    std::wstring command = L"\"" + filePath(SOLVANE_BIN "/SolvaneHost.exe").wstring() + L"\" " + arguments;
    PROCESS_INFORMATION started{};
    EXPECT_TRUE(CreateProcessW(nullptr, command.data(), nullptr, nullptr, TRUE, 0, nullptr, nullptr, &start,
                               &started));
    const Handle thread(started.hThread);
    process_.reset(started.hProcess);
    threadId_ = started.dwThreadId;
}

Outcome HostProgram::wait() {
    Outcome outcome;
    std::string error;
    EXPECT_EQ(WaitForSingleObject(process_.get(), 60'000), WAIT_OBJECT_0);
    GetExitCodeProcess(process_.get(), &outcome.exitCode);
    EXPECT_TRUE(readFile(log_, outcome.printed, error)) << error;
    DeleteFileW(log_.c_str());
    return outcome;
}

} // namespace solvane::host
