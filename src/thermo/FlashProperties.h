#pragma once

#include <string_view>

namespace solvane {

/// The overall properties that the commands know by name. Those up to `volume` may constrain a flash.
enum class FlashProperty {
    temperature = 0,
    pressure = 1,
    vaporFraction = 2,
    enthalpy = 3,
    enthalpyF = 4,
    enthalpyNF = 5,
    entropy = 6,
    entropyF = 7,
    entropyNF = 8,
    internalEnergy = 9,
    volume = 10,
    unknown = 11,
    flow = 12,
    totalFlow = 13,
    fraction = 14,
};

/// The code of a name in whatever case, `unknown` for any other text. "energy" is another name of
/// "internalEnergy".
FlashProperty flashPropertyCode(std::wstring_view name);

constexpr bool isFlashConstraint(FlashProperty code) {
    return code <= FlashProperty::volume;
}

/// Temperature and pressure have no basis; all else travels on a mole basis.
constexpr bool isMolar(FlashProperty code) {
    return code != FlashProperty::temperature && code != FlashProperty::pressure;
}

/// The name by which a 1.0 material knows the flash with these two constraints, in either order. Null for a
/// pair that has none.
const wchar_t* flashType(FlashProperty first, FlashProperty second);

} // namespace solvane
