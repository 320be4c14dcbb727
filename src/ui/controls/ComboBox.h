/// Drop-down lists of fixed entries, of which one is always selected.
#pragma once

#include <windows.h>

#include <initializer_list>

namespace solvane {

inline void fillComboBox(HWND comboBox, std::initializer_list<const wchar_t*> entries, int selected) {
    for (const wchar_t* entry : entries)
        SendMessageW(comboBox, CB_ADDSTRING, 0, reinterpret_cast<LPARAM>(entry));
    SendMessageW(comboBox, CB_SETCURSEL, static_cast<WPARAM>(selected), 0);
}

inline int selectedEntry(HWND comboBox) {
    return static_cast<int>(SendMessageW(comboBox, CB_GETCURSEL, 0, 0));
}

} // namespace solvane
