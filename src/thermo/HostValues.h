/// What a host's material gave in answer to a call, checked before it is used.
#pragma once

#include "com/VariantArray.h"

#include <cstddef>
#include <string>
#include <vector>

namespace solvane {

/// Takes just `count` reals. Otherwise false, with the array reader's text or, for another number of values,
/// `wrongCount`.
[[nodiscard]] bool readReals(VariantArray& values, std::size_t count, const char* wrongCount,
                             std::vector<double>& reals, std::string& error);

/// The same for a single value.
[[nodiscard]] bool readScalar(VariantArray& values, const char* wrongCount, double& scalar,
                              std::string& error);

/// A phase of a material by its label, in the form for the host and in that for the script.
struct PhaseLabel {
    Bstr host;
    std::string script;
    bool isNull = false; ///< a null text; both forms are empty then
};

/// Takes the list of phases that are present on a material, where `hr` is the result of the call that gave
/// it.
[[nodiscard]] bool readPresentPhases(IUnknown& material, HRESULT hr, VariantArray& labels,
                                     std::vector<PhaseLabel>& phases, std::string& error);

/// Some 1.0 materials list the whole stream among the phases.
bool isOverallLabel(const PhaseLabel& phase);

} // namespace solvane
