#include "HostWindow.h"

#include "com/Text.h"

#include <array>
#include <string>

namespace solvane {

namespace {

BOOL CALLBACK takeAspenPlusWindow(HWND window, LPARAM result) {
    std::array<char, 0x200> title{};
    if (!IsWindowVisible(window) || !GetWindowTextA(window, title.data(), static_cast<int>(title.size())) ||
        std::string(title.data()).find("Aspen Plus") == std::string::npos)
        return TRUE;
    *reinterpret_cast<HWND*>(result) = window;
    return FALSE;
}

} // namespace

HWND FindHostWindow() {
    HWND window = GetActiveWindow();
    if (window && IsWindowVisible(window))
        return window;
    // Aspen Plus calculates in a process without windows; the flowsheet's window belongs to another process.
    if (toLower(GetCommandLineW()).find(L"apmain") == std::wstring::npos)
        return window;
    HWND found = nullptr;
    EnumWindows(takeAspenPlusWindow, reinterpret_cast<LPARAM>(&found));
    return found;
}

} // namespace solvane
