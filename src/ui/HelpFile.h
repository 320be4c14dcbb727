#pragma once

namespace solvane {

/// Opens the help file that lies beside the module. False where there is none, or no viewer of such files.
bool openHelp();

} // namespace solvane
