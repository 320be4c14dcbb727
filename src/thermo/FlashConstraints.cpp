#include "FlashConstraints.h"

#include "com/Failure.h"
#include "com/Text.h"

namespace solvane {

FlashProperty codeOf(const FlashConstraint& constraint) {
    return flashPropertyCode(widen(constraint.name, CP_THREAD_ACP));
}

bool areFlashConstraints(FlashConstraints constraints, const std::string& caller, std::string& error) {
    for (std::size_t i = 0; i < constraints.size(); ++i)
        if (!isFlashConstraint(codeOf(constraints[i])))
            return fail(error, caller + "Invalid value for propName" + std::to_string(i + 1) + "; \"" +
                                   constraints[i].name + "\" is not a valid flash constraint");
    return true;
}

} // namespace solvane
