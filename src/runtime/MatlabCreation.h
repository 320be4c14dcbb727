#pragma once

#include "com/ComRef.h"

#include <oaidl.h>

namespace solvane {

/// Creates Matlab's automation object, the process of its own that COM starts for it included.
HRESULT createMatlabApplication(REFCLSID classId, ComRef<IDispatch>& application);

} // namespace solvane
