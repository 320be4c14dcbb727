/// The model as named values in a bag of the host's: every part of the model under a key of its own, files as
/// text or bytes.
#pragma once

#include <windows.h>

#include <oaidl.h>

namespace solvane {

class Unit;

/// The results are those of IPersistPropertyBag's operations; texts are stored on the unit. What is wrong
/// with a parameter or a file is told to the host's log, and the rest is loaded.
HRESULT saveToBag(Unit& unit, IPropertyBag* bag);
HRESULT loadFromBag(Unit& unit, IPropertyBag* bag, IErrorLog* errorLog);

} // namespace solvane
