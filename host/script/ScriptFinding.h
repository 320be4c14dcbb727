#pragma once

#include <string>

namespace solvane::host {

/// What was found in a script. Texts are UTF-8.
struct ScriptFinding {
    std::string text;
    std::string remedy; ///< what to do
};

} // namespace solvane::host
