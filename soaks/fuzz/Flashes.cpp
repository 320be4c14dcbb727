// Flashes of any mixture at any two conditions: an error with a text, or phases that make up the mixture.
#include "Check.h"
#include "PropertyPackage.h"

#include <fuzzer/FuzzedDataProvider.h>

#include <cmath>

using namespace solvane::host;

namespace {

/// Fractions are shares of whole numbers, so that zeros and traces come up.
std::vector<double> anyComposition(FuzzedDataProvider& input, std::size_t count) {
    std::vector<double> composition;
    for (std::size_t i = 0; i < count; ++i)
        composition.push_back(std::pow(10, input.ConsumeIntegralInRange(-12, 0)) *
                              input.ConsumeIntegralInRange(0, 9));
    return composition;
}

FlashCondition anyCondition(FuzzedDataProvider& input) {
    const auto variable = static_cast<FlashVariable>(input.ConsumeIntegralInRange(0, 10));
    switch (variable) {
    case FlashVariable::temperature:
        return {variable, input.ConsumeFloatingPointInRange(40., 3100.)};
    case FlashVariable::pressure:
        return {variable, std::pow(10, input.ConsumeFloatingPointInRange(-4., 9.1))};
    case FlashVariable::vaporFraction:
        return {variable, input.ConsumeFloatingPointInRange(-0.1, 1.1)};
    default:
        return {variable, input.ConsumeFloatingPoint<double>()};
    }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    FuzzedDataProvider input(data, size);
    const auto all = allCompounds();
    std::vector<const Compound*> compounds;
    for (int count = input.ConsumeIntegralInRange(1, 4); count > 0; --count)
        compounds.push_back(&all[input.ConsumeIntegralInRange<std::size_t>(0, all.size() - 1)]);
    const PropertyPackage package(compounds);
    const std::vector<double> composition = anyComposition(input, compounds.size());
    const FlashCondition first = anyCondition(input);
    const FlashCondition second = anyCondition(input);

    Equilibrium equilibrium;
    std::string error;
    if (!package.flash(composition, first, second, equilibrium, error)) {
        check(!error.empty());
        return 0;
    }
    check(std::isfinite(equilibrium.temperature) && std::isfinite(equilibrium.pressure));
    double sum = 0;
    for (const PhaseState& phase : equilibrium.phases) {
        check(phase.fraction >= 0 && phase.fraction <= 1);
        sum += phase.fraction;
        for (const double share : phase.composition)
            check(share >= 0 && share <= 1);
    }
    check(std::abs(sum - 1) < 1e-9);
    return 0;
}
