// The entry points of the module.

#include "CSolvaneUnitOperationModule.h"
#include "Registration.h"
#include "com/Border.h"

using namespace solvane;

extern "C" {

BOOL WINAPI DllMain(HINSTANCE instance, DWORD reason, LPVOID) {
    if (reason == DLL_PROCESS_ATTACH)
        theModule().attach(instance);
    return theModule().isInitialized();
}

STDAPI DllCanUnloadNow() {
    return theModule().lockCount() == 0 ? S_OK : S_FALSE;
}

STDAPI DllGetClassObject(REFCLSID classId, REFIID iid, void** result) {
    return border([&] { return theModule().getClassObject(classId, iid, result); });
}

STDAPI DllRegisterServer() {
    return border([] { return registerServer(); });
}

STDAPI DllUnregisterServer() {
    return border([] { return unregisterServer(); });
}
}
