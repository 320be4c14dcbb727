#pragma once

#include <windows.h>

#include <string>

namespace solvane {

/// Shows a file of the working folder in an editor: the one that the system has for it, or Notepad. Does not
/// wait for the editor's end. Failures are told to the user.
void openForEditing(HWND owner, const std::wstring& workingFolder, const std::wstring& name);

} // namespace solvane
