/// The model as named values in the host's property bag: each part of the model has its own key, and files
/// are text or bytes.
#pragma once

#include <windows.h>

#include <oaidl.h>

namespace solvane {

class Unit;

/// Return the results of IPersistPropertyBag's operations and store error texts on the unit. Faults of a
/// parameter or a file go to the host's log, and loading continues.
HRESULT saveToBag(Unit& unit, IPropertyBag* bag);
HRESULT loadFromBag(Unit& unit, IPropertyBag* bag, IErrorLog* errorLog);

} // namespace solvane
