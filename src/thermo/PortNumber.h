#pragma once

#include "CalculationRun.h"
#include "unit/model/CPort.h"

#include <cstdint>
#include <string>
#include <vector>

namespace solvane {

/// The run's port with the script's `number`, from 1. Null with a text that names the command.
[[nodiscard]] inline CPort* findPort(CalculationRun& run, const std::vector<ComRef<CPort>>& ports,
                                     std::int32_t number, const char* command, std::string& error) {
    if (number >= 1 && static_cast<std::size_t>(number) <= ports.size())
        return ports[static_cast<std::size_t>(number) - 1].get();
    error = std::string("port number out of range for ") + command;
    run.hint = (ports.empty()       ? "the unit has no such port"
                : ports.size() == 1 ? "expected 1"
                                    : "expected 1 to " + std::to_string(ports.size())) +
               (", got " + std::to_string(number));
    return nullptr;
}

} // namespace solvane
