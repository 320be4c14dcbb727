/// The program outside in which the user edits the script.
#pragma once

#include <windows.h>

#include <string>

namespace solvane {

/// Lets the user choose the program, for all of the user's units.
void chooseScriptEditor(HWND owner);

/// The chosen program; else the installed Matlab's; else the system's.
std::wstring findScriptEditor();

/// Until the program has ended. Meanwhile the thread's windows are painted, and nothing else happens to them.
void waitForScriptEditor(HANDLE process);

} // namespace solvane
