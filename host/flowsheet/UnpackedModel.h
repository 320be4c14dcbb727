#pragma once

#include "ModelDescription.h"

#include <vector>

namespace solvane::host {

/// The files of a case from which the same model can be saved again: case.json with example feeds,
/// model.json, the script and the additional files. Their names are paths below the folder of the case.
std::vector<ModelFile> unpackModel(const ModelDescription& description);

} // namespace solvane::host
