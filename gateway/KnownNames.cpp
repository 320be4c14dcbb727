#include "KnownNames.h"

#include "channel/FlashProperties.h"
#include "channel/Hints.h"
#include "channel/PropertyTables.h"

#include <algorithm>
#include <array>
#include <iterator>
#include <vector>

namespace solvane::gateway {

namespace {

using Names = std::vector<std::string>;

/// The tables' names are ASCII.
Names narrowed(const std::vector<std::wstring>& names) {
    Names result;
    for (const std::wstring& name : names) {
        std::string& text = result.emplace_back();
        std::ranges::transform(name, std::back_inserter(text),
                               [](wchar_t c) { return static_cast<char>(c); });
    }
    return result;
}

Names flashNames(bool (*isMeant)(FlashProperty)) {
    Names names = narrowed(flashPropertyNames());
    std::erase_if(names, [=](const std::string& name) {
        return !isMeant(flashPropertyCode(std::wstring(name.begin(), name.end())));
    });
    return names;
}

Names namesOf(NameKind kind) {
    switch (kind) {
    case NameKind::feedProperty:
        return flashNames([](FlashProperty code) { return code != FlashProperty::vaporFraction; });
    case NameKind::flashCondition:
        return flashNames(isFlashConstraint);
    case NameKind::overallProperty:
        return {overallProperties.begin(), overallProperties.end()};
    case NameKind::singlePhaseProperty:
        return narrowed(singlePhaseProperties().names());
    case NameKind::twoPhaseProperty:
        return narrowed(twoPhaseUnits().names());
    case NameKind::compoundConstant:
        return narrowed(compoundConstantUnits().names());
    case NameKind::temperatureDependent:
        return narrowed(temperatureDependentUnits().names());
    case NameKind::pressureDependent:
        return narrowed(pressureDependentUnits().names());
    case NameKind::property: {
        Names all;
        for (const auto one :
             {NameKind::feedProperty, NameKind::singlePhaseProperty, NameKind::twoPhaseProperty,
              NameKind::compoundConstant, NameKind::temperatureDependent, NameKind::pressureDependent})
            std::ranges::move(namesOf(one), std::back_inserter(all));
        return all;
    }
    default:
        return {};
    }
}

/// Names of other programs and of formulas.
struct OtherName {
    std::string_view name;
    std::string_view meant;
};
constexpr std::array otherNames{OtherName{"molarMass", "molecularWeight"},
                                OtherName{"molarWeight", "molecularWeight"},
                                OtherName{"molWeight", "molecularWeight"},
                                OtherName{"molWt", "molecularWeight"},
                                OtherName{"MW", "molecularWeight"},
                                OtherName{"Tc", "criticalTemperature"},
                                OtherName{"Pc", "criticalPressure"},
                                OtherName{"Vc", "criticalVolume"},
                                OtherName{"Zc", "criticalCompressibilityFactor"},
                                OtherName{"omega", "acentricFactor"},
                                OtherName{"Tb", "normalBoilingPoint"},
                                OtherName{"boilingPoint", "normalBoilingPoint"},
                                OtherName{"Tm", "normalFreezingPoint"},
                                OtherName{"meltingPoint", "normalFreezingPoint"},
                                OtherName{"formula", "chemicalFormula"},
                                OtherName{"CAS", "casRegistryNumber"},
                                OtherName{"SMILES", "SMILESformula"},
                                OtherName{"Cp", "heatCapacityCp"},
                                OtherName{"Cp", "idealGasHeatCapacity"},
                                OtherName{"Cv", "heatCapacityCv"},
                                OtherName{"molarVolume", "volume"},
                                OtherName{"rho", "density"},
                                OtherName{"molarDensity", "density"},
                                OtherName{"mu", "viscosity"},
                                OtherName{"conductivity", "thermalConductivity"},
                                OtherName{"compressibilityFactorZ", "compressibilityFactor"},
                                OtherName{"Psat", "vaporPressure"},
                                OtherName{"saturationPressure", "vaporPressure"},
                                OtherName{"latentHeat", "heatOfVaporization"},
                                OtherName{"Hvap", "heatOfVaporization"},
                                OtherName{"moleFraction", "fraction"},
                                OtherName{"composition", "fraction"},
                                OtherName{"molarFlow", "totalFlow"},
                                OtherName{"flowrate", "totalFlow"},
                                OtherName{"T", "temperature"},
                                OtherName{"P", "pressure"},
                                OtherName{"H", "enthalpy"},
                                OtherName{"S", "entropy"},
                                OtherName{"vapourFraction", "vaporFraction"},
                                OtherName{"quality", "vaporFraction"}};

/// Ignoring the case of ASCII letters.
bool isSame(std::string_view a, std::string_view b) {
    const auto lower = [](char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c; };
    return std::ranges::equal(a, b, {}, lower, lower);
}

} // namespace

std::string meantName(NameKind kind, std::string_view name) {
    const Names known = namesOf(kind);
    std::string closest = closestName(known, name);
    // Only the names of overall properties must have the right case.
    const bool isKnown = kind == NameKind::overallProperty ? closest == name : isSame(closest, name);
    if (isKnown || !closest.empty())
        return isKnown ? std::string() : closest;
    for (const OtherName& other : otherNames)
        if (isSame(other.name, name) && std::ranges::find(known, other.meant) != known.end())
            return std::string(other.meant);
    return {};
}

} // namespace solvane::gateway
