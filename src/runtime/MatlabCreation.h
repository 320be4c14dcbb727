#pragma once

#include "com/ComRef.h"

#include <oaidl.h>

namespace solvane {

/// Creates Matlab's automation object, for which COM may start a process.
HRESULT createMatlabApplication(REFCLSID classId, ComRef<IDispatch>& application);

} // namespace solvane
