#include "ShellVerbs.h"

#include "ui/FileNames.h"
#include "ui/Messages.h"
#include "ui/StartProgram.h"

#include <shellapi.h>

namespace solvane {

namespace {

/// ShellExecute returns errors below this code and success above it.
constexpr INT_PTR shellErrorEnd = 32;

INT_PTR carryOut(HWND owner, const wchar_t* verb, const std::wstring& path) {
    return reinterpret_cast<INT_PTR>(
        ShellExecuteW(owner, verb, path.c_str(), nullptr, nullptr, SW_SHOWNORMAL));
}

void startNotepad(HWND owner, const std::wstring& workingFolder, const std::wstring& name) {
    const std::wstring command = L"notepad.exe \"" + workingFolder + name + L"\"";
    if (!startProgram(command, workingFolder, false))
        showError(owner, command, L"Failed to run command:");
}

} // namespace

void openForEditing(HWND owner, const std::wstring& workingFolder, const std::wstring& name) {
    if (isScriptLike(name))
        return startNotepad(owner, workingFolder, name);
    const std::wstring path = workingFolder + name;
    INT_PTR code = carryOut(owner, L"edit", path);
    if (code < shellErrorEnd)
        code = carryOut(owner, L"open", path);
    if (code < shellErrorEnd)
        return startNotepad(owner, workingFolder, name);
    if (code == shellErrorEnd)
        showError(owner, path, L"Failed to edit file:");
}

} // namespace solvane
