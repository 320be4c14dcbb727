/// Checks the values that a host's material returns.
#pragma once

#include "com/VariantArray.h"

#include <cstddef>
#include <string>
#include <vector>

namespace solvane {

/// Reads exactly `count` reals, which stay in `values`. Otherwise false, with the array reader's text or, for
/// another number of values, `wrongCount`.
[[nodiscard]] bool checkReals(VariantArray& values, std::size_t count, const char* wrongCount,
                              std::string& error);

/// The same with a copy of the values.
[[nodiscard]] bool readReals(VariantArray& values, std::size_t count, const char* wrongCount,
                             std::vector<double>& reals, std::string& error);

/// The same for a single value.
[[nodiscard]] bool readScalar(VariantArray& values, const char* wrongCount, double& scalar,
                              std::string& error);

/// The label of a material's phase, in the host's form and in the script's.
struct PhaseLabel {
    Bstr host;
    std::string script;
    bool isNull = false; ///< a null text; both forms are empty then
};

/// Reads the list of phases that are present on a material; `hr` is the result of the call that returned
/// it.
[[nodiscard]] bool readPresentPhases(IUnknown& material, HRESULT hr, VariantArray& labels,
                                     std::vector<PhaseLabel>& phases, std::string& error);

/// Some 1.0 materials list the whole stream among the phases.
bool isOverallLabel(const PhaseLabel& phase);

} // namespace solvane
