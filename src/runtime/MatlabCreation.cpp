#include "MatlabCreation.h"

#include "com/Handle.h"
#include "com/Wine.h"

namespace solvane {

namespace {

constexpr wchar_t mutexName[] = L"SolvaneUnitOperationStartMutex";
// COM itself abandons a server after half a minute: a unit that holds the mutex longer hangs.
constexpr DWORD patience = 45'000; // milliseconds

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
    const HRESULT created = create(classId, application);
    return created == REGDB_E_CLASSNOTREG ? create(classId, application) : created;
}

} // namespace solvane
