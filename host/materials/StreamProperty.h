/// The names by which a material is asked for its values, of either generation.
#pragma once

#include "thermo/PropertyPackage.h"

#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace solvane::host {

enum class ValueShape { scalar, perCompound };

/// The value of a property for one phase at T and P, on a mole basis in SI units.
using PhaseCalculation = bool (*)(const PropertyPackage& package, Phase phase, double temperature,
                                  double pressure, std::span<const double> composition,
                                  std::vector<double>& values, std::string& error);

struct StreamProperty {
    std::wstring_view name;
    ValueShape shape;
    /// Null for what is set or comes from a flash and is never calculated for a phase.
    PhaseCalculation calculate;
    /// The condition of a flash that the property can be.
    std::optional<FlashVariable> flashVariable;
};

std::span<const StreamProperty> streamProperties();

/// The property of that name, in any case of letters; null where there is none.
const StreamProperty* findStreamProperty(std::wstring_view name);

/// The property that sets a flash condition.
const StreamProperty& flashProperty(FlashVariable variable);

// The properties that the stream itself knows how to treat.
extern const StreamProperty& temperatureProperty;
extern const StreamProperty& pressureProperty;
extern const StreamProperty& fractionProperty;
extern const StreamProperty& flowProperty;
extern const StreamProperty& totalFlowProperty;
extern const StreamProperty& phaseFractionProperty;
extern const StreamProperty& enthalpyProperty;
extern const StreamProperty& logFugacityCoefficientProperty;

} // namespace solvane::host
