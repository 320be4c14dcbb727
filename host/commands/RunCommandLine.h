#pragma once

#include "HostCommands.h"

namespace CLI {
class App;
}

namespace solvane::host {

/// Adds the command "run", which reads into `run` and sets `result`; both must outlive the app.
void addRun(CLI::App& app, RunOptions& run, ExitCode& result);

} // namespace solvane::host
