/// The checked contents of a case file.
#pragma once

#include "Profile.h"
#include "convergence/FixedPoint.h"
#include "materials/Generation.h"
#include "thermo/Compound.h"

#include <cstdint>
#include <filesystem>
#include <map>
#include <optional>
#include <string>
#include <variant>
#include <vector>

namespace solvane::host {

/// How far the sum of mole fractions may be from 1.
inline constexpr double compositionTolerance = 1e-6;

/// A stream given by the case, at two of temperature, pressure and vapour fraction.
struct FeedStream {
    std::string name{};
    std::optional<double> temperature{};   ///< K
    std::optional<double> pressure{};      ///< Pa
    std::optional<double> vaporFraction{}; ///< mol/mol
    double flow = 0;                       ///< mol/s
    std::vector<double> composition{};     ///< mole fractions in the case's order of compounds
    // The units in which the case states them, for the tables of results; empty for SI units.
    std::string temperatureUnit{};
    std::string pressureUnit{};
    std::string flowUnit{};
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
    std::vector<double> dimensionality{}; ///< exponents of m, kg, s, A, K, mol, cd, rad; empty if not stated
    std::vector<std::string> options{};
    bool restricted = false;
    bool isPlainNumber = false; ///< a case states the value as a number without a unit
};

/// A file of the unit's model.
struct ModelFile {
    std::string name{}; ///< without folders
    std::string bytes{};
    std::filesystem::path path{}; ///< where it was found; empty for text in the case itself
};

/// What a unit is configured with, except its ports.
struct UnitModel {
    std::vector<ModelParameter> parameters{};
    std::vector<std::string> reports{};
    std::map<std::string, std::string> reportTexts{}; ///< of a former run, by report, also of the unit's own
    ModelFile script;
    std::vector<ModelFile> files{};
    bool echo = false;
};

/// A value for an input parameter of the unit, set after its model is loaded.
struct ParameterSetting {
    std::string name;
    ParameterValue value;
    bool isPlainNumber = false; ///< the case states it as a number without a unit
};

struct PortConnection {
    std::string port;
    std::string stream;
};

struct UnitCase {
    std::string progId = "SolvaneUnitOperation.SolvaneUnitOp";
    std::string name = "Unit";
    /// No model, one written out in the case, or the file of a saved one.
    std::variant<std::monostate, UnitModel, ModelFile> model{};
    std::vector<ParameterSetting> parameters{};
    std::vector<PortConnection> feeds{};
    std::vector<PortConnection> products{};
};

/// How the tear streams of recycles converge.
struct Convergence {
    FixedPointMethod method = FixedPointMethod::wegstein;
    double tolerance = 1e-6; ///< of the relative deviations
    std::int32_t limit = 50; ///< of the iterations
};

/// Names are UTF-8 throughout.
struct Case {
    Generation generation = Generation::v11;
    Profile profile = profiles.front();
    std::vector<const Compound*> compounds{};
    std::vector<FeedStream> feeds{}; ///< of the flowsheet
    /// In the order of their calculation: each feed of a unit is one of the flowsheet, a product of a unit
    /// before it, or a tear stream, and feeds no other unit.
    std::vector<UnitCase> units{};
    /// The first guesses of the streams of recycles: each feeds a unit up to the one that makes it.
    std::vector<FeedStream> tears{};
    Convergence convergence{};
    bool isFlowsheet = false; ///< the case lists its units, even if only one
};

} // namespace solvane::host
