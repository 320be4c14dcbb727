/// Names of ports are unique across both lists. The case of ASCII letters is ignored.
#pragma once

#include <string>

namespace solvane {

class CPort;
class Unit;

/// Whether a port of the unit other than `except` has this name.
bool isPortName(const Unit& unit, const std::wstring& name, const CPort* except = nullptr);

/// `word` with the smallest number from 1 that makes it the name of no port: "Feed 1".
std::wstring freePortName(const Unit& unit, const std::wstring& word);

/// The name of what is connected. Empty where nothing is or where it has no names, "<unnamed>" where it does
/// not tell.
std::wstring connectedName(const CPort& port);

} // namespace solvane
