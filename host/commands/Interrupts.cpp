#include "Interrupts.h"

#include "Console.h"

#include <mutex>

namespace solvane::host {

namespace {

std::mutex lock;             // guards what follows: the system calls the handler on a thread of its own
RunWatch* watched = nullptr; // null while no run can be stopped
bool isInterrupted = false;

void interrupt() {
    const std::lock_guard guard(lock);
    if (!watched || isInterrupted)
        TerminateProcess(GetCurrentProcess(), interrupted);
    isInterrupted = true;
    watched->requestStop();
}

BOOL WINAPI handle(DWORD event) {
    interrupt();
    // The system ends the program when this returns from the closing of the console; the run needs the time.
    if (event != CTRL_C_EVENT && event != CTRL_BREAK_EVENT)
        Sleep(INFINITE);
    return TRUE;
}

} // namespace

Interrupts::Interrupts(RunWatch& watch) {
    {
        const std::lock_guard guard(lock);
        watched = &watch;
        isInterrupted = false;
    }
    SetConsoleCtrlHandler(handle, TRUE);
}

Interrupts::~Interrupts() {
    SetConsoleCtrlHandler(handle, FALSE);
    const std::lock_guard guard(lock);
    watched = nullptr;
}

} // namespace solvane::host
