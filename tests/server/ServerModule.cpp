#include "ServerModule.h"

#include "unit/ClassIds.h"

#include <stdexcept>

namespace solvane {

ServerModule::ServerModule(const std::wstring& path) : library_(LoadLibraryW(path.c_str())) {
    if (!library_)
        throw std::runtime_error("SolvaneUnitOperation.dll can't be loaded");
}

HRESULT ServerModule::call(const char* name) const {
    using Function = HRESULT(WINAPI*)();
    return reinterpret_cast<Function>(reinterpret_cast<void*>(GetProcAddress(library_, name)))();
}

HRESULT ServerModule::getClassObject(REFCLSID classId, REFIID iid, void** result) const {
    using Function = HRESULT(WINAPI*)(REFCLSID, REFIID, void**);
    void* const address = reinterpret_cast<void*>(GetProcAddress(library_, "DllGetClassObject"));
    return reinterpret_cast<Function>(address)(classId, iid, result);
}

ComRef<IClassFactory> ServerModule::factory(REFCLSID classId) const {
    ComRef<IClassFactory> result;
    getClassObject(classId, IID_IClassFactory, result.putVoid());
    return result;
}

const std::vector<NamedClass>& allClasses() {
    static const std::vector<NamedClass> classes{
        {"CPort", portClass},
        {"CParameterCollection", parameterCollectionClass},
        {"CParameter", parameterClass},
        {"CSolvaneUnitOp", solvaneUnitOpClass},
    };
    return classes;
}

} // namespace solvane
