#include "PropertyPackage.h"

#include "FlashVariables.h"

#include <algorithm>
#include <cmath>
#include <numeric>

namespace solvane::host {

PropertyPackage::PropertyPackage(std::vector<const Compound*> compounds) : compounds_(std::move(compounds)) {}

bool PropertyPackage::normalize(std::span<const double> composition, std::vector<double>& fractions,
                                std::string& error) const {
    if (composition.size() != compounds_.size()) {
        error =
            text("the composition has ", composition.size(), " values for ", compounds_.size(), " compounds");
        return false;
    }
    for (std::size_t i = 0; i < composition.size(); ++i) {
        if (!std::isfinite(composition[i]) || composition[i] < 0) {
            error = text("the mole fraction of ", compounds_[i]->name, ", ", composition[i],
                         std::isfinite(composition[i]) ? ", is negative" : ", is not a number");
            return false;
        }
    }
    const double total = std::accumulate(composition.begin(), composition.end(), 0.0);
    if (!(total > 0) || !std::isfinite(total)) {
        error = text("the mole fractions sum to ", total);
        return false;
    }
    fractions.assign(composition.begin(), composition.end());
    std::ranges::for_each(fractions, [total](double& fraction) { fraction /= total; });
    return true;
}

bool PropertyPackage::pureProperty(const PurePropertyRow& property, double argument,
                                   std::vector<double>& values, std::string& error, bool derivative) const {
    const bool byTemperature = property.argument == PureArgument::temperature;
    if (!checkCondition({byTemperature ? FlashVariable::temperature : FlashVariable::pressure, argument},
                        error))
        return false;
    values.clear();
    for (const Compound* compound : compounds_) {
        const Dual value = property.value(*compound, argument);
        values.push_back(derivative ? value.slope : value.value);
    }
    return true;
}

} // namespace solvane::host
