#include "MatlabCreation.h"

#include "com/Handle.h"
#include "com/Registry.h"
#include "com/Wine.h"

#include <iterator>
#include <string>

namespace solvane {

namespace {

constexpr wchar_t mutexName[] = L"SolvaneUnitOperationStartMutex";
// COM itself abandons a server after half a minute: a unit that holds the mutex longer hangs.
constexpr DWORD patience = 45'000; // milliseconds
// The engine registers itself before it waits for Octave. With COM's half a minute it stays within the
// patience.
constexpr DWORD startTimeout = 15'000; // milliseconds

constexpr wchar_t engineProgram[] = L"OctaveAutomationServer.exe";

/// The command that starts the class's server, if that is GNU Octave's; otherwise empty.
std::wstring engineCommand(REFCLSID classId) {
    wchar_t id[39];
    StringFromGUID2(classId, id, static_cast<int>(std::size(id)));
    const auto command =
        readRegistryString(HKEY_CLASSES_ROOT, std::wstring(L"CLSID\\") + id + L"\\LocalServer32", L"");
    return command && command->find(engineProgram) != std::wstring::npos ? *command + L" -Embedding" : L"";
}

/// COM would do it, but on Wine looks only once a second whether the server is there.
void startEngine(REFCLSID classId) {
    std::wstring command = engineCommand(classId);
    STARTUPINFOW startup{};
    startup.cb = sizeof startup;
    PROCESS_INFORMATION started{};
    if (command.empty() || !CreateProcessW(nullptr, command.data(), nullptr, nullptr, FALSE, DETACHED_PROCESS,
                                           nullptr, nullptr, &startup, &started))
        return; // COM finds out why
    const Handle process(started.hProcess);
    const Handle thread(started.hThread);
    WaitForInputIdle(process.get(), startTimeout); // after its registration
}

HRESULT create(REFCLSID classId, ComRef<IDispatch>& application) {
    constexpr DWORD anywhere =
        CLSCTX_INPROC_SERVER | CLSCTX_INPROC_HANDLER | CLSCTX_LOCAL_SERVER | CLSCTX_REMOTE_SERVER;
    return CoCreateInstance(classId, nullptr, anywhere, IID_IDispatch, application.putVoid());
}

} // namespace

HRESULT createMatlabApplication(REFCLSID classId, ComRef<IDispatch>& application) {
    if (!isWine())
        return create(classId, application);
    // Wine's COM passes a server that one process has started to whichever process asks first, and leaves the
    // other without one. It also returns, once, a server that was killed before it could serve.
    const Handle mutex(CreateMutexW(nullptr, FALSE, mutexName));
    const MutexHold turn(mutex.get(), patience);
    startEngine(classId);
    const HRESULT created = create(classId, application);
    return created == REGDB_E_CLASSNOTREG ? create(classId, application) : created;
}

} // namespace solvane
