#include "CheckOutcome.h"

namespace solvane::host {

std::string counted(std::size_t count, const std::string& what) {
    return std::to_string(count) + " " + what + (count == 1 ? "" : "s");
}

} // namespace solvane::host
