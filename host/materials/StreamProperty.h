/// The names of a material's values, for both generations.
#pragma once

#include "thermo/PropertyPackage.h"

#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <variant>

namespace solvane::host {

/// How many values a property has: one, one per compound, or as many as a derivative to amounts.
enum class ValueShape { scalar, perCompound, other };

/// What the property package calculates: a property of a phase, of two phases or of the pure compounds, or a
/// derivative.
struct PhaseRequest {
    const PhasePropertyRow* property;
    Derivative derivative;
};
struct TwoPhaseRequest {
    TwoPhaseProperty property;
    Derivative derivative;
};
struct PureRequest {
    const PurePropertyRow* property;
    bool derivative;
};

struct StreamProperty {
    std::wstring name; ///< with the derivative's suffix, such as "volume.Dtemperature"
    ValueShape shape;
    /// Empty for a value that is set or comes from a flash and is never calculated.
    std::variant<std::monostate, PhaseRequest, TwoPhaseRequest, PureRequest> request;
    /// The flash condition that the property can state.
    std::optional<FlashVariable> flashVariable;

    bool isPure() const { return std::holds_alternative<PureRequest>(request); }
    /// Whether values refer to an amount, so that they have a basis.
    bool hasBasis() const;
};

std::span<const StreamProperty> streamProperties();

/// The property of that name, in any case of letters; null if there is none. Some properties have a second
/// name in the 1.0 generation.
const StreamProperty* findStreamProperty(std::wstring_view name);

/// The property that states a flash condition.
const StreamProperty& flashProperty(FlashVariable variable);

// The properties that the stream treats specially.
extern const StreamProperty& temperatureProperty;
extern const StreamProperty& pressureProperty;
extern const StreamProperty& fractionProperty;
extern const StreamProperty& flowProperty;
extern const StreamProperty& totalFlowProperty;
extern const StreamProperty& phaseFractionProperty;
extern const StreamProperty& enthalpyProperty;
extern const StreamProperty& enthalpyFProperty;
extern const StreamProperty& entropyProperty;
extern const StreamProperty& logFugacityCoefficientProperty;

} // namespace solvane::host
