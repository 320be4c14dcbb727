#include "ParameterRules.h"
#include "com/Text.h"

namespace solvane::host {

bool isSameName(std::string_view left, std::string_view right) {
    return compareNoCase(widen(left, CP_UTF8), widen(right, CP_UTF8)) == 0;
}

} // namespace solvane::host
