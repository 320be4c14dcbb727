#include "ClientWatch.h"

#include "com/Handle.h"
#include "com/Wine.h"

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

} // namespace

void endWithClient(void (*cleanUp)()) {
    if (!isWine())
        return;
    std::thread([cleanUp, client = openParent()] {
        if (client)
            WaitForSingleObject(client.get(), INFINITE);
        // The main thread may be waiting for a script that never ends.
        if (cleanUp)
            cleanUp();
        ExitProcess(0);
    }).detach();
}

} // namespace solvane::engine
