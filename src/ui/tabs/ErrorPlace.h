/// Where an error is in the user's script.
#pragma once

#include "ui/controls/TextView.h"

#include <optional>
#include <string>

namespace solvane {

/// The place that a run's error text names, counted in the user's script. Nothing if the text names none or
/// one in another file.
std::optional<TextPlace> findErrorPlace(const std::wstring& error, const std::wstring& script);

} // namespace solvane
