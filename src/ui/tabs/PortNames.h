/// Port names are unique across both lists, ignoring the case of ASCII letters.
#pragma once

#include <string>

namespace solvane {

class CPort;
class Unit;

/// Whether a port of the unit other than `except` has this name.
bool isPortName(const Unit& unit, const std::wstring& name, const CPort* except = nullptr);

/// `word` with the smallest number from 1 that gives an unused name: "Feed 1".
std::wstring freePortName(const Unit& unit, const std::wstring& word);

/// The name of the connected stream. Empty if there is none or it cannot have a name, "<unnamed>" if it does
/// not return one.
std::wstring connectedName(const CPort& port);

} // namespace solvane
