/// The registration of the CAPE-OPEN type library, by which calls pass between apartments and processes.
#pragma once

#include <string>

namespace solvane::host {

/// Whether a type library is registered and its file can be loaded.
bool areInterfacesRegistered();

/// Registers the type library in this program machine-wide. One that another program has registered stays.
/// False with a text. `report` says what was done.
bool registerInterfaces(std::string& report, std::string& error);

/// Removes the registration if it is this program's.
bool unregisterInterfaces(std::string& report, std::string& error);

} // namespace solvane::host
