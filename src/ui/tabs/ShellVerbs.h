#pragma once

#include <windows.h>

#include <string>

namespace solvane {

/// Opens a file of the working folder in the editor that the system has for it, or in Notepad. Does not wait
/// until the editor closes. Reports failures to the user.
void openForEditing(HWND owner, const std::wstring& workingFolder, const std::wstring& name);

} // namespace solvane
