#pragma once

#include <windows.h>

#include <commdlg.h>

#include <string>

namespace solvane {

/// A dialog that asks for a file. The filter is a list of labels and patterns, each ended by a NUL.
struct FileDialog {
    const wchar_t* title;
    const wchar_t* filter;
    const wchar_t* extension; ///< added to a name without an extension; may be null
    DWORD flags = OFN_EXPLORER | OFN_FILEMUSTEXIST | OFN_HIDEREADONLY;
    std::wstring start{}; ///< the name shown at first

    // Empty if the user cancelled.
    std::wstring open(HWND owner) const { return ask(owner, GetOpenFileNameW); }
    std::wstring save(HWND owner) const { return ask(owner, GetSaveFileNameW); }

private:
    std::wstring ask(HWND owner, BOOL(WINAPI* dialog)(OPENFILENAMEW*)) const;
};

} // namespace solvane
