#include "CSolvaneUnitOperationModule.h"

#include "Registration.h"
#include "com/ComRef.h"
#include "unit/CSolvaneUnitOp.h"
#include "unit/ClassIds.h"

#include <commctrl.h>

#include <array>
#include <mutex>

namespace solvane {

namespace {

std::array<ObjectMapEntry, 4> entries{{
    {&portClass, nullptr, createInstance<CPort>, nullptr},
    {&parameterCollectionClass, nullptr, createInstance<CParameterCollection>, nullptr},
    {&parameterClass, nullptr, createInstance<CParameter>, nullptr},
    {&solvaneUnitOpClass, updateUnitRegistry, createInstance<CSolvaneUnitOp>, nullptr},
}};

} // namespace

CSolvaneUnitOperationModule& theModule() {
    static CSolvaneUnitOperationModule module;
    return module;
}

void CSolvaneUnitOperationModule::attach(HINSTANCE moduleInstance) {
    instance = moduleInstance;
    const INITCOMMONCONTROLSEX controls{sizeof controls, ICC_LISTVIEW_CLASSES | ICC_TAB_CLASSES};
    InitCommonControlsEx(&controls);
    LoadLibraryW(L"riched32.dll");
    isInitialized_ = true;
}

CSolvaneUnitOperationModule::~CSolvaneUnitOperationModule() {
    for (ObjectMapEntry& entry : entries)
        if (void* factory = std::exchange(entry.cachedFactory, nullptr))
            ComRef<IUnknown>::adopt(static_cast<IUnknown*>(DecodePointer(factory))).reset();
}

std::span<ObjectMapEntry> CSolvaneUnitOperationModule::objectMap() {
    return entries;
}

HRESULT CSolvaneUnitOperationModule::getClassObject(REFCLSID classId, REFIID iid, void** result) {
    if (!result)
        return E_POINTER;
    *result = nullptr;
    if (!isInitialized_)
        return E_UNEXPECTED;
    for (ObjectMapEntry& entry : entries) {
        if (*entry.classId != classId)
            continue;
        {
            const std::lock_guard guard(factoryLock());
            if (!entry.cachedFactory) {
                ComRef<IUnknown> factory;
                const HRESULT created = createClassFactory(entry.createInstance, factory.putVoid());
                if (FAILED(created))
                    return created;
                entry.cachedFactory = EncodePointer(factory.release());
            }
        }
        return static_cast<IUnknown*>(DecodePointer(entry.cachedFactory))->QueryInterface(iid, result);
    }
    return CLASS_E_CLASSNOTAVAILABLE;
}

} // namespace solvane
