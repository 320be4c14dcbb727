/// Where in the user's own script an error is.
#pragma once

#include "TextView.h"

#include <optional>
#include <string>

namespace solvane {

/// The place that the failure of a run names, counted in the user's script. Nothing where it names none, or
/// one in another function's file.
std::optional<TextPlace> findErrorPlace(const std::wstring& error, const std::wstring& script);

} // namespace solvane
