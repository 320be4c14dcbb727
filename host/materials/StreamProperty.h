/// The names by which a material is asked for its values, of either generation.
#pragma once

#include "thermo/PropertyPackage.h"

#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <variant>

namespace solvane::host {

/// How many values there are: one, one a compound, or as many as some derivatives to amounts have.
enum class ValueShape { scalar, perCompound, other };

/// What the property package is asked for: a property of a phase, one of two phases, or one of the pure
/// compounds, or a derivative.
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
    std::wstring name; ///< with the derivative's suffix, as "volume.Dtemperature"
    ValueShape shape;
    /// Nothing for what is set or comes from a flash and is never calculated.
    std::variant<std::monostate, PhaseRequest, TwoPhaseRequest, PureRequest> request;
    /// The condition of a flash that the property can be.
    std::optional<FlashVariable> flashVariable;

    bool isPure() const { return std::holds_alternative<PureRequest>(request); }
    /// Whether values count for an amount, so that they have a basis.
    bool hasBasis() const;
};

std::span<const StreamProperty> streamProperties();

/// The property of that name, in any case of letters; null where there is none. Some properties have a second
/// name of the first generation.
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
extern const StreamProperty& enthalpyFProperty;
extern const StreamProperty& logFugacityCoefficientProperty;

} // namespace solvane::host
