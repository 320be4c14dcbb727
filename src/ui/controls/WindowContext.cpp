#include "WindowContext.h"

#include "com/Module.h"

#include <commctrl.h>

namespace solvane {

namespace {

/// Windows from 10 on have it. Null elsewhere.
void* setAwareness(void* awareness) {
    using SetThreadDpiAwareness = void*(WINAPI*)(void*);
    const auto set = reinterpret_cast<SetThreadDpiAwareness>(reinterpret_cast<void*>(
        GetProcAddress(GetModuleHandleW(L"user32.dll"), "SetThreadDpiAwarenessContext")));
    return set && awareness ? set(awareness) : nullptr;
}

void* const perMonitor = reinterpret_cast<void*>(-4); // DPI_AWARENESS_CONTEXT_PER_MONITOR_AWARE_V2

} // namespace

WindowContext::WindowContext() {
    ACTCTXW manifest{};
    manifest.cbSize = sizeof manifest;
    manifest.dwFlags = ACTCTX_FLAG_RESOURCE_NAME_VALID | ACTCTX_FLAG_HMODULE_VALID;
    manifest.hModule = ComModule::current().instance;
    manifest.lpResourceName = MAKEINTRESOURCEW(2); // where a library has its manifest
    const std::wstring path = ComModule::current().path();
    manifest.lpSource = path.c_str();
    styles_ = CreateActCtxW(&manifest);
    if (styles_ != INVALID_HANDLE_VALUE)
        ActivateActCtx(styles_, &cookie_);
    const INITCOMMONCONTROLSEX classes{sizeof classes,
                                       ICC_TAB_CLASSES | ICC_LISTVIEW_CLASSES | ICC_STANDARD_CLASSES};
    InitCommonControlsEx(&classes);
    LoadLibraryW(L"riched20.dll"); // stays: its windows' class is the process's
    formerAwareness_ = setAwareness(perMonitor);
}

WindowContext::~WindowContext() {
    setAwareness(formerAwareness_);
    if (styles_ == INVALID_HANDLE_VALUE)
        return;
    DeactivateActCtx(0, cookie_);
    ReleaseActCtx(styles_);
}

} // namespace solvane
