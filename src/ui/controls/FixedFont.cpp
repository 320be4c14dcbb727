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
    SendMessageW(control, WM_SETFONT, reinterpret_cast<WPARAM>(handle()), FALSE);
    DeleteObject(former);
}

HFONT FixedFont::handle() const {
    return scaled_ ? scaled_ : static_cast<HFONT>(GetStockObject(ANSI_FIXED_FONT));
}

int FixedFont::characterWidth(HWND control) const {
    const HDC device = GetDC(control);
    const HGDIOBJ former = SelectObject(device, handle());
    TEXTMETRICW metrics{};
    GetTextMetricsW(device, &metrics);
    SelectObject(device, former);
    ReleaseDC(control, device);
    return metrics.tmAveCharWidth;
}

} // namespace solvane
