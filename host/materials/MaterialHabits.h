/// In what the materials of one host differ from those of another.
#pragma once

#include <functional>

namespace solvane::host {

struct MaterialRules {
    /// Refuses what the standard's letter does not allow: properties of phases that are not stated as present
    /// (1.1), other bases than "mole" for amounts and none for the rest, single values in the place of
    /// arrays, fractions that do not sum to 1.
    bool strict = false;
    bool liquidFirst = false; ///< lists the liquid before the vapour
};

/// Shared by all materials of a flowsheet.
struct MaterialHabits {
    MaterialRules rules{};
    std::function<void()> onCall{}; ///< at the beginning of each operation of a material that can fail
};

} // namespace solvane::host
