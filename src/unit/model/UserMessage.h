#pragma once

#include <windows.h>

#include <string>

namespace solvane {

class Unit;

/// Shows the text (ANSI) in a message box without an owner and waits for the answer. In a process without a
/// visible desktop, such as a service, where a box would wait forever, it writes to the host's log.
void showUserMessage(Unit& unit, const std::string& text, const char* title, UINT style);

} // namespace solvane
