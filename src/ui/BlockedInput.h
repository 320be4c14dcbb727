#pragma once

#include <windows.h>

namespace solvane {

/// For its lifetime the window's thread is busy and takes no messages. The clicks and keys of an impatient
/// user wait meanwhile; at the end they are thrown away, so that none of them hits what stands there by then.
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
