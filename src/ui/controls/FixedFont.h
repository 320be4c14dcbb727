#pragma once

#include <windows.h>

namespace solvane {

/// The font of scripts and reports: the system's fixed-pitch font, scaled on screens with larger text, which
/// that font does not follow. Must outlive the control.
class FixedFont {
public:
    FixedFont() = default;
    FixedFont(const FixedFont&) = delete;
    FixedFont& operator=(const FixedFont&) = delete;
    ~FixedFont();

    /// Sizes the font for the screen that shows the control.
    void giveTo(HWND control);
    HFONT handle() const;
    /// Of each character, in pixels.
    int characterWidth(HWND control) const;

private:
    HFONT scaled_ = nullptr;
};

} // namespace solvane
