#pragma once

#include "TextView.h"

namespace solvane {

/// Draws the words of a script in their colours over a view that has just painted itself in black. The text
/// stays plain, so colours do not affect undo, paste or the file.
void paintScriptColours(const TextView& view, const VisibleLines& lines);

} // namespace solvane
