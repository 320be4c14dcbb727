#include "ProcessGroup.h"

#include <windows.h>

#include <cstdlib>

namespace solvane::engine {

namespace {

// Open until the process ends.
HANDLE job = nullptr;

} // namespace

void formProcessGroup() {
    job = CreateJobObjectW(nullptr, nullptr);
    if (job && !AssignProcessToJobObject(job, GetCurrentProcess()))
        job = nullptr; // Windows 7 allows a process only one job
}

void endProcessGroup() {
    if (job)
        TerminateJobObject(job, 1);
    std::_Exit(1);
}

} // namespace solvane::engine
