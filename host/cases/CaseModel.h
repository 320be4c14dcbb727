/// What a case file says, checked.
#pragma once

#include "Profile.h"
#include "materials/Material.h"

#include <cstdint>
#include <filesystem>
#include <optional>
#include <string>
#include <variant>
#include <vector>

namespace solvane::host {

/// A stream that the case gives. Two of temperature, pressure and vapour fraction are given.
struct FeedStream {
    std::string name{};
    std::optional<double> temperature{};   ///< K
    std::optional<double> pressure{};      ///< Pa
    std::optional<double> vaporFraction{}; ///< mol/mol
    double flow = 0;                       ///< mol/s
    std::vector<double> composition{};     ///< mole fractions in the case's order of compounds
};

enum class ParameterKind { real, integer, boolean, text };

/// The alternatives stand in the order of ParameterKind.
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
    std::filesystem::path path{}; ///< where it was found; empty for what the case itself tells
};

/// What a unit is configured with, its ports aside.
struct UnitModel {
    std::vector<ModelParameter> parameters{};
    std::vector<std::string> reports{};
    ModelFile script;
    std::vector<ModelFile> files{};
    bool echo = false;
};

/// A value that an input parameter of the unit gets once its model is loaded.
struct ParameterSetting {
    std::string name;
    ParameterValue value;
};

struct PortConnection {
    std::string port;
    std::string stream;
};

struct UnitCase {
    std::string progId = "SolvaneUnitOperation.SolvaneUnitOp";
    std::string name = "Unit";
    /// None for a unit that needs none, one that the case tells, or the file of a saved one.
    std::variant<std::monostate, UnitModel, ModelFile> model{};
    std::vector<ParameterSetting> parameters{};
    std::vector<PortConnection> feeds{};
    std::vector<PortConnection> products{};
};

/// Names are UTF-8 throughout.
struct Case {
    Generation generation = Generation::v11;
    Profile profile = profiles.front();
    std::vector<const Compound*> compounds{};
    std::vector<FeedStream> feeds{}; ///< of the flowsheet
    /// In the order of their calculation: each feed of a unit is one of the flowsheet or a product of a unit
    /// before it, and feeds no other unit.
    std::vector<UnitCase> units{};
    bool isFlowsheet = false; ///< the case lists its units, be it a single one
};

} // namespace solvane::host
