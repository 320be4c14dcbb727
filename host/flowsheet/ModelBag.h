/// The unit's model as a saved flowsheet keeps it: named values in a property bag.
#pragma once

#include "cases/CaseModel.h"
#include "com/ComRef.h"

#include <oaidl.h>

#include <string>
#include <vector>

namespace solvane::host {

/// A bag with the case's model under the unit's keys. What the case leaves out has no key.
ComRef<IPropertyBag> createModelBag(const Case& flowsheet);

/// A log that adds what a load finds wrong, as "key: text", to `entries`, which must outlive it.
ComRef<IErrorLog> createErrorLog(std::vector<std::string>& entries);

} // namespace solvane::host
