/// What a case file says, checked.
#pragma once

#include "Profile.h"
#include "materials/Material.h"

#include <cstdint>
#include <optional>
#include <string>
#include <variant>
#include <vector>

namespace solvane::host {

/// A feed stream. Two of temperature, pressure and vapour fraction are given.
struct FeedStream {
    std::string name{};                    ///< and of the unit's port
    std::optional<double> temperature{};   ///< K
    std::optional<double> pressure{};      ///< Pa
    std::optional<double> vaporFraction{}; ///< mol/mol
    double flow = 0;                       ///< mol/s
    std::vector<double> composition{};     ///< mole fractions in the case's order of compounds
};

enum class ParameterKind { real, integer, boolean, text };

using ParameterValue = std::variant<double, std::int32_t, bool, std::string>;

/// A parameter of the unit's model. All values are of the parameter's kind.
struct ModelParameter {
    std::string name{};
    ParameterKind kind = ParameterKind::real;
    bool isInput = true;
    std::optional<ParameterValue> value{};
    std::optional<ParameterValue> minimum{};
    std::optional<ParameterValue> maximum{};
    std::optional<ParameterValue> defaultValue{};
    std::vector<double> dimensionality{}; ///< exponents of m, kg, s, A, K, mol, cd, rad; none: not said
    std::vector<std::string> options{};
    bool restricted = false;
};

/// A file of the unit's model.
struct ModelFile {
    std::string name{}; ///< without folders
    std::string bytes{};
};

/// What the unit is configured with. Its ports are those of the streams.
struct UnitModel {
    std::vector<ModelParameter> parameters{};
    std::vector<std::string> reports{};
    ModelFile script;
    std::vector<ModelFile> files{};
    bool echo = false;
};

/// Names are UTF-8 throughout.
struct Case {
    std::string unitProgId = "SolvaneUnitOperation.SolvaneUnitOp";
    std::string unitName = "Unit";
    Generation generation = Generation::v11;
    Profile profile = profiles.front();
    std::vector<const Compound*> compounds;
    std::vector<FeedStream> feeds;
    std::vector<std::string> products;
    std::optional<UnitModel> model; ///< none for a unit that needs none
};

} // namespace solvane::host
