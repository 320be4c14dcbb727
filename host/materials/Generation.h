#pragma once

#include <string_view>

namespace solvane::host {

/// The two generations of the CAPE-OPEN thermodynamic interfaces.
enum class Generation { v10, v11 };

/// "1.0", "1.1".
constexpr std::string_view generationName(Generation generation) {
    return generation == Generation::v10 ? "1.0" : "1.1";
}

} // namespace solvane::host
