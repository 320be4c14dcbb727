#pragma once

#include <array>
#include <string>
#include <string_view>
#include <vector>

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

/// The code of a name, ignoring case; `unknown` for any other text. "energy" is another name of
/// "internalEnergy".
FlashProperty flashPropertyCode(std::wstring_view name);

/// All names that have a code.
std::vector<std::wstring> flashPropertyNames();

/// The properties that flashProperty returns, by their exact names.
inline constexpr std::array<std::string_view, 8> overallProperties{
    "enthalpy", "enthalpyF", "enthalpyNF", "entropy", "entropyF", "entropyNF", "internalEnergy", "volume",
};

constexpr bool isFlashConstraint(FlashProperty code) {
    return code <= FlashProperty::volume;
}

/// Temperature and pressure have no basis; all other properties are on a mole basis.
constexpr bool isMolar(FlashProperty code) {
    return code != FlashProperty::temperature && code != FlashProperty::pressure;
}

/// A 1.0 material's name for the flash with these two constraints, in either order. Null for a pair without a
/// name.
const wchar_t* flashType(FlashProperty first, FlashProperty second);

} // namespace solvane
