/// The registration of the CAPE-OPEN type library, which calls between apartments and processes need.
#pragma once

#include <string>

namespace solvane::host {

/// Whether a type library is registered and its file can be loaded.
bool areInterfacesRegistered();

/// Registers this program's type library machine-wide, unless another program has registered one. False with
/// a text. `report` says what was done.
bool registerInterfaces(std::string& report, std::string& error);

/// Removes the registration if it is this program's.
bool unregisterInterfaces(std::string& report, std::string& error);

} // namespace solvane::host
