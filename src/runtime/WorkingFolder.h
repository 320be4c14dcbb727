/// The unit's private folder in the system's temporary folder, in which Matlab works during a run.
#pragma once

#include <string>

namespace solvane {

class CSolvaneUnitOp;

// Resources of type "MatlabFILE".
inline constexpr int runScriptResource = 204;
inline constexpr int defaultScriptResource = 206;

/// Makes the folder, named after the unit's id, and sets `workingFolder` and `workingFolderHold`. From here
/// on the unit has to be terminated. Folders that former units left behind go on this occasion.
bool createWorkingFolder(CSolvaneUnitOp& unit, std::string& error);

/// Makes the folder and its two scripts anew where somebody has removed them, such as a cleaner of disks.
bool restoreWorkingFolder(CSolvaneUnitOp& unit, std::string& error);

/// Deletes the folder's files and the folder. A sub-folder stays and keeps the folder until a next unit
/// starts.
void deleteWorkingFolder(CSolvaneUnitOp& unit);

/// Writes a resource's bytes unchanged to a file of the working folder.
bool placeResourceFile(const CSolvaneUnitOp& unit, int resourceId, const std::string& fileName,
                       std::string& error);

} // namespace solvane
