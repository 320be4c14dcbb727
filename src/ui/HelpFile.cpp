#include "HelpFile.h"

#include "com/Module.h"
#include "com/Registry.h"

#include <windows.h>

#include <string>

namespace solvane {

namespace {

constexpr UINT displayTopic = 0; // HH_DISPLAY_TOPIC
using HtmlHelpFunction = HWND(WINAPI*)(HWND caller, LPCWSTR file, UINT command, DWORD_PTR data);

/// The system's viewer, looked up once per process. Null if there is none.
HtmlHelpFunction htmlHelp() {
    static const HtmlHelpFunction function = []() -> HtmlHelpFunction {
        const auto registered = readRegistryString(
            HKEY_CLASSES_ROOT, L"CLSID\\{ADB880A6-D8FF-11CF-9377-00AA003B7A11}\\InprocServer32", L"");
        HMODULE viewer = registered ? LoadLibraryW(registered->c_str()) : nullptr;
        if (!viewer)
            viewer = LoadLibraryW(L"hhctrl.ocx");
        constexpr WORD ordinal = 15;
        return viewer ? reinterpret_cast<HtmlHelpFunction>(
                            reinterpret_cast<void*>(GetProcAddress(viewer, MAKEINTRESOURCEA(ordinal))))
                      : nullptr;
    }();
    return function;
}

} // namespace

bool openHelp() {
    const std::wstring file = ComModule::current().pathBeside(L"SolvaneUnitOperation.chm");
    const HtmlHelpFunction show = htmlHelp();
    return show && show(nullptr, file.c_str(), displayTopic, 0) != nullptr;
}

} // namespace solvane
