/// Message boxes of the unit's windows.
#pragma once

#include "runtime/QuitMessage.h"

#include <string>

namespace solvane {

inline void showError(HWND owner, const std::wstring& text, const wchar_t* title) {
    MessageBoxW(owner, text.c_str(), title, MB_ICONERROR);
}

inline void showInformation(HWND owner, const std::wstring& text, const wchar_t* title) {
    MessageBoxW(owner, text.c_str(), title, MB_ICONINFORMATION);
}

/// Whether the user chooses OK rather than Cancel. `look` has the icon and the default button.
inline bool isConfirmed(HWND owner, const std::wstring& question, const wchar_t* title, UINT look) {
    return MessageBoxW(owner, question.c_str(), title, look | MB_OKCANCEL) == IDOK && !isQuitting();
}

/// Before something is removed; Cancel is the default.
inline bool isRemovalConfirmed(HWND owner, const std::wstring& question, const wchar_t* title) {
    return isConfirmed(owner, question, title, MB_ICONQUESTION | MB_DEFBUTTON2);
}

} // namespace solvane
