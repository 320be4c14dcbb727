/// What a study can vary: the values of a case's feeds and the input parameters of its units.
#pragma once

#include "cases/CaseModel.h"

#include <optional>
#include <string>
#include <vector>

namespace solvane::host {

enum class FeedQuantity { temperature, pressure, vaporFraction, flow, fraction };

struct Variable {
    std::string name{};                     ///< such as "Suction.flow", "efficiency", "K-101.efficiency"
    std::optional<FeedQuantity> quantity{}; ///< of a feed; none for a parameter
    std::size_t owner = 0;                  ///< the place of the feed or the unit in the case
    std::size_t compound = 0;               ///< of a fraction
    ModelParameter values{};                ///< kind, dimensionality and limits of the values
};

/// The input and output parameters of a case's units, by unit.
using UnitParameters = std::vector<std::vector<ModelParameter>>;

/// The name of a parameter in a study: with its unit's name if the case lists its units.
std::string parameterName(const Case& flowsheet, std::size_t unit, const std::string& parameter);

/// The text about a wrong name, with the known one that was probably meant, or all. `what` is the singular.
std::string unknownName(const std::string& what, const std::string& name,
                        const std::vector<std::string>& known);

/// All variables of a case. A feed has the two conditions by which the case gives it, the flow and the
/// fractions.
std::vector<Variable> variablesOf(const Case& flowsheet, const UnitParameters& parameters);

/// Finds a variable by its name, ignoring the case of letters; false with the text of `unknownName`.
[[nodiscard]] bool findVariable(const std::vector<Variable>& variables, const std::string& name,
                                Variable& variable, std::string& error);

} // namespace solvane::host
