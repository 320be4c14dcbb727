#include "Checks.h"

#include "Steps.h"

#include <array>

namespace solvane::host {

std::span<const Check> checks() {
    static const std::array table{
        Check{"unit class", lookAtUnitClass, {}},
        Check{"unit description", lookAtCategories, {"unit class"}},
        Check{"unit module", lookAtModule, {"unit class"}},
        Check{"unit type library", lookAtUnitTypeLibrary, {"unit class"}},
        Check{"CAPE-OPEN interfaces", lookAtInterfaces, {}},
        Check{"temporary folder", lookAtTemporaryFolder, {}},
        Check{"engine class", lookAtEngineClass, {}},
        Check{"engine start", startEngine, {"temporary folder", "engine class"}},
        Check{"engine files", lookAtEngineFiles, {"unit class", "engine start"}},
        Check{"engine path", lookAtEnginePath, {"unit class", "temporary folder", "engine start"}},
        Check{"unit start", startUnit, {"unit module", "engine path"}},
        Check{"run", runUnit, {"engine files", "unit start"}},
    };
    return table;
}

} // namespace solvane::host
