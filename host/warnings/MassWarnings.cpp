#include "MassWarnings.h"

#include "cases/NumberText.h"
#include "results/Balances.h"

#include <array>
#include <cmath>

namespace solvane::host {

namespace {

constexpr char balanceRemedy[] = "compare the script's balance with its equations";

/// How many mol/s one of another unit is.
struct FlowUnit {
    const char* name;
    double molesPerSecond;
    bool isMass = false; ///< kg/s in place of mol/s
};

constexpr std::array flowUnits{
    FlowUnit{"kmol/h", 1000.0 / 3600},  FlowUnit{"mol/h", 1.0 / 3600},
    FlowUnit{"kmol/s", 1000},           FlowUnit{"kg/s", 1, true},
    FlowUnit{"kg/h", 1.0 / 3600, true}, FlowUnit{"t/h", 1000.0 / 3600, true},
};

/// Of molar masses with three digits.
constexpr double samePart = 1e-3;

} // namespace

std::string massRemedy(const Balance& balance, std::span<const StreamResult* const> products) {
    for (const StreamResult* product : products) {
        const double meant = product->massFlow - (balance.mass.out - balance.mass.in); // kg/s
        const double molarMass = product->massFlow / product->totalFlow;
        for (const FlowUnit& unit : flowUnits)
            if (const double read = unit.molesPerSecond * (unit.isMass ? 1 / molarMass : 1);
                std::abs(meant / product->massFlow / read - 1) < samePart)
                return "the flow of stream " + product->name + " looks like one in " + unit.name +
                       ": flows are in mol/s";
    }
    std::string open;
    bool isOneKept = false;
    for (const ElementFlow& element : balance.elements)
        if (!isKept(element.moles))
            open += (open.empty() ? "" : ", ") + element.symbol;
        else if (element.moles.in != 0)
            isOneKept = true;
    return (isOneKept ? "the balance is open in " + open + " only: " : "") + balanceRemedy;
}

bool addMassWarnings(const UnitReview& review, std::vector<Warning>& warnings) {
    const Balance& balance = review.balance;
    bool isSound = true;
    const auto compare = [&](const Flows& flows, const std::string& unitOfFlow, const std::string& what,
                             const std::string& remedy) {
        if (isKept(flows))
            return;
        isSound = false;
        warnings.push_back({review.unit.name, "balance",
                            shortNumber(flows.in, 7) + unitOfFlow + what + " go in and " +
                                shortNumber(flows.out, 7) + unitOfFlow + " come out",
                            remedy});
    };
    compare(balance.mass, " kg/s", "", massRemedy(balance, review.products));
    if (balance.reacts)
        for (const ElementFlow& element : balance.elements)
            compare(element.moles, " mol/s", " of " + element.symbol, balanceRemedy);
    return isSound;
}

} // namespace solvane::host
