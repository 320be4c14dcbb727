/// Model files: what a unit writes into a stream of its host's, without the length before it.
#pragma once

#include "CapeOpen.h"
#include "cases/CaseModel.h"

#include <string>

namespace solvane::host {

/// Loads a model file into the unit by its IPersistStream, as a host restores a saved flowsheet. False with a
/// text that names the file.
bool loadModelFile(ICapeUnit* unit, const ModelFile& file, std::string& error);

/// What the unit saves by its IPersistStream, as the bytes of a model file. False with a text, also where the
/// unit announces another size than it writes.
bool saveModelFile(ICapeUnit* unit, std::string& bytes, std::string& error);

} // namespace solvane::host
