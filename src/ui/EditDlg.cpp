#include "EditDlg.h"

#include "FileDialog.h"
#include "FileNames.h"
#include "HelpFile.h"
#include "Messages.h"
#include "com/Failure.h"
#include "com/Module.h"
#include "com/Text.h"
#include "persistence/ModelContainer.h"
#include "persistence/ModelFile.h"
#include "resources/ResourceIds.h"
#include "ui/controls/Dpi.h"
#include "ui/controls/Layout.h"
#include "ui/tabs/AboutDlg.h"
#include "ui/tabs/FilesDlg.h"
#include "ui/tabs/MatlabDlg.h"
#include "ui/tabs/ParameterDlg.h"
#include "ui/tabs/PortDlg.h"
#include "ui/tabs/ReportDlg.h"
#include "unit/model/Unit.h"

#include <commctrl.h>

#include <array>

namespace solvane {

namespace {

template <class Page>
std::unique_ptr<Tab> make(Unit& unit, CEditDlg& mainWindow) {
    return std::make_unique<Page>(unit, mainWindow);
}

struct TabRow {
    const wchar_t* label;
    std::unique_ptr<Tab> (*make)(Unit& unit, CEditDlg& mainWindow);
};
constexpr auto tabRows = std::to_array<TabRow>({
    {L"Ports", make<CPortDlg>},
    {L"Parameters", make<CParameterDlg>},
    {L"Reports", make<CReportDlg>},
    {L"Matlab", make<CMatlabDlg>},
    {L"Additional files", make<CFilesDlg>},
    {L"About", make<CAboutDlg>},
});

// Where the last window of this process was: the next one opens there, whichever unit it belongs to.
int lastTab = 0;
RECT lastPlace{};

constexpr wchar_t modelFilter[] =
    L"Solvane Unit-Operation Model files (*.SVM)\0*.svm\0All files (*.*)\0*.*\0";

/// Model files are opened by ANSI names.
bool isUsablePath(const std::wstring& path, std::string& error) {
    if (isInCodePage(path))
        return true;
    return fail(error, "The path holds a character that the system's ANSI code page does not have. "
                       "Choose a file whose folder and name do without it.");
}

} // namespace

CEditDlg::CEditDlg(Unit& unit) : Dialog(IDD_EDIT), unit_(unit) {}

void CEditDlg::onInit() {
    const HINSTANCE instance = ComModule::current().instance;
    for (const auto& [kind, metric] : {std::pair{ICON_BIG, SM_CXICON}, std::pair{ICON_SMALL, SM_CXSMICON}}) {
        const int size = GetSystemMetrics(metric);
        const HANDLE icon =
            LoadImageW(instance, MAKEINTRESOURCEW(IDI_UNIT), IMAGE_ICON, size, size, LR_SHARED);
        SendMessageW(window(), WM_SETICON, static_cast<WPARAM>(kind), reinterpret_cast<LPARAM>(icon));
    }
    RECT start{};
    GetWindowRect(window(), &start);
    smallest_ = {start.right - start.left, start.bottom - start.top};
    dpi_ = dpiOf(window());

    const HWND tabControl = control(IDC_EDIT_TABS);
    for (const TabRow& row : tabRows) {
        tabs_.push_back(row.make(unit_, *this));
        tabs_.back()->createPage(tabControl);
        TCITEMW item{};
        item.mask = TCIF_TEXT;
        item.pszText = const_cast<LPWSTR>(row.label);
        TabCtrl_InsertItem(tabControl, static_cast<int>(tabs_.size()) - 1, &item);
    }
    TabCtrl_SetCurSel(tabControl, lastTab);
    showSelectedTab();
    if (lastPlace.right != 0)
        MoveWindow(window(), lastPlace.left, lastPlace.top, lastPlace.right - lastPlace.left,
                   lastPlace.bottom - lastPlace.top, FALSE);
    RECT area{};
    GetClientRect(window(), &area);
    onSize(area.right, area.bottom);
    for (const auto& tab : tabs_)
        tab->onPlaced();
}

void CEditDlg::showSelectedTab() const {
    const int selected = TabCtrl_GetCurSel(control(IDC_EDIT_TABS));
    lastTab = selected >= 0 && selected < static_cast<int>(tabs_.size()) ? selected : 0;
    for (const auto& tab : tabs_)
        tab->show(false);
    tabs_[static_cast<std::size_t>(lastTab)]->show(true);
}

void CEditDlg::RefreshTabs() const {
    for (const auto& tab : tabs_)
        tab->RefreshFromModel();
}

void CEditDlg::onCommand(int id, int) {
    switch (id) {
    case IDC_EDIT_SAVE:
        return saveModel();
    case IDC_EDIT_LOAD:
        return loadModel();
    case IDC_EDIT_HELP:
        return help();
    case IDCANCEL: // Close, and Escape
        return close();
    default:
        return;
    }
}

LRESULT CEditDlg::onNotify(const NMHDR& header) {
    if (header.idFrom == IDC_EDIT_TABS && header.code == TCN_SELCHANGE)
        showSelectedTab();
    return 0;
}

/// Saves the script as it lies in the working folder, without what is only typed into its view. Overwrites an
/// existing file without asking.
void CEditDlg::saveModel() {
    const FileDialog dialog{.title = L"Save model file:", .filter = modelFilter, .extension = L"svm"};
    const std::wstring path = dialog.save(window());
    std::string error;
    if (!path.empty() && (!isUsablePath(path, error) || !saveModelFile(unit_, narrow(path), error)))
        showError(window(), widen(error), L"Failed to save:");
}

void CEditDlg::loadModel() {
    constexpr wchar_t warning[] =
        L"Loading a model will discard all information in the current unit operation. Proceed?";
    if (!isConfirmed(window(), warning, L"Load model:", MB_ICONWARNING))
        return;
    FileDialog dialog{.title = L"Open model file:", .filter = modelFilter, .extension = L"svm"};
    dialog.flags |= OFN_OVERWRITEPROMPT;
    const std::wstring path = dialog.open(window());
    std::string error;
    if (!path.empty() && (!isUsablePath(path, error) || !replaceModel(path, error)))
        showError(window(), widen(error), L"Failed to load:");
    RefreshTabs();
}

/// Discards the old model first, so even a failed load is a change.
bool CEditDlg::replaceModel(const std::wstring& path, std::string& error) const {
    unit_.markChanged();
    const bool isRead = ReadModelDocument(unit_, narrow(path), error);
    unit_.invalidate(); // the host may have validated half a model, from inside a released material
    return isRead;
}

void CEditDlg::help() const {
    if (!openHelp())
        showError(window(), L"Failed to load help file", L"Error:");
}

void CEditDlg::onSize(int width, int height) {
    if (tabs_.empty())
        return;
    const HWND tabControl = control(IDC_EDIT_TABS);
    const HWND close = control(IDCANCEL);
    const auto [left, top, buttonWidth, buttonHeight] = boxOf(close);
    const int buttonTop = height - layoutMargin - buttonHeight;
    {
        Layout layout;
        layout.move(close, {width - layoutMargin - buttonWidth, buttonTop, buttonWidth, buttonHeight});
        int place = layoutMargin;
        for (const int id : {IDC_EDIT_SAVE, IDC_EDIT_LOAD, IDC_EDIT_HELP}) {
            layout.move(control(id), {place, buttonTop, buttonWidth, buttonHeight});
            place += buttonWidth + layoutMargin;
        }
        layout.move(tabControl,
                    {layoutMargin, layoutMargin, width - 2 * layoutMargin, buttonTop - 2 * layoutMargin});
    }
    RECT area{};
    GetClientRect(tabControl, &area);
    TabCtrl_AdjustRect(tabControl, FALSE, &area);
    Layout pages;
    for (const auto& tab : tabs_)
        pages.move(tab->window(), {area.left, area.top, area.right - area.left, area.bottom - area.top});
}

std::optional<INT_PTR> CEditDlg::onMessage(UINT message, WPARAM wParam, LPARAM lParam) {
    if (message == WM_GETMINMAXINFO)
        reinterpret_cast<MINMAXINFO*>(lParam)->ptMinTrackSize = {smallest_.cx, smallest_.cy};
    if (message == WM_DPICHANGED) { // the window moved to another screen
        const int dpi = LOWORD(wParam);
        smallest_ = {MulDiv(smallest_.cx, dpi, dpi_), MulDiv(smallest_.cy, dpi, dpi_)};
        dpi_ = dpi;
    }
    return std::nullopt;
}

/// Closing is the last chance for a page to find what was changed.
void CEditDlg::onDestroy() {
    GetWindowRect(window(), &lastPlace);
    for (const auto& tab : tabs_)
        DestroyWindow(tab->window());
}

} // namespace solvane
