#pragma once

#include "TextView.h"

namespace solvane {

/// Draws the words of a script anew in their colours, over a view that has just painted itself in black. The
/// view's text stays plain, so that undo, paste and the file know nothing of colours.
void paintScriptColours(const TextView& view, const VisibleLines& lines);

} // namespace solvane
