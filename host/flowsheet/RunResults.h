/// What a run of a case gave. Texts are UTF-8, quantities SI.
#pragma once

#include "materials/Material.h"

#include <cstdint>
#include <string>
#include <variant>
#include <vector>

namespace solvane::host {

struct StreamResult {
    std::string name;
    double temperature = 0;       ///< K
    double pressure = 0;          ///< Pa
    double totalFlow = 0;         ///< mol/s
    std::vector<double> fraction; ///< mole fractions in the results' order of compounds
    double vaporFraction = 0;     ///< mol/mol
    double enthalpy = 0;          ///< J/mol
};

/// A value that a parameter can have; std::monostate for any other type.
using ResultValue = std::variant<std::monostate, double, std::int32_t, bool, std::string>;

struct ParameterResult {
    std::string name;
    bool isInput = true;
    std::string unit; ///< empty where the parameter tells no dimensionality
    ResultValue value;
};

struct ReportResult {
    std::string name;
    std::string text;
};

struct RunResults {
    Generation generation = Generation::v11;
    std::vector<std::string> compounds;
    std::vector<StreamResult> streams; ///< feeds, then products
    std::vector<ParameterResult> parameters;
    std::vector<ReportResult> reports;
};

} // namespace solvane::host
