#include "ScriptEditor.h"

#include "com/Registry.h"
#include "runtime/PaintMessages.h"
#include "ui/FileDialog.h"
#include "ui/Messages.h"

namespace solvane {

namespace {

constexpr wchar_t settingsKey[] = L"Software\\SolvaneUnitOperation";
constexpr wchar_t editorValue[] = L"Editor";

/// Matlab's editor, beside Matlab's own program. Empty if there is none.
std::wstring matlabEditor() {
    const auto classId = readRegistryString(HKEY_CLASSES_ROOT, L"Matlab.Application\\CLSID", L"");
    if (!classId)
        return {};
    const auto server =
        readRegistryString(HKEY_CLASSES_ROOT, L"CLSID\\" + *classId + L"\\LocalServer32", L"");
    if (!server)
        return {};
    std::wstring editor = server->substr(0, server->rfind(L'\\') + 1);
    if (editor.starts_with(L'"'))
        editor.erase(0, 1);
    editor += L"medit.exe";
    return GetFileAttributesW(editor.c_str()) == INVALID_FILE_ATTRIBUTES ? L"" : editor;
}

} // namespace

void chooseScriptEditor(HWND owner) {
    const FileDialog dialog{.title = L"Select script editor:",
                            .filter = L"Executable files (*.exe)\0*.exe\0All files (*.*)\0*.*\0",
                            .extension = L"exe"};
    const std::wstring editor = dialog.open(owner);
    if (editor.empty())
        return;
    if (writeRegistryString(HKEY_CURRENT_USER, settingsKey, editorValue, editor) == ERROR_SUCCESS)
        showInformation(owner, L"Selected editor has been saved", L"Editor selected");
    else
        showError(owner, L"Failed to save the selected editor", L"Error:");
}

std::wstring findScriptEditor() {
    if (const auto chosen = readRegistryString(HKEY_CURRENT_USER, settingsKey, editorValue))
        return *chosen;
    const std::wstring editor = matlabEditor();
    return editor.empty() ? L"notepad.exe" : editor;
}

void waitForScriptEditor(HANDLE process) {
    PaintMessages paintMessages;
    while (WaitForSingleObject(process, 100) == WAIT_TIMEOUT)
        paintMessages.serve();
}

} // namespace solvane
