#include "ClientWatch.h"

#include "com/Wine.h"

#include <objbase.h>

#include <tlhelp32.h>

#include <thread>

namespace solvane::engine {

namespace {

/// 0 if it is unknown.
DWORD findParent() {
    const FileHandle snapshot(CreateToolhelp32Snapshot(TH32CS_SNAPPROCESS, 0));
    PROCESSENTRY32W entry{};
    entry.dwSize = sizeof entry;
    for (BOOL more = Process32FirstW(snapshot.get(), &entry); more;
         more = Process32NextW(snapshot.get(), &entry))
        if (entry.th32ProcessID == GetCurrentProcessId())
            return entry.th32ParentProcessID;
    return 0;
}

/// The process on whose behalf COM called this thread. 0 if it is unknown, as under Wine, or is this one.
DWORD findCaller() {
    DWORD thread = 0;
    if (FAILED(CoGetCallerTID(&thread)))
        return 0;
    const Handle calling(OpenThread(THREAD_QUERY_LIMITED_INFORMATION, FALSE, thread));
    const DWORD process = calling ? GetProcessIdOfThread(calling.get()) : 0;
    return process == GetCurrentProcessId() ? 0 : process;
}

/// Null if it has ended already.
Handle openProcess(DWORD process) {
    return Handle(process == 0 ? nullptr : OpenProcess(SYNCHRONIZE, FALSE, process));
}

/// Runs while the main thread may wait for a script that never ends.
void endNow(void (*cleanUp)()) {
    if (cleanUp)
        cleanUp();
    ExitProcess(0);
}

} // namespace

DWORD clientProcess() {
    static const DWORD parent = isWine() ? findParent() : 0;
    return parent != 0 ? parent : findCaller();
}

CallerWatch::CallerWatch(void (*cleanUp)()) : cleanUp_(cleanUp), caller_(openProcess(findCaller())) {
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
    std::thread([cleanUp, client = openProcess(findParent())] {
        if (client)
            WaitForSingleObject(client.get(), INFINITE);
        endNow(cleanUp);
    }).detach();
}

} // namespace solvane::engine
