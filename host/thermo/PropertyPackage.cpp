#include "PropertyPackage.h"

#include "FlashVariables.h"
#include "MolarProperties.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <numeric>

namespace solvane::host {

namespace {

struct MixturePropertyRow {
    PhaseProperty property;
    double MolarProperties::*value;
};

constexpr std::array mixturePropertyTable{
    MixturePropertyRow{PhaseProperty::enthalpy, &MolarProperties::enthalpyNF},
    MixturePropertyRow{PhaseProperty::enthalpyF, &MolarProperties::enthalpyF},
    MixturePropertyRow{PhaseProperty::enthalpyNF, &MolarProperties::enthalpyNF},
    MixturePropertyRow{PhaseProperty::entropy, &MolarProperties::entropyNF},
    MixturePropertyRow{PhaseProperty::entropyF, &MolarProperties::entropyF},
    MixturePropertyRow{PhaseProperty::entropyNF, &MolarProperties::entropyNF},
    MixturePropertyRow{PhaseProperty::internalEnergy, &MolarProperties::internalEnergy},
    MixturePropertyRow{PhaseProperty::volume, &MolarProperties::volume},
};

struct CompoundPropertyRow {
    PhaseProperty property;
    double (*value)(double logCoefficient, double partialPressure);
};

constexpr std::array compoundPropertyTable{
    CompoundPropertyRow{PhaseProperty::fugacityCoefficient, [](double log, double) { return std::exp(log); }},
    CompoundPropertyRow{PhaseProperty::logFugacityCoefficient, [](double log, double) { return log; }},
    CompoundPropertyRow{PhaseProperty::fugacity, [](double log, double p) { return std::exp(log) * p; }},
};

} // namespace

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

bool PropertyPackage::phaseProperty(PhaseProperty property, Phase phase, double temperature, double pressure,
                                    std::span<const double> composition, std::vector<double>& values,
                                    std::string& error) const {
    std::vector<double> fractions;
    if (!normalize(composition, fractions, error) ||
        !checkCondition({FlashVariable::temperature, temperature}, error) ||
        !checkCondition({FlashVariable::pressure, pressure}, error)) {
        return false;
    }
    const auto mixtureRow = std::ranges::find(mixturePropertyTable, property, &MixturePropertyRow::property);
    if (mixtureRow != mixturePropertyTable.end()) {
        values = {molarProperties(compounds_, phase, temperature, pressure, fractions).*mixtureRow->value};
        return true;
    }
    const auto row = std::ranges::find(compoundPropertyTable, property, &CompoundPropertyRow::property);
    values =
        PengRobinson(compounds_, temperature).fugacity(rootOf(phase), pressure, fractions).logCoefficient;
    for (std::size_t i = 0; i < values.size(); ++i) {
        values[i] = row->value(values[i], fractions[i] * pressure);
    }
    return true;
}

} // namespace solvane::host
