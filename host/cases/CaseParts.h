#pragma once

#include "CaseModel.h"
#include "CasePlace.h"

#include <filesystem>
#include <string>
#include <vector>

namespace solvane::host {

bool read(const CasePlace& place, Generation& result);
bool read(const CasePlace& place, Profile& result);
bool read(const CasePlace& place, const Compound*& result);
bool read(const CasePlace& place, ParameterKind& result);

/// Reads a case's "model". The files that it names are found from `folder` and read too.
bool readModel(const CasePlace& place, const std::filesystem::path& folder, UnitModel& model);

/// Adds the name to `names`; false with a text where it is there already. The unit tells no names apart by
/// the case of their letters.
bool isNewName(const CasePlace& place, const std::string& name, std::vector<std::string>& names);

} // namespace solvane::host
