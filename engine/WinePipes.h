#pragma once

#include "com/Handle.h"
#include "link/EngineProtocol.h"

namespace solvane::engine {

/// Opens an end of a pipe of a Linux process. Null if it cannot be found, as on Windows.
FileHandle openWinePipe(const PipeEnd& end, DWORD access);

} // namespace solvane::engine
