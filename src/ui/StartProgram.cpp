#include "StartProgram.h"

namespace solvane {

Handle startProgram(std::wstring command, const std::wstring& folder, bool inheritsHandles) {
    STARTUPINFOW start{};
    start.cb = sizeof start;
    PROCESS_INFORMATION started{};
    // The system writes into the command.
    if (!CreateProcessW(nullptr, command.data(), nullptr, nullptr, inheritsHandles ? TRUE : FALSE, 0, nullptr,
                        folder.c_str(), &start, &started))
        return {};
    Handle process(started.hProcess);
    const Handle thread(started.hThread);
    constexpr DWORD patience = 100; // ms
    WaitForInputIdle(process.get(), patience);
    return process;
}

} // namespace solvane
