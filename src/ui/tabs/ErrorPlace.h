/// Where an error is in the user's script.
#pragma once

#include "channel/ErrorStack.h"

#include <string>
#include <vector>

namespace solvane {

/// Where a run failed, innermost first, counted in the user's files: what the engine printed after the run's
/// `output`, otherwise the place in the script that the error's text names. Nothing if neither names one.
std::vector<ErrorPlace> findErrorPlaces(const std::wstring& output, const std::wstring& error,
                                        const std::wstring& script);

} // namespace solvane
