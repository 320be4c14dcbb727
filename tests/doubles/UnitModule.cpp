#include "UnitModule.h"

#include "unit/ClassIds.h"

#include <unknwn.h>

#include <stdexcept>

namespace solvane {

UnitModule::UnitModule(const std::wstring& path) : library_(LoadLibraryW(path.c_str())) {
    if (!library_)
        throw std::runtime_error("SolvaneUnitOperation.dll can't be loaded");
}

ComRef<IUnknown> UnitModule::createUnit() const {
    using GetClassObject = HRESULT(WINAPI*)(REFCLSID, REFIID, void**);
    const auto getClassObject = reinterpret_cast<GetClassObject>(
        reinterpret_cast<void*>(GetProcAddress(library_.get(), "DllGetClassObject")));
    ComRef<IClassFactory> factory;
    ComRef<IUnknown> unit;
    if (getClassObject && SUCCEEDED(getClassObject(solvaneUnitOpClass, IID_IClassFactory, factory.putVoid())))
        factory->CreateInstance(nullptr, IID_IUnknown, unit.putVoid());
    return unit;
}

std::wstring UnitModule::builtPath() {
    std::wstring program(1024, L'\0');
    program.resize(GetModuleFileNameW(nullptr, program.data(), static_cast<DWORD>(program.size())));
    const std::wstring tests = program.substr(0, program.rfind(L'\\'));
    return tests.substr(0, tests.rfind(L'\\')) + L"\\bin\\SolvaneUnitOperation.dll";
}

} // namespace solvane
