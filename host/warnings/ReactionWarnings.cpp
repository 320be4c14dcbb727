#include "ReactionWarnings.h"

#include "cases/ParameterRules.h"

#include <array>
#include <cmath>
#include <string_view>

namespace solvane::host {

void addReactionWarnings(const UnitReview& review, std::vector<Warning>& warnings) {
    constexpr std::array<std::string_view, 3> reactions{"conversion", "yield", "extent"};
    constexpr double vanishing = 1e-9;
    if (review.balance.reacts || !(review.balance.moles.in > 0))
        return;
    for (const ModelParameter& output : review.unit.parameters) {
        const auto* value = !output.isInput && output.value ? std::get_if<double>(&*output.value) : nullptr;
        if (value && std::abs(*value) < vanishing && hasWord(output.name, reactions))
            warnings.push_back({review.unit.name, "parameter " + output.name, nothingReacts,
                                "look at what makes the rate vanish: R and E in different units, such as "
                                "kJ and J, T in degC, exchanged columns of a file"});
    }
}

} // namespace solvane::host
