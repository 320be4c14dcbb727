/// The external program in which the user edits the script.
#pragma once

#include <windows.h>

#include <string>

namespace solvane {

/// Lets the user choose the program, for all of the user's units.
void chooseScriptEditor(HWND owner);

/// The chosen program; else the installed Matlab's; else the system's.
std::wstring findScriptEditor();

/// Waits until the program ends. Meanwhile the thread's windows are painted and take no input.
void waitForScriptEditor(HANDLE process);

} // namespace solvane
