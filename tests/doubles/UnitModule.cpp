#include "UnitModule.h"

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
    std::wstring program(1024, L'\0');
    program.resize(GetModuleFileNameW(nullptr, program.data(), static_cast<DWORD>(program.size())));
    const std::wstring tests = program.substr(0, program.rfind(L'\\'));
    return tests.substr(0, tests.rfind(L'\\')) + L"\\bin\\SolvaneUnitOperation.dll";
}

} // namespace solvane
