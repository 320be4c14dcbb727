/// The steps of the check. Each fault comes with a remedy.
#pragma once

#include "Checks.h"

namespace solvane::host {

inline constexpr char filesAgain[] = "Put all of the unit's files into their folder again.";

// The unit's registration and module, UnitChecks.cpp.
Finding lookAtUnitClass(Machine& machine);
Finding lookAtCategories(Machine& machine);
Finding lookAtModule(Machine& machine);
Finding lookAtUnitTypeLibrary(Machine& machine);
Finding lookAtInterfaces(Machine& machine);

Finding lookAtTemporaryFolder(Machine& machine);

// What is registered as Matlab, EngineChecks.cpp.
Finding lookAtEngineClass(Machine& machine);
Finding startEngine(Machine& machine);
Finding lookAtEnginePath(Machine& machine);

/// What the unit supplies to the engine: the gateway's build and the functions for scripts.
Finding lookAtEngineFiles(Machine& machine);

// The unit at work, RunChecks.cpp.
Finding startUnit(Machine& machine);
Finding runUnit(Machine& machine);

} // namespace solvane::host
