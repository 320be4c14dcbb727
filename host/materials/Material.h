/// Materials: the COM objects that a unit connects to, of either generation, on a shared stream state.
#pragma once

#include "Generation.h"
#include "StreamState.h"
#include "com/ComRef.h"

#include <oaidl.h>

#include <memory>
#include <string>

namespace solvane::host {

/// Creates a material of that generation with the values of `state`. Like the unit, it lives in one
/// apartment.
ComRef<IDispatch> createMaterial(Generation generation, std::shared_ptr<StreamState> state,
                                 std::wstring name);

} // namespace solvane::host
