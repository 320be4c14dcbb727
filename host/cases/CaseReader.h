#pragma once

#include "CaseModel.h"

#include <string>
#include <string_view>

namespace solvane::host {

/// Reads and checks a case file (UTF-8 path) with the files that it names. False with a text that names
/// the file and the place in it, as line and column or as the path of keys.
bool readCase(std::string_view path, Case& result, std::string& error);

/// The format of case files, for users.
std::string caseFormatText();

} // namespace solvane::host
