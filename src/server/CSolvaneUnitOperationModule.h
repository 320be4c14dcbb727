#pragma once

#include "com/ClassFactory.h"
#include "com/Module.h"

#include <span>

namespace solvane {

/// One class that can be reached through DllGetClassObject.
struct ObjectMapEntry {
    const CLSID* classId;
    /// Writes or removes what the registry says of the class; null where it says nothing.
    HRESULT (*updateRegistry)(bool registering);
    InstanceCreator createInstance;
    void* cachedFactory; ///< encoded; made on first demand and kept to the module's unload
};

/// The module: its identity, its object map and what it does at load and unload. Made at load.
class CSolvaneUnitOperationModule : public ComModule {
public:
    /// Frees the cached class factories.
    ~CSolvaneUnitOperationModule();

    /// What is done once at process attach.
    void attach(HINSTANCE moduleInstance);

    /// False until attach has succeeded.
    bool isInitialized() const { return isInitialized_; }
    std::span<ObjectMapEntry> objectMap();

    HRESULT getClassObject(REFCLSID classId, REFIID iid, void** result);

private:
    bool isInitialized_ = false;
};

CSolvaneUnitOperationModule& theModule();

} // namespace solvane
