#pragma once

#include "HostCommands.h"
#include "results/RunResults.h"
#include "results/TableUnits.h"

#include <string>

namespace solvane::host {

/// Removes a result file of an earlier run, if there is one. False with a text that names the file.
bool removeOldFile(const std::string& path, std::string& error);

/// Removes the result files of an earlier run, so that none is taken for this run's. False with a text that
/// names the file.
bool removeOldResults(const RunOptions& options, std::string& error);

/// Writes the files that the options name. False with a text that names the file.
bool writeResultFiles(const RunOptions& options, const RunResults& results, const TableUnits& units,
                      std::string& error);

} // namespace solvane::host
