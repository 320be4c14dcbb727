#include "StreamProperty.h"

#include "com/Text.h"

#include <algorithm>
#include <array>
#include <vector>

namespace solvane::host {

namespace {

struct StreamRow {
    std::wstring_view name;
    ValueShape shape;
    std::optional<FlashVariable> flashVariable;
};

constexpr std::array streamTable{
    StreamRow{L"temperature", ValueShape::scalar, FlashVariable::temperature},
    StreamRow{L"pressure", ValueShape::scalar, FlashVariable::pressure},
    StreamRow{L"fraction", ValueShape::perCompound, {}},
    StreamRow{L"flow", ValueShape::perCompound, {}},
    StreamRow{L"totalFlow", ValueShape::scalar, {}},
    StreamRow{L"phaseFraction", ValueShape::scalar, FlashVariable::vaporFraction},
};

struct FlashRow {
    PhaseProperty property;
    FlashVariable variable;
};

constexpr std::array flashTable{
    FlashRow{PhaseProperty::enthalpy, FlashVariable::enthalpy},
    FlashRow{PhaseProperty::enthalpyF, FlashVariable::enthalpyF},
    FlashRow{PhaseProperty::enthalpyNF, FlashVariable::enthalpyNF},
    FlashRow{PhaseProperty::entropy, FlashVariable::entropy},
    FlashRow{PhaseProperty::entropyF, FlashVariable::entropyF},
    FlashRow{PhaseProperty::entropyNF, FlashVariable::entropyNF},
    FlashRow{PhaseProperty::internalEnergy, FlashVariable::internalEnergy},
    FlashRow{PhaseProperty::volume, FlashVariable::volume},
};

struct TwoPhaseRow {
    std::wstring_view name;
    TwoPhaseProperty property;
    ValueShape shape;
};

constexpr std::array twoPhaseTable{
    TwoPhaseRow{L"kvalue", TwoPhaseProperty::kvalue, ValueShape::perCompound},
    TwoPhaseRow{L"logKvalue", TwoPhaseProperty::logKvalue, ValueShape::perCompound},
    TwoPhaseRow{L"surfaceTension", TwoPhaseProperty::surfaceTension, ValueShape::scalar},
};

struct DerivativeRow {
    Derivative derivative;
    std::wstring_view suffix;
};

constexpr std::array derivativeTable{
    DerivativeRow{Derivative::none, L""},
    DerivativeRow{Derivative::temperature, L".Dtemperature"},
    DerivativeRow{Derivative::pressure, L".Dpressure"},
    DerivativeRow{Derivative::moles, L".Dmoles"},
    DerivativeRow{Derivative::molFraction, L".DmolFraction"},
};

struct Alias {
    std::wstring_view other;
    std::wstring_view name;
};

constexpr std::array aliases{
    Alias{L"energy", L"internalEnergy"},
    Alias{L"gibbsFreeEnergy", L"gibbsEnergy"},
    Alias{L"helmholtzFreeEnergy", L"helmholtzEnergy"},
    Alias{L"heatCapacity", L"heatCapacityCp"},
    Alias{L"excessGibbsFreeEnergy", L"excessGibbsEnergy"},
    Alias{L"excessHelmholtzFreeEnergy", L"excessHelmholtzEnergy"},
    Alias{L"kvalues", L"kvalue"},
    Alias{L"logKvalues", L"logKvalue"},
};

std::wstring withSuffix(std::wstring_view name, std::wstring_view suffix) {
    return std::wstring(name).append(suffix);
}

/// How many values a derivative has where the property itself has `shape`. With two phases, those to amounts
/// are as many again.
ValueShape shapeOf(ValueShape shape, Derivative derivative, bool ofTwoPhases) {
    if (derivative != Derivative::moles && derivative != Derivative::molFraction)
        return shape;
    return shape == ValueShape::scalar && !ofTwoPhases ? ValueShape::perCompound : ValueShape::other;
}

void addPhaseProperties(std::vector<StreamProperty>& properties) {
    for (const PhasePropertyRow& row : phaseProperties())
        for (const auto& [derivative, suffix] : derivativeTable) {
            const ValueShape shape = row.perCompound ? ValueShape::perCompound : ValueShape::scalar;
            const auto flash = std::ranges::find(flashTable, row.property, &FlashRow::property);
            const bool isCondition = derivative == Derivative::none && flash != flashTable.end();
            properties.push_back({withSuffix(widen(row.name, CP_UTF8), suffix),
                                  shapeOf(shape, derivative, false), PhaseRequest{&row, derivative},
                                  isCondition ? std::optional(flash->variable) : std::nullopt});
        }
}

void addTwoPhaseProperties(std::vector<StreamProperty>& properties) {
    for (const TwoPhaseRow& row : twoPhaseTable)
        for (const auto& [derivative, suffix] : derivativeTable)
            properties.push_back({withSuffix(row.name, suffix),
                                  shapeOf(row.shape, derivative, true),
                                  TwoPhaseRequest{row.property, derivative},
                                  {}});
}

void addPureProperties(std::vector<StreamProperty>& properties) {
    for (const PurePropertyRow& row : pureProperties()) {
        const std::wstring name = widen(row.name, CP_UTF8);
        const bool byTemperature = row.argument == PureArgument::temperature;
        properties.push_back({name, ValueShape::perCompound, PureRequest{&row, false}, {}});
        properties.push_back({name + (byTemperature ? L".Dtemperature" : L".Dpressure"),
                              ValueShape::perCompound,
                              PureRequest{&row, true},
                              {}});
    }
}

std::vector<StreamProperty> allProperties() {
    std::vector<StreamProperty> properties;
    for (const StreamRow& row : streamTable)
        properties.push_back({std::wstring(row.name), row.shape, {}, row.flashVariable});
    addPhaseProperties(properties);
    addTwoPhaseProperties(properties);
    addPureProperties(properties);
    return properties;
}

const std::vector<StreamProperty> properties = allProperties();

const StreamProperty& named(std::wstring_view name) {
    return *std::ranges::find(properties, name, &StreamProperty::name);
}

} // namespace

const StreamProperty& temperatureProperty = named(L"temperature");
const StreamProperty& pressureProperty = named(L"pressure");
const StreamProperty& fractionProperty = named(L"fraction");
const StreamProperty& flowProperty = named(L"flow");
const StreamProperty& totalFlowProperty = named(L"totalFlow");
const StreamProperty& phaseFractionProperty = named(L"phaseFraction");
const StreamProperty& enthalpyProperty = named(L"enthalpy");
const StreamProperty& enthalpyFProperty = named(L"enthalpyF");
const StreamProperty& entropyProperty = named(L"entropy");
const StreamProperty& logFugacityCoefficientProperty = named(L"logFugacityCoefficient");

bool StreamProperty::hasBasis() const {
    if (const auto* ofPhase = std::get_if<PhaseRequest>(&request))
        return ofPhase->property->molar || ofPhase->property->property == PhaseProperty::density;
    return std::holds_alternative<std::monostate>(request) && this != &temperatureProperty &&
           this != &pressureProperty;
}

std::span<const StreamProperty> streamProperties() {
    return properties;
}

const StreamProperty* findStreamProperty(std::wstring_view name) {
    const std::wstring_view base = name.substr(0, name.find(L'.'));
    const auto alias = std::ranges::find_if(
        aliases, [&](const Alias& known) { return compareNoCase(known.other, base) == 0; });
    if (alias != aliases.end())
        return findStreamProperty(withSuffix(alias->name, name.substr(base.size())));
    const auto found = std::ranges::find_if(properties, [&](const StreamProperty& property) {
        return property.name.size() == name.size() && compareNoCase(property.name, name) == 0;
    });
    return found == properties.end() ? nullptr : &*found;
}

const StreamProperty& flashProperty(FlashVariable variable) {
    return *std::ranges::find(properties, std::optional(variable), &StreamProperty::flashVariable);
}

} // namespace solvane::host
