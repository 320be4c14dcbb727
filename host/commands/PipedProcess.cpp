#include "PipedProcess.h"

#include "com/CapeError.h"
#include "com/Text.h"

#include <array>

namespace solvane::host {

namespace {

/// A pipe whose one end the next process inherits.
bool makePipe(Handle& own, Handle& inherited, bool ownWrites) {
    SECURITY_ATTRIBUTES attributes{sizeof attributes, nullptr, TRUE};
    Handle& reading = ownWrites ? inherited : own;
    Handle& writing = ownWrites ? own : inherited;
    return CreatePipe(reading.put(), writing.put(), &attributes, 0) &&
           SetHandleInformation(own.get(), HANDLE_FLAG_INHERIT, 0);
}

} // namespace

bool PipedProcess::start(const std::filesystem::path& program, std::wstring commandLine, std::string& error) {
    Handle theirInput, theirOutput;
    STARTUPINFOW startup{};
    PROCESS_INFORMATION started{};
    startup.cb = sizeof startup;
    startup.dwFlags = STARTF_USESTDHANDLES;
    bool succeeded = makePipe(input_, theirInput, true) && makePipe(output_, theirOutput, false);
    if (succeeded) {
        startup.hStdInput = theirInput.get();
        startup.hStdOutput = theirOutput.get();
        startup.hStdError = GetStdHandle(STD_ERROR_HANDLE);
        succeeded = CreateProcessW(program.c_str(), commandLine.data(), nullptr, nullptr, TRUE, 0, nullptr,
                                   nullptr, &startup, &started);
    }
    if (!succeeded) {
        error = narrow(program.wstring() + L" cannot be started: " +
                           FormatHresultText(HRESULT_FROM_WIN32(GetLastError())),
                       CP_UTF8);
        return false;
    }
    const Handle thread(started.hThread);
    process_.reset(started.hProcess);
    return true;
}

bool PipedProcess::write(const std::string& text) {
    DWORD count = 0;
    return WriteFile(input_.get(), text.data(), static_cast<DWORD>(text.size()), &count, nullptr) &&
           count == text.size();
}

bool PipedProcess::read(std::string& text) {
    std::array<char, 65536> block;
    DWORD count = 0;
    if (!ReadFile(output_.get(), block.data(), static_cast<DWORD>(block.size()), &count, nullptr) ||
        count == 0)
        return false;
    text.append(block.data(), count);
    return true;
}

bool PipedProcess::waitForEnd(DWORD milliseconds) const {
    return WaitForSingleObject(process_.get(), milliseconds) == WAIT_OBJECT_0;
}

} // namespace solvane::host
