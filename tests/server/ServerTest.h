#pragma once

#include "CapeOpen.h"
#include "HostTest.h"
#include "unit/ClassIds.h"

namespace solvane {

using ServerTest = HostTest;

/// The classes of the object map, with their names.
struct NamedClass {
    const char* name;
    CLSID id;
};
inline const NamedClass allClasses[] = {
    {"CPort", portClass},
    {"CParameterCollection", parameterCollectionClass},
    {"CParameter", parameterClass},
    {"CSolvaneUnitOp", solvaneUnitOpClass},
};

} // namespace solvane
