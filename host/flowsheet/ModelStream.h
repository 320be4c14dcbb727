/// Model files: what a unit writes into a host's stream, without the length at its start.
#pragma once

#include "CapeOpen.h"
#include "cases/CaseModel.h"

#include <string>

namespace solvane::host {

/// Loads a model file into the unit by its IPersistStream, as a host restores a saved flowsheet. False with a
/// text that names the file.
bool loadModelFile(ICapeUnit* unit, const ModelFile& file, std::string& error);

/// Reads the bytes of a model file that the unit saves by its IPersistStream. False with a text, also if the
/// unit writes another size than it announces.
bool saveModelFile(ICapeUnit* unit, std::string& bytes, std::string& error);

} // namespace solvane::host
