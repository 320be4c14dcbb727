#include "Warnings.h"

#include "EnthalpyWarnings.h"
#include "EntropyWarnings.h"
#include "MachineWarnings.h"
#include "MassWarnings.h"
#include "MeanWarnings.h"
#include "MeantTemperatures.h"
#include "OutputWarnings.h"
#include "PressureWarnings.h"
#include "ProductWarnings.h"
#include "ReactionHeatWarnings.h"
#include "ReactionWarnings.h"
#include "cases/ParameterRules.h"
#include "results/Balances.h"
#include "results/ScriptError.h"

#include <algorithm>
#include <iterator>
#include <optional>

namespace solvane::host {

namespace {

/// Whether a warning says already that the number comes from a parameter.
bool isOfParameter(const ProductFault& fault, const UnitResult& unit, const std::vector<Warning>& warnings) {
    return fault.state && std::ranges::any_of(unit.parameters, [&](const ModelParameter& parameter) {
               return parameter.value == ParameterValue(*fault.state) &&
                      std::ranges::any_of(warnings, [&](const Warning& warning) {
                          return warning.unit == unit.name &&
                                 warning.subject == "parameter " + parameter.name;
                      });
           });
}

/// Adds one cause only: others may be its consequences, and the entropy that of a state at fault.
void addBalanceWarnings(const UnitReview& review, bool isStateSound, std::vector<Warning>& warnings) {
    if (!addMassWarnings(review, warnings))
        return;
    const std::size_t before = warnings.size();
    for (const auto add :
         {addReactionHeatWarnings, addMachineWarnings, addEnthalpyWarnings, addPressureWarnings})
        if (warnings.size() == before)
            add(review, warnings);
    if (warnings.size() == before && isStateSound)
        addEntropyWarnings(review, warnings);
}

/// What the balance of enthalpies proves of the states: a fault of a product may be its consequence.
std::vector<Warning> wrongStates(const UnitReview& review) {
    std::vector<Warning> warnings = meantTemperatures(review);
    return warnings.empty() ? wrongMeans(review) : warnings;
}

/// A source or a sink of the flowsheet conserves nothing, and wrong fractions no balance.
bool hasBalance(const UnitReview& review) {
    return review.balance.mass.in != 0 && !review.products.empty() &&
           std::ranges::all_of(review.products,
                               [](const StreamResult* product) { return sumsToOne(*product); });
}

} // namespace

void addScriptWarnings(const UnitResult& unit, std::vector<Warning>& warnings) {
    for (ScriptWarning& warning : scriptWarnings(unit))
        warnings.push_back({unit.name, "script", std::move(warning.text), std::move(warning.remedy)});
}

void addWarnings(const UnitReview& review, std::vector<Warning>& warnings) {
    const UnitResult& unit = review.unit;
    std::vector<Warning> proven =
        hasBalance(review) && isKept(review.balance.mass) ? wrongStates(review) : std::vector<Warning>();
    bool isStateSound = true;
    for (const StreamResult* product : review.products) {
        const std::string subject = "stream " + product->name;
        if (std::ranges::find(proven, subject, &Warning::subject) != proven.end())
            continue;
        if (auto fault = productFault(*product, review)) {
            isStateSound = false;
            if (!isOfParameter(*fault, unit, warnings))
                warnings.push_back({unit.name, subject, std::move(fault->text), std::move(fault->remedy)});
        }
    }
    const bool isExplained = !proven.empty();
    std::ranges::move(proven, std::back_inserter(warnings));
    for (const ModelParameter& parameter : unit.parameters)
        if (!parameter.isInput && !isSet(parameter))
            warnings.push_back({unit.name, "parameter " + parameter.name,
                                "the output has no value: the script never set it, or set it to NaN",
                                "call setParameter for it, or remove it"});
    if (!hasBalance(review))
        return;
    if (!isExplained)
        addBalanceWarnings(review, isStateSound, warnings);
    addReactionWarnings(review, warnings);
    addOutputWarnings(review, warnings);
}

} // namespace solvane::host
