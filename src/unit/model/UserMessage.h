#pragma once

#include <windows.h>

#include <string>

namespace solvane {

class Unit;

/// Shows the text (ANSI) in a message box without an owner and waits for the answer. In a process whose
/// desktop nobody sees, such as a service, where a box would wait for ever, the text goes to the host's log.
void tellUser(Unit& unit, const std::string& text, const char* title, UINT style);

} // namespace solvane
