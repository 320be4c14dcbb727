#include "ClientWatch.h"

#include "com/Wine.h"

#include <objbase.h>

#include <tlhelp32.h>

#include <thread>

namespace solvane::engine {

namespace {

/// Null where the parent has ended already.
Handle openParent() {
    const FileHandle snapshot(CreateToolhelp32Snapshot(TH32CS_SNAPPROCESS, 0));
    PROCESSENTRY32W entry{};
    entry.dwSize = sizeof entry;
    for (BOOL more = Process32FirstW(snapshot.get(), &entry); more;
         more = Process32NextW(snapshot.get(), &entry))
        if (entry.th32ProcessID == GetCurrentProcessId())
            return Handle(OpenProcess(SYNCHRONIZE, FALSE, entry.th32ParentProcessID));
    return {};
}

/// The process on whose behalf COM called this thread. Null if it is unknown, as under Wine, or is this one.
Handle openCaller() {
    DWORD thread = 0;
    if (FAILED(CoGetCallerTID(&thread)))
        return {};
    const Handle calling(OpenThread(THREAD_QUERY_LIMITED_INFORMATION, FALSE, thread));
    const DWORD process = calling ? GetProcessIdOfThread(calling.get()) : 0;
    if (process == 0 || process == GetCurrentProcessId())
        return {};
    return Handle(OpenProcess(SYNCHRONIZE, FALSE, process));
}

/// Runs while the main thread may wait for a script that never ends.
void endNow(void (*cleanUp)()) {
    if (cleanUp)
        cleanUp();
    ExitProcess(0);
}

} // namespace

CallerWatch::CallerWatch(void (*cleanUp)()) : cleanUp_(cleanUp), caller_(openCaller()) {
    if (caller_ && !RegisterWaitForSingleObject(&wait_, caller_.get(), callerHasEnded, this, INFINITE,
                                                WT_EXECUTEONLYONCE))
        wait_ = nullptr;
}

void CALLBACK CallerWatch::callerHasEnded(void* watch, BOOLEAN) {
    endNow(static_cast<CallerWatch*>(watch)->cleanUp_);
}

CallerWatch::~CallerWatch() {
    if (wait_)
        UnregisterWaitEx(wait_, INVALID_HANDLE_VALUE);
}

void endWithClient(void (*cleanUp)()) {
    if (!isWine())
        return;
    std::thread([cleanUp, client = openParent()] {
        if (client)
            WaitForSingleObject(client.get(), INFINITE);
        endNow(cleanUp);
    }).detach();
}

} // namespace solvane::engine
