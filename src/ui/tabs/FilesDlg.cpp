#include "FilesDlg.h"

#include "BackupCopy.h"
#include "ShellVerbs.h"
#include "com/CapeError.h"
#include "com/Handle.h"
#include "com/Text.h"
#include "resources/ResourceIds.h"
#include "ui/FileDialog.h"
#include "ui/FileNames.h"
#include "ui/Messages.h"
#include "ui/controls/InputDlg.h"
#include "ui/controls/Layout.h"
#include "unit/model/Unit.h"

#include <commctrl.h>

#include <array>

namespace solvane {

namespace {

constexpr std::array<const wchar_t*, 1> columns{L"File"};

constexpr std::array buttons{IDC_FILES_BROWSE, IDC_FILES_NEW,    IDC_FILES_OPEN,
                             IDC_FILES_RENAME, IDC_FILES_REMOVE, IDC_FILES_SAVE_AS};

constexpr wchar_t openFilter[] =
    L"Matlab Script files (*.m)\0*.m\0Application extensions (*.dll)\0*.dll\0All files (*.*)\0*.*\0";
constexpr wchar_t saveFilter[] = L"All files (*.*)\0*.*\0";

} // namespace

CFilesDlg::CFilesDlg(Unit& unit, CEditDlg& mainWindow) : Tab(IDD_FILES, unit, mainWindow) {}

void CFilesDlg::onInit() {
    list_ = ListView(control(IDC_FILES_LIST), columns);
    for (const std::string& name : unit_.additionalFiles)
        makeBackupCopy(unit_.workingFolder.path(), name, unit_.additionalFiles);
    RefreshFromModel();
}

void CFilesDlg::RefreshFromModel() {
    std::vector<std::vector<std::wstring>> rows;
    for (const std::string& name : unit_.additionalFiles)
        rows.push_back({widen(name)});
    list_.fill(rows);
    updateButtons();
}

void CFilesDlg::updateButtons() const {
    const HWND focus = GetFocus();
    const int row = list_.selected();
    for (const int id : {IDC_FILES_RENAME, IDC_FILES_REMOVE, IDC_FILES_SAVE_AS})
        enable(id, row >= 0);
    enable(IDC_FILES_OPEN, row >= 0 && !isExecutableLike(widen(nameOf(row))));
    // A disabled button would keep the keyboard focus.
    if (IsChild(window(), focus) && !IsWindowEnabled(focus))
        SendMessageW(window(), WM_NEXTDLGCTL, reinterpret_cast<WPARAM>(list_.window()), TRUE);
}

void CFilesDlg::onCommand(int id, int) {
    switch (id) {
    case IDC_FILES_BROWSE:
        return browse();
    case IDC_FILES_NEW:
        return newScript();
    case IDC_FILES_OPEN:
        return open();
    case IDC_FILES_RENAME:
        return rename();
    case IDC_FILES_REMOVE:
        return remove();
    case IDC_FILES_SAVE_AS:
        return saveAs();
    default:
        return;
    }
}

LRESULT CFilesDlg::onNotify(const NMHDR& header) {
    if (header.idFrom == IDC_FILES_LIST && header.code == LVN_ITEMCHANGED)
        updateButtons();
    return 0;
}

/// Copies a file of the user into the model. Unlike for a new script, the reserved names are checked first.
void CFilesDlg::browse() {
    constexpr wchar_t title[] = L"Add file:";
    const FileDialog dialog{.title = L"Open model file:", .filter = openFilter, .extension = nullptr};
    const std::wstring path = dialog.open(window());
    if (path.empty())
        return;
    const std::wstring name = path.substr(path.rfind(L'\\') + 1);
    if (isReservedFileName(name))
        return showError(window(), L"This file name is reserved, you cannot add a file with this name",
                         title);
    if (isListed(name))
        return showError(window(), L"A file with this name is already present. Please remove this file first",
                         title);
    if (isRefused(name, title))
        return;
    if (!CopyFileW(path.c_str(), pathOf(name).c_str(), FALSE))
        return showError(window(),
                         L"Unable to copy file: " + FormatHresultText(static_cast<HRESULT>(GetLastError())),
                         title);
    append(name);
}

void CFilesDlg::newScript() {
    constexpr wchar_t title[] = L"New file:";
    std::optional<std::wstring> name = askText(L"Add script file:", L"Enter script name:");
    if (!name)
        return;
    if (name->find(L'.') == std::wstring::npos)
        *name += L".m";
    if (isListed(*name))
        return showError(
            window(),
            L"A file with name \"" + *name + L"\" is already present. Please remove this file first", title);
    if (isReservedFileName(*name))
        return showError(window(),
                         L"File name \"" + *name + L"\" is reserved. Please choose a different name.", title);
    if (isRefused(*name, title))
        return;
    if (!FileHandle(CreateFileW(pathOf(*name).c_str(), GENERIC_WRITE, 0, nullptr, CREATE_ALWAYS,
                                FILE_ATTRIBUTE_NORMAL, nullptr)))
        return showError(window(), L"Failed to create file \"" + *name + L"\".", title);
    append(*name);
}

void CFilesDlg::open() {
    const int row = list_.selected();
    if (row < 0)
        return;
    const std::wstring name = widen(nameOf(row));
    if (!isExecutableLike(name))
        openForEditing(window(), workingFolder(), name);
}

/// Deletes a file that has the new name, even if that is the renamed file itself under its own name.
void CFilesDlg::rename() {
    constexpr wchar_t title[] = L"Rename:";
    const int row = list_.selected();
    if (row < 0)
        return;
    const std::wstring oldName = widen(nameOf(row));
    const std::optional<std::wstring> name =
        askText(L"Rename file:", L"Enter new file name:", oldName.c_str());
    if (!name)
        return;
    if (name->empty())
        return showError(window(), L"File name cannot be empty", title);
    if (isReservedFileName(*name))
        return showError(window(), L"The specified file name is reserved. Please choose a different name.",
                         title);
    if (isListed(*name, row))
        return showError(window(), L"A file with that name already exists. Please remove that file first",
                         title);
    if (isRefused(*name, title))
        return;
    DeleteFileW(pathOf(*name).c_str());
    if (!MoveFileW(pathOf(oldName).c_str(), pathOf(*name).c_str()))
        return showError(window(), L"Failed to rename file", title);
    unit_.markChanged();
    nameOf(row) = narrow(*name);
    RefreshFromModel();
    list_.select(row);
}

/// The file is no longer part of the model, but stays in the working folder until the unit ends.
void CFilesDlg::remove() {
    const int row = list_.selected();
    if (row < 0 || !isRemovalConfirmed(window(),
                                       L"Remove file \"" + widen(nameOf(row)) +
                                           L"\"? File will be deleted and there is no undo.",
                                       L"Remove file:"))
        return;
    unit_.additionalFiles.erase(unit_.additionalFiles.begin() + row);
    RefreshFromModel();
    unit_.markChanged();
}

void CFilesDlg::saveAs() {
    const int row = list_.selected();
    if (row < 0)
        return;
    const std::wstring name = widen(nameOf(row));
    const FileDialog dialog{.title = L"Export external file:",
                            .filter = saveFilter,
                            .extension = nullptr,
                            .flags = OFN_EXPLORER | OFN_FILEMUSTEXIST | OFN_OVERWRITEPROMPT,
                            .start = name};
    const std::wstring path = dialog.save(window());
    if (!path.empty() && !CopyFileW(pathOf(name).c_str(), path.c_str(), FALSE))
        showError(window(), L"Failed to copy file.", L"Export file:");
}

void CFilesDlg::append(const std::wstring& name) {
    unit_.additionalFiles.push_back(narrow(name));
    unit_.markChanged();
    RefreshFromModel();
    list_.select(list_.count() - 1);
}

bool CFilesDlg::isListed(const std::wstring& name, int except) const {
    for (int row = 0; row < static_cast<int>(unit_.additionalFiles.size()); ++row)
        if (row != except && compareNoCase(widen(nameOf(row)), name) == 0)
            return true;
    return false;
}

bool CFilesDlg::isRefused(const std::wstring& name, const wchar_t* title) const {
    const char* fault = fileNameFault(name);
    if (fault)
        showError(window(), L"A model cannot hold a file named \"" + name + L"\": " + widen(fault) + L".",
                  title);
    return fault != nullptr;
}

std::string& CFilesDlg::nameOf(int row) const {
    return unit_.additionalFiles[static_cast<std::size_t>(row)];
}

std::wstring CFilesDlg::workingFolder() const {
    return widen(unit_.workingFolder.path());
}

void CFilesDlg::onSize(int width, int height) {
    const Box label = boxOf(control(IDC_FILES_LABEL));
    const int listTop = layoutMargin + label.height;
    const auto [left, top, buttonWidth, buttonHeight] = boxOf(control(IDC_FILES_BROWSE));
    const int buttonTop = height - layoutMargin - buttonHeight;
    const int fullWidth = width - 2 * layoutMargin;
    {
        Layout layout;
        layout.move(control(IDC_FILES_LABEL), {layoutMargin, layoutMargin, fullWidth, label.height});
        layout.move(list_.window(), {layoutMargin, listTop, fullWidth, buttonTop - layoutMargin - listTop});
        int place = layoutMargin;
        for (const int id : buttons) {
            layout.move(control(id), {place, buttonTop, buttonWidth, buttonHeight});
            place += buttonWidth + layoutMargin;
        }
    }
    list_.fillWidth();
}

/// An external editor may have changed a file.
void CFilesDlg::onDestroy() {
    for (const std::string& name : unit_.additionalFiles) {
        if (unit_.modelEdited)
            return;
        if (differsFromBackupCopy(unit_.workingFolder.path(), name, unit_.additionalFiles))
            unit_.markChanged();
    }
}

} // namespace solvane
