/// Message boxes of the unit's windows.
#pragma once

#include <windows.h>

#include <string>

namespace solvane {

inline void showError(HWND owner, const std::wstring& text, const wchar_t* title) {
    MessageBoxW(owner, text.c_str(), title, MB_ICONERROR);
}

inline void showInformation(HWND owner, const std::wstring& text, const wchar_t* title) {
    MessageBoxW(owner, text.c_str(), title, MB_ICONINFORMATION);
}

/// Before something is removed; Cancel is the default.
inline bool isRemovalConfirmed(HWND owner, const std::wstring& question, const wchar_t* title) {
    return MessageBoxW(owner, question.c_str(), title, MB_ICONQUESTION | MB_OKCANCEL | MB_DEFBUTTON2) == IDOK;
}

} // namespace solvane
