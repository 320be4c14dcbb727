#include "StreamProperty.h"

#include "com/Text.h"

#include <algorithm>
#include <array>
#include <numeric>

namespace solvane::host {

namespace {

template <PhaseProperty property>
bool ofPackage(const PropertyPackage& package, Phase phase, double temperature, double pressure,
               std::span<const double> composition, std::vector<double>& values, std::string& error) {
    return package.phaseProperty(property, phase, temperature, pressure, composition, values, error);
}

/// g/mol, the mole-fraction average of the compounds' values.
bool molecularWeight(const PropertyPackage& package, Phase, double, double,
                     std::span<const double> composition, std::vector<double>& values, std::string&) {
    const auto compounds = package.compounds();
    values = {std::transform_reduce(
        composition.begin(), composition.end(), compounds.begin(), 0.0, std::plus<>(),
        [](double fraction, const Compound* compound) { return fraction * compound->molecularWeight; })};
    return true;
}

using enum ValueShape;

// clang-format off
constexpr std::array properties{
    StreamProperty{L"temperature",            scalar,      nullptr,                                           FlashVariable::temperature},
    StreamProperty{L"pressure",               scalar,      nullptr,                                           FlashVariable::pressure},
    StreamProperty{L"fraction",               perCompound, nullptr,                                           {}},
    StreamProperty{L"flow",                   perCompound, nullptr,                                           {}},
    StreamProperty{L"totalFlow",              scalar,      nullptr,                                           {}},
    StreamProperty{L"phaseFraction",          scalar,      nullptr,                                           FlashVariable::vaporFraction},
    StreamProperty{L"enthalpy",               scalar,      ofPackage<PhaseProperty::enthalpy>,                FlashVariable::enthalpy},
    StreamProperty{L"enthalpyF",              scalar,      ofPackage<PhaseProperty::enthalpyF>,               FlashVariable::enthalpyF},
    StreamProperty{L"enthalpyNF",             scalar,      ofPackage<PhaseProperty::enthalpyNF>,              FlashVariable::enthalpyNF},
    StreamProperty{L"entropy",                scalar,      ofPackage<PhaseProperty::entropy>,                 FlashVariable::entropy},
    StreamProperty{L"entropyF",               scalar,      ofPackage<PhaseProperty::entropyF>,                FlashVariable::entropyF},
    StreamProperty{L"entropyNF",              scalar,      ofPackage<PhaseProperty::entropyNF>,               FlashVariable::entropyNF},
    StreamProperty{L"internalEnergy",         scalar,      ofPackage<PhaseProperty::internalEnergy>,          FlashVariable::internalEnergy},
    StreamProperty{L"volume",                 scalar,      ofPackage<PhaseProperty::volume>,                  FlashVariable::volume},
    StreamProperty{L"molecularWeight",        scalar,      molecularWeight,                                   {}},
    StreamProperty{L"fugacity",               perCompound, ofPackage<PhaseProperty::fugacity>,                {}},
    StreamProperty{L"fugacityCoefficient",    perCompound, ofPackage<PhaseProperty::fugacityCoefficient>,     {}},
    StreamProperty{L"logFugacityCoefficient", perCompound, ofPackage<PhaseProperty::logFugacityCoefficient>, {}},
};
// clang-format on

/// The first generation's name of the internal energy.
constexpr std::wstring_view energyName = L"energy";
constexpr std::wstring_view internalEnergyName = L"internalEnergy";

consteval const StreamProperty& named(std::wstring_view name) {
    return *std::find_if(properties.begin(), properties.end(),
                         [&](const StreamProperty& property) { return property.name == name; });
}

} // namespace

constinit const StreamProperty& temperatureProperty = named(L"temperature");
constinit const StreamProperty& pressureProperty = named(L"pressure");
constinit const StreamProperty& fractionProperty = named(L"fraction");
constinit const StreamProperty& flowProperty = named(L"flow");
constinit const StreamProperty& totalFlowProperty = named(L"totalFlow");
constinit const StreamProperty& phaseFractionProperty = named(L"phaseFraction");
constinit const StreamProperty& enthalpyProperty = named(L"enthalpy");
constinit const StreamProperty& logFugacityCoefficientProperty = named(L"logFugacityCoefficient");

std::span<const StreamProperty> streamProperties() {
    return properties;
}

const StreamProperty* findStreamProperty(std::wstring_view name) {
    if (compareNoCase(name, energyName) == 0)
        name = internalEnergyName;
    const auto found = std::ranges::find_if(
        properties, [&](const StreamProperty& property) { return compareNoCase(property.name, name) == 0; });
    return found == properties.end() ? nullptr : &*found;
}

const StreamProperty& flashProperty(FlashVariable variable) {
    return *std::ranges::find(properties, std::optional(variable), &StreamProperty::flashVariable);
}

} // namespace solvane::host
