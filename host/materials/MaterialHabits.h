/// How the materials of hosts differ.
#pragma once

#include <functional>

namespace solvane::host {

struct MaterialRules {
    /// Rejects what the standard does not allow to the letter: properties of phases that are not stated as
    /// present (1.1), a basis other than "mole" for amounts or any for the rest, single values instead of
    /// arrays, fractions that do not sum to 1.
    bool strict = false;
    bool liquidFirst = false; ///< lists the liquid before the vapour
};

/// Shared by all materials of a flowsheet.
struct MaterialHabits {
    MaterialRules rules{};
    std::function<void()> onCall{};  ///< called at the start of each material operation that can fail
    std::function<void()> onFlash{}; ///< called before each flash
};

} // namespace solvane::host
