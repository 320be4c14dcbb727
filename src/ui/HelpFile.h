#pragma once

namespace solvane {

/// Opens the help file beside the module. Returns false without a help file or a viewer.
bool openHelp();

} // namespace solvane
