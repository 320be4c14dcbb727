#pragma once

#include "HostCommands.h"

namespace CLI {
class App;
}

namespace solvane::host {

struct SweepCommandLine {
    SweepOptions sweep{};
    MergeOptions merge{};
    ServeOptions serve{};
};

/// Adds the commands of studies, which read into `line` and set `result`; both must outlive the app.
void addSweep(CLI::App& app, SweepCommandLine& line, ExitCode& result);

} // namespace solvane::host
