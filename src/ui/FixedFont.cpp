#include "FixedFont.h"

#include "Dpi.h"

#include <utility>

namespace solvane {

namespace {

/// Null at 100 %.
HFONT scaledFont(int dpi) {
    constexpr int usualHeight = 12; // pixels, of the system's font
    if (dpi == usualDpi)
        return nullptr;
    return CreateFontW(MulDiv(usualHeight, dpi, usualDpi), 0, 0, 0, FW_NORMAL, FALSE, FALSE, FALSE,
                       ANSI_CHARSET, OUT_DEFAULT_PRECIS, CLIP_DEFAULT_PRECIS, DEFAULT_QUALITY,
                       FIXED_PITCH | FF_MODERN, L"Courier New");
}

} // namespace

FixedFont::~FixedFont() {
    DeleteObject(scaled_);
}

void FixedFont::giveTo(HWND control) {
    const HFONT former = std::exchange(scaled_, scaledFont(dpiOf(control)));
    const HGDIOBJ font = scaled_ ? scaled_ : GetStockObject(ANSI_FIXED_FONT);
    SendMessageW(control, WM_SETFONT, reinterpret_cast<WPARAM>(font), FALSE);
    DeleteObject(former);
}

} // namespace solvane
