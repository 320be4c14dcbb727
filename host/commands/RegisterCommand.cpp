#include "HostCommands.h"

#include "flowsheet/InterfaceRegistration.h"

namespace solvane::host {

ExitCode registerCommand(bool unregister) {
    std::string report, error;
    const bool done = unregister ? unregisterInterfaces(report, error) : registerInterfaces(report, error);
    if (!done)
        return complain(calculationFailed, error);
    print(stdout, report + "\n");
    return ok;
}

} // namespace solvane::host
