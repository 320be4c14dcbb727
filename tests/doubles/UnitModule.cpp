#include "UnitModule.h"

#include "Program.h"
#include "unit/ClassIds.h"

#include <unknwn.h>

#include <stdexcept>

namespace solvane {

UnitModule::UnitModule(const std::wstring& path) : library_(LoadLibraryW(path.c_str())) {
    if (!library_)
        throw std::runtime_error("SolvaneUnitOperation.dll can't be loaded");
}

HRESULT UnitModule::call(const char* name) const {
    return entryPoint<HRESULT WINAPI()>(name)();
}

HRESULT UnitModule::getClassObject(REFCLSID classId, REFIID iid, void** result) const {
    return entryPoint<HRESULT WINAPI(REFCLSID, REFIID, void**)>("DllGetClassObject")(classId, iid, result);
}

ComRef<IClassFactory> UnitModule::factory(REFCLSID classId) const {
    ComRef<IClassFactory> result;
    getClassObject(classId, IID_IClassFactory, result.putVoid());
    return result;
}

ComRef<IUnknown> UnitModule::createUnit() const {
    return create(solvaneUnitOpClass);
}

std::wstring UnitModule::builtPath() {
    return builtFile(L"SolvaneUnitOperation.dll");
}

} // namespace solvane
