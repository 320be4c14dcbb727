#include "WorkerProcess.h"

#include "com/CapeError.h"
#include "com/Text.h"

#include <array>

namespace solvane::host {

namespace {

/// A worker that has nothing to calculate ends its Matlab in this time.
constexpr DWORD patience = 10'000;

std::wstring ownPath() {
    std::wstring path(32767, L'\0');
    path.resize(GetModuleFileNameW(nullptr, path.data(), static_cast<DWORD>(path.size())));
    return path;
}

/// A pipe whose one end the next process inherits.
bool makePipe(Handle& own, Handle& inherited, bool ownWrites) {
    SECURITY_ATTRIBUTES attributes{sizeof attributes, nullptr, TRUE};
    Handle& reading = ownWrites ? inherited : own;
    Handle& writing = ownWrites ? own : inherited;
    return CreatePipe(reading.put(), writing.put(), &attributes, 0) &&
           SetHandleInformation(own.get(), HANDLE_FLAG_INHERIT, 0);
}

} // namespace

WorkerProcess::~WorkerProcess() {
    if (!process_)
        return;
    input_.reset();
    if (WaitForSingleObject(process_.get(), patience) == WAIT_TIMEOUT)
        terminate();
}

bool WorkerProcess::start(const std::wstring& arguments, std::string& error) {
    Handle theirInput, theirOutput;
    STARTUPINFOW startup{};
    PROCESS_INFORMATION started{};
    startup.cb = sizeof startup;
    startup.dwFlags = STARTF_USESTDHANDLES;
    std::wstring commandLine = L"\"" + ownPath() + L"\" " + arguments;
    bool succeeded = makePipe(input_, theirInput, true) && makePipe(output_, theirOutput, false);
    if (succeeded) {
        startup.hStdInput = theirInput.get();
        startup.hStdOutput = theirOutput.get();
        startup.hStdError = GetStdHandle(STD_ERROR_HANDLE);
        succeeded = CreateProcessW(nullptr, commandLine.data(), nullptr, nullptr, TRUE, 0, nullptr, nullptr,
                                   &startup, &started);
    }
    if (!succeeded) {
        error = "a process for the calculations cannot be started: " +
                narrow(FormatHresultText(static_cast<HRESULT>(GetLastError())), CP_UTF8);
        return false;
    }
    const Handle thread(started.hThread);
    process_.reset(started.hProcess);
    return true;
}

bool WorkerProcess::ask(const std::string& line, std::string& answer) {
    DWORD count = 0;
    if (!WriteFile(input_.get(), line.data(), static_cast<DWORD>(line.size()), &count, nullptr) ||
        count != line.size())
        return false;
    std::size_t end;
    while ((end = received_.find('\n')) == std::string::npos) {
        std::array<char, 65536> block;
        if (!ReadFile(output_.get(), block.data(), static_cast<DWORD>(block.size()), &count, nullptr) ||
            count == 0)
            return false;
        received_.append(block.data(), count);
    }
    answer = received_.substr(0, end);
    received_.erase(0, end + 1);
    return true;
}

void WorkerProcess::terminate() {
    TerminateProcess(process_.get(), 1);
}

} // namespace solvane::host
