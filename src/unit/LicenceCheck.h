#pragma once

#include <string>

namespace solvane {

/// Whether the unit may run on this machine. A refusal's text goes to `refusal`. This product is free for
/// everybody, so it always may.
inline bool isLicensed([[maybe_unused]] std::string& refusal) {
    return true;
}

} // namespace solvane
