#include "FlashConstraints.h"

#include "HostTexts.h"

namespace solvane {

FlashProperty codeOf(const FlashConstraint& constraint) {
    return flashPropertyCode(hostText(constraint.name).view());
}

bool areFlashConstraints(FlashConstraints constraints, const std::string& caller, std::string& error) {
    for (std::size_t i = 0; i < constraints.size(); ++i)
        if (!isFlashConstraint(codeOf(constraints[i])))
            return fail(error, caller + "Invalid value for propName" + std::to_string(i + 1) + "; \"" +
                                   constraints[i].name + "\" is not a valid flash constraint");
    return true;
}

} // namespace solvane
