#include "MassWarnings.h"

#include "MassRemedy.h"
#include "cases/NumberText.h"
#include "results/Balances.h"

namespace solvane::host {

bool addMassWarnings(const UnitReview& review, std::vector<Warning>& warnings) {
    const Balance& balance = review.balance;
    bool isSound = true;
    const auto warn = [&](const Flows& flows, const std::string& unitOfFlow, const std::string& what,
                          std::string remedy) {
        isSound = false;
        warnings.push_back({review.unit.name, "balance",
                            shortNumber(flows.in, 7) + unitOfFlow + what + " go in and " +
                                shortNumber(flows.out, 7) + unitOfFlow + " come out",
                            std::move(remedy)});
    };
    if (!isKept(balance.mass))
        warn(balance.mass, " kg/s", "", massRemedy(review));
    if (balance.reacts)
        for (const ElementFlow& element : balance.elements)
            if (!isKept(element.moles))
                warn(element.moles, " mol/s", " of " + element.symbol,
                     "compare the script's balance with its equations");
    return isSound;
}

} // namespace solvane::host
