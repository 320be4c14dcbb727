#include "DiscardedModel.h"

#include "unit/CSolvaneUnitOp.h"

#include <utility>

namespace solvane {

void discardModel(CSolvaneUnitOp& unit) {
    unit.scriptDirty = true;
    unit.echoLevel = 0;
    unit.valStatus = CAPE_NOT_VALIDATED;
    unit.releaseParameters();
    unit.releasePorts();
    for (const std::string& name : std::exchange(unit.additionalFiles, {})) {
        const std::string path = unit.workingFolder + name;
        SetFileAttributesA(path.c_str(), FILE_ATTRIBUTE_NORMAL); // a read-only file stays otherwise
        DeleteFileA(path.c_str());
    }
}

} // namespace solvane
