#include "Program.h"

#include "Folders.h"

#include <gtest/gtest.h>

namespace solvane {

namespace {

std::wstring ownProgram() {
    std::wstring program(1024, L'\0');
    program.resize(GetModuleFileNameW(nullptr, program.data(), static_cast<DWORD>(program.size())));
    return program;
}

} // namespace

std::wstring builtFile(const std::wstring& name) {
    const std::wstring program = ownProgram();
    const std::wstring tests = program.substr(0, program.rfind(L'\\'));
    return tests.substr(0, tests.rfind(L'\\')) + L"\\bin\\" + name;
}

Program::Program(std::wstring commandLine, const wchar_t* file) {
    static int count = 0;
    log_ = ownProgram() + L"-" + std::to_wstring(GetCurrentProcessId()) + L"-" + std::to_wstring(++count) +
           L".txt";
    SECURITY_ATTRIBUTES inherited{sizeof inherited, nullptr, TRUE};
    const FileHandle output(CreateFileW(log_.c_str(), FILE_APPEND_DATA, FILE_SHARE_READ | FILE_SHARE_WRITE,
                                        &inherited, CREATE_ALWAYS, 0, nullptr));
    STARTUPINFOW start{};
    start.cb = sizeof start;
    start.dwFlags = STARTF_USESTDHANDLES;
    start.hStdOutput = start.hStdError = output.get();
    PROCESS_INFORMATION started{};
    // Wine loses a new process now and then, before it runs: twice in some thousand starts.
    BOOL isStarted = FALSE;
    for (int attempt = 0; !isStarted && attempt < 3; ++attempt) {
        isStarted = CreateProcessW(file, commandLine.data(), nullptr, nullptr, TRUE, 0, nullptr, nullptr,
                                   &start, &started);
        if (!isStarted && GetLastError() != ERROR_INTERNAL_ERROR)
            break;
    }
    EXPECT_TRUE(isStarted) << "error " << GetLastError();
    const Handle thread(started.hThread);
    process_.reset(started.hProcess);
    threadId_ = started.dwThreadId;
}

Outcome Program::wait() {
    Outcome outcome;
    EXPECT_EQ(WaitForSingleObject(process_.get(), 60'000), WAIT_OBJECT_0);
    GetExitCodeProcess(process_.get(), &outcome.exitCode);
    outcome.printed = readFile(log_);
    DeleteFileW(log_.c_str());
    return outcome;
}

} // namespace solvane
