#include "Dpi.h"

namespace solvane {

/// Windows from 10 on knows it for each screen.
int dpiOf(HWND window) {
    using GetDpi = UINT(WINAPI*)(HWND);
    const auto ofWindow = reinterpret_cast<GetDpi>(
        reinterpret_cast<void*>(GetProcAddress(GetModuleHandleW(L"user32.dll"), "GetDpiForWindow")));
    if (ofWindow)
        return static_cast<int>(ofWindow(window));
    const HDC device = GetDC(window);
    const int dpi = GetDeviceCaps(device, LOGPIXELSY);
    ReleaseDC(window, device);
    return dpi;
}

} // namespace solvane
