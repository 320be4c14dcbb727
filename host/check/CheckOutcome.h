#pragma once

#include <string>
#include <vector>

namespace solvane::host {

/// Something to mend in a model. Texts are UTF-8.
struct CheckFinding {
    std::string text;
    std::string remedy; ///< what to do
};

struct CheckOutcome {
    std::string summary; ///< what was seen
    std::vector<CheckFinding> findings;
    std::vector<CheckFinding> notes{}; ///< what makes the model no less fit
};

/// "1 file", "8 files".
std::string counted(std::size_t count, const std::string& what);

} // namespace solvane::host
