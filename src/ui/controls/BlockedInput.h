#pragma once

#include <windows.h>

namespace solvane {

/// Spans a time in which the window's thread is busy and takes no messages. Clicks and keys of an impatient
/// user are discarded at its end, so that they do not hit what is shown by then.
class BlockedInput {
public:
    explicit BlockedInput(HWND window) : window_(window) {}
    ~BlockedInput();
    BlockedInput(const BlockedInput&) = delete;
    BlockedInput& operator=(const BlockedInput&) = delete;

private:
    HWND window_;
};

/// Shown for its lifetime.
class WaitCursor {
public:
    WaitCursor() : former_(SetCursor(LoadCursorW(nullptr, IDC_WAIT))) {}
    ~WaitCursor() { SetCursor(former_); }
    WaitCursor(const WaitCursor&) = delete;
    WaitCursor& operator=(const WaitCursor&) = delete;

private:
    HCURSOR former_;
};

} // namespace solvane
