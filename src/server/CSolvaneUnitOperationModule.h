#pragma once

#include "com/ClassFactory.h"
#include "com/Module.h"

#include <span>

namespace solvane {

/// One class that can be reached through DllGetClassObject.
struct ObjectMapEntry {
    const CLSID* classId;
    /// Writes or removes the class's registry entries; null if it has none.
    HRESULT (*updateRegistry)(bool registering);
    InstanceCreator createInstance;
    void* cachedFactory; ///< encoded; created on first use and kept until the module unloads
};

/// The module: its identity, its object map and what it does at load and unload. Created at load.
class CSolvaneUnitOperationModule : public ComModule {
public:
    /// Frees the cached class factories.
    ~CSolvaneUnitOperationModule();

    /// Runs once, at process attach.
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
