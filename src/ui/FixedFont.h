#pragma once

#include <windows.h>

namespace solvane {

/// The font of scripts and reports: the system's fixed-pitch font, and where the screen asks for larger text,
/// which that font does not follow, the same one in its size. It has to outlive the control.
class FixedFont {
public:
    FixedFont() = default;
    FixedFont(const FixedFont&) = delete;
    FixedFont& operator=(const FixedFont&) = delete;
    ~FixedFont();

    /// The size is that of the screen that the control is on.
    void giveTo(HWND control);
    HFONT handle() const;
    /// Of each character, in pixels.
    int characterWidth(HWND control) const;

private:
    HFONT scaled_ = nullptr;
};

} // namespace solvane
