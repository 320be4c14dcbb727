/// The unit's model as a saved flowsheet stores it: named values in a property bag.
#pragma once

#include "cases/CaseModel.h"
#include "com/ComRef.h"

#include <oaidl.h>

#include <string>
#include <vector>

namespace solvane::host {

/// An empty bag, for a unit to save itself into.
ComRef<IPropertyBag> createBag();

/// A bag with a model under the unit's keys, and the ports that the case connects. What the model lacks has
/// no key.
ComRef<IPropertyBag> createModelBag(const UnitModel& model, const UnitCase& unit);

/// A log that adds the faults of a load, as "key: text", to `entries`, which must outlive it.
ComRef<IErrorLog> createErrorLog(std::vector<std::string>& entries);

} // namespace solvane::host
