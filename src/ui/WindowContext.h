#pragma once

#include <windows.h>

namespace solvane {

/// What the unit's windows need of the thread while they are open, whatever the host's own windows use: the
/// controls of the system's visual style, and sharp text on every monitor.
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
