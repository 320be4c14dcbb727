#pragma once

#include <string>

namespace solvane {

class CPort;

/// Sets what the script stated of a product on the material that is connected to its port, and flashes it.
bool flashProductPort(CPort& port, std::string& error);

} // namespace solvane
