/// The unit's private folder in the system's temporary folder, in which Matlab works during a run.
#pragma once

#include <string>

namespace solvane {

class CSolvaneUnitOp;

// Resources of type "MatlabFILE".
inline constexpr int runScriptResource = 204;
inline constexpr int defaultScriptResource = 206;

/// Makes the folder, named after the unit's id, and sets `workingFolder` and `workingFolderHold`. From here
/// on the unit has to be terminated. Folders of units whose process has ended without a Terminate go on this
/// occasion.
bool createWorkingFolder(CSolvaneUnitOp& unit, std::string& error);

/// Deletes the folder's files and the folder. A sub-folder stays and keeps the folder.
void deleteWorkingFolder(CSolvaneUnitOp& unit);

/// Writes a resource's bytes unchanged to a file of the working folder.
bool placeResourceFile(const CSolvaneUnitOp& unit, int resourceId, const std::string& fileName,
                       std::string& error);

} // namespace solvane
