#pragma once

#include <windows.h>

namespace solvane {

/// Gives the thread what the unit's windows need while they are open, whatever the host's windows use:
/// controls in the system's visual style, and sharp text on every monitor.
class WindowContext {
public:
    WindowContext();
    ~WindowContext();
    WindowContext(const WindowContext&) = delete;
    WindowContext& operator=(const WindowContext&) = delete;

private:
    HANDLE styles_;
    ULONG_PTR cookie_ = 0;
    void* formerAwareness_ = nullptr;
};

} // namespace solvane
