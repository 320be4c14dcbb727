#include "FlashProperties.h"

#include "StringMap.h"

#include <array>

namespace solvane {

namespace {

using enum FlashProperty;

struct NamedProperty {
    const wchar_t* name;
    FlashProperty code;
};

constexpr auto namedProperties = std::to_array<NamedProperty>({
    {L"temperature", temperature},
    {L"pressure", pressure},
    {L"vaporFraction", vaporFraction},
    {L"enthalpy", enthalpy},
    {L"enthalpyF", enthalpyF},
    {L"enthalpyNF", enthalpyNF},
    {L"entropy", entropy},
    {L"entropyF", entropyF},
    {L"entropyNF", entropyNF},
    {L"internalEnergy", internalEnergy},
    {L"energy", internalEnergy},
    {L"volume", volume},
    {L"flow", flow},
    {L"totalFlow", totalFlow},
    {L"fraction", fraction},
});

struct FlashType {
    FlashProperty first;
    FlashProperty other;
    const wchar_t* name;
};

/// Prescribed text: 1.0 hosts know "HFVf" with a lower-case f.
constexpr auto flashTypes = std::to_array<FlashType>({
    {temperature, pressure, L"TP"},
    {temperature, vaporFraction, L"TVF"},
    {temperature, enthalpy, L"TH"},
    {temperature, enthalpyF, L"THF"},
    {temperature, enthalpyNF, L"THNF"},
    {temperature, entropy, L"TS"},
    {temperature, entropyF, L"TSF"},
    {temperature, entropyNF, L"TSNF"},
    {temperature, internalEnergy, L"TU"},
    {temperature, volume, L"TV"},
    {pressure, vaporFraction, L"PVF"},
    {pressure, enthalpy, L"PH"},
    {pressure, enthalpyF, L"PHF"},
    {pressure, enthalpyNF, L"PHNF"},
    {pressure, entropy, L"PS"},
    {pressure, entropyF, L"PSF"},
    {pressure, entropyNF, L"PSNF"},
    {pressure, internalEnergy, L"PU"},
    {pressure, volume, L"PV"},
    {vaporFraction, enthalpy, L"HVF"},
    {vaporFraction, enthalpyF, L"HFVf"},
    {vaporFraction, enthalpyNF, L"HNFVF"},
    {vaporFraction, entropy, L"SVF"},
    {vaporFraction, entropyF, L"SFVF"},
    {vaporFraction, entropyNF, L"SNFVF"},
    {vaporFraction, internalEnergy, L"UVF"},
    {vaporFraction, volume, L"VVF"},
});

const StringMap<FlashProperty> flashPropertyCodes = [] {
    StringMap<FlashProperty> codes;
    for (const NamedProperty& property : namedProperties)
        codes.add(property.name, property.code);
    return codes;
}();

} // namespace

FlashProperty flashPropertyCode(std::wstring_view name) {
    const FlashProperty* code = flashPropertyCodes.find(name);
    return code ? *code : unknown;
}

std::vector<std::wstring> flashPropertyNames() {
    return flashPropertyCodes.names();
}

const wchar_t* flashType(FlashProperty first, FlashProperty second) {
    for (const FlashType& type : flashTypes)
        if ((first == type.first && second == type.other) || (second == type.first && first == type.other))
            return type.name;
    return nullptr;
}

} // namespace solvane
