#include "MatlabDlg.h"

#include "BackupCopy.h"
#include "ErrorPlace.h"
#include "com/Text.h"
#include "resources/ResourceIds.h"
#include "runtime/CalculationDriver.h"
#include "ui/EditDlg.h"
#include "ui/Messages.h"
#include "ui/StartProgram.h"
#include "ui/controls/BlockedInput.h"
#include "ui/controls/Layout.h"
#include "ui/controls/ScriptColours.h"
#include "ui/controls/ScriptEditor.h"
#include "unit/model/Unit.h"

#include <commctrl.h>
#include <windowsx.h>

#include <algorithm>
#include <array>

namespace solvane {

namespace {

struct InfoLevel {
    const wchar_t* text;
    std::int32_t value;
};
constexpr std::array<InfoLevel, 2> infoLevels{{
    {L"default echo", 0},
    {L"echo each command line", 1},
}};

constexpr std::array<const wchar_t*, 2> innerTabs{L"Script", L"Output"};
constexpr int outputTab = 1;

constexpr COLORREF red = RGB(255, 0, 0);
constexpr COLORREF green = RGB(0, 255, 0);

std::wstring placeText(const wchar_t* words, long line, long column) {
    return words + std::to_wstring(line) + (column > 0 ? L", column " + std::to_wstring(column) : L"");
}

/// The first of the places that is in the script; the end if none is.
auto inScript(const std::vector<ErrorPlace>& places) {
    return std::ranges::find_if(places, &ErrorPlace::isInScript);
}

/// "The error is in tidy.m, line 3, column 5, called in line 12"
std::wstring errorText(const std::vector<ErrorPlace>& places) {
    if (places.empty())
        return {};
    const ErrorPlace& error = places.front();
    if (error.isInScript())
        return placeText(L"The error is in line ", error.line, error.column);
    std::wstring text =
        L"The error is in " + widen(error.file, CP_UTF8) + placeText(L", line ", error.line, error.column);
    if (const auto call = inScript(places); call != places.end())
        text += L", called in line " + std::to_wstring(call->line);
    return text;
}

} // namespace

CMatlabDlg::CMatlabDlg(Unit& unit, CEditDlg& mainWindow)
    : Tab(IDD_MATLAB, unit, mainWindow),
      lineNumbers_(IDC_MATLAB_LINES),
      editIn_(TextView::Kind::editable, IDC_MATLAB_SCRIPT),
      editOut_(TextView::Kind::readOnly, IDC_MATLAB_OUTPUT),
      script_(unit, editIn_) {}

void CMatlabDlg::onInit() {
    fillInfoLevels();
    const HWND inner = control(IDC_MATLAB_TABS);
    for (std::size_t i = 0; i < innerTabs.size(); ++i) {
        TCITEMW item{};
        item.mask = TCIF_TEXT;
        item.pszText = const_cast<LPWSTR>(innerTabs[i]);
        TabCtrl_InsertItem(inner, static_cast<int>(i), &item);
    }
    lineNumbers_.create(inner);
    for (TextView* view : {&editIn_, &editOut_}) {
        view->onEscape = [this] { mainWindow_.close(); };
        view->create(inner);
    }
    editIn_.onCaretMoved = [this] { showPlace(); };
    editIn_.onPainted = [this](const VisibleLines& lines) {
        lineNumbers_.follow(editIn_.window(), lines);
        paintScriptColours(editIn_, lines);
    };
    editIn_.onNewText = [this](LONG lines) { lineNumbers_.makeRoomFor(lines, editIn_.window()); };
    makeBackupCopy(unit_.workingFolder.path(), userScriptName, unit_.additionalFiles);
}

void CMatlabDlg::onPlaced() {
    loadScript();
    editOut_.setText(unit_.outputText);
    showView(0);
}

void CMatlabDlg::RefreshFromModel() {
    if (!allowRefresh_)
        return;
    showInfoLevel();
    loadScript();
    editOut_.setText(unit_.outputText);
    showPlace();
}

void CMatlabDlg::onCommand(int id, int notification) {
    if (id == IDC_MATLAB_LEVEL && notification == CBN_SELCHANGE)
        return storeInfoLevel();
    if (id == IDC_MATLAB_TEST)
        return test();
    if (id == IDC_MATLAB_EDIT)
        return edit();
}

LRESULT CMatlabDlg::onNotify(const NMHDR& header) {
    if (header.idFrom != IDC_MATLAB_TABS)
        return 0;
    if (header.code == TCN_SELCHANGE)
        showView(TabCtrl_GetCurSel(header.hwndFrom));
    if (header.code == NM_CLICK) // the user clicked the page and types next
        SetFocus(TabCtrl_GetCurSel(header.hwndFrom) == outputTab ? editOut_.window() : editIn_.window());
    return 0;
}

void CMatlabDlg::onDestroy() {
    script_.write(window());
    editIn_.destroy();
    if (!unit_.modelEdited &&
        differsFromBackupCopy(unit_.workingFolder.path(), userScriptName, unit_.additionalFiles))
        unit_.markChanged();
    editOut_.destroy();
}

// ---- the info level: neither a change nor a reason to validate again

void CMatlabDlg::fillInfoLevels() const {
    for (const InfoLevel& level : infoLevels)
        ComboBox_AddString(control(IDC_MATLAB_LEVEL), level.text);
    showInfoLevel();
}

void CMatlabDlg::showInfoLevel() const {
    const auto level = std::ranges::find(infoLevels, unit_.echoLevel, &InfoLevel::value);
    ComboBox_SetCurSel(control(IDC_MATLAB_LEVEL),
                       level == infoLevels.end() ? -1 : static_cast<int>(level - infoLevels.begin()));
}

void CMatlabDlg::storeInfoLevel() const {
    const int selected = ComboBox_GetCurSel(control(IDC_MATLAB_LEVEL));
    if (selected >= 0)
        unit_.echoLevel = infoLevels[static_cast<std::size_t>(selected)].value;
}

// ---- the script's file

void CMatlabDlg::loadScript() {
    errorPlaces_.clear();
    if (!script_.load(window()))
        forbidScript();
}

/// For the life of the window.
void CMatlabDlg::forbidScript() const {
    enable(IDC_MATLAB_TEST, false);
    EnableWindow(editIn_.window(), FALSE);
}

// ---- the buttons

/// One run as in a calculation by the host, with the streams that are connected now.
void CMatlabDlg::test() {
    const BlockedInput blocked(mainWindow_.window());
    if (!script_.write(window()))
        return showPlace();
    const WaitCursor cursor;
    setText(IDC_MATLAB_PLACE, L"Running...");
    UpdateWindow(control(IDC_MATLAB_PLACE));
    std::wstring error;
    const bool isDone = runCalculation(unit_, error);
    errorPlaces_.clear();
    if (std::wstring script; !isDone && editIn_.getText(script))
        errorPlaces_ = findErrorPlaces(unit_.outputText, error, script);
    if (const auto place = inScript(errorPlaces_); place != errorPlaces_.end())
        editIn_.setCaret({place->line, std::max(place->column, 1L)});
    editOut_.setText(unit_.outputText);
    TabCtrl_SetCurSel(control(IDC_MATLAB_TABS), outputTab);
    showView(outputTab);
    if (isDone)
        editOut_.append(L"\r\n\r\nOK", green);
    else
        editOut_.append(L"\r\n\r\nError: " + error, red);

    // The run sets parameters and reports. This page shows the result, so it is not refreshed.
    allowRefresh_ = false;
    mainWindow_.RefreshTabs();
    allowRefresh_ = true;
}

void CMatlabDlg::edit() {
    if (GetKeyState(VK_CONTROL) < 0)
        return chooseScriptEditor(window());
    const std::wstring command = L"\"" + findScriptEditor() + L"\" \"" + widen(script_.path()) + L"\"";
    const Handle process = startProgram(command, widen(unit_.workingFolder.path()), true);
    if (!process)
        return showError(window(),
                         L"Failed to run command:\r\n" + command +
                             L"\r\nHold Control while clicking Edit to select a different editor.",
                         L"Failed to Edit:");
    const BlockedInput blocked(mainWindow_.window());
    EnableWindow(window(), FALSE);
    script_.write(window());
    waitForScriptEditor(process.get());
    loadScript();
    EnableWindow(window(), TRUE);
    SetFocus(control(IDC_MATLAB_EDIT)); // the disabled page lost the focus
}

// ---- what the page shows

void CMatlabDlg::showView(int tab) const {
    lineNumbers_.show(tab != outputTab);
    editIn_.show(tab != outputTab);
    editOut_.show(tab == outputTab);
    showPlace();
}

/// Shows the caret's place below the script, and the faulty line below the output.
void CMatlabDlg::showPlace() const {
    if (script_.isRefused() && IsWindowEnabled(editIn_.window()))
        return setText(IDC_MATLAB_PLACE, L"The script is not shown. Ctrl+Z in the view brings it back.");
    if (TabCtrl_GetCurSel(control(IDC_MATLAB_TABS)) != outputTab)
        return setText(IDC_MATLAB_PLACE, placeText(L"Line ", editIn_.caret().line, editIn_.caret().column));
    setText(IDC_MATLAB_PLACE, errorText(errorPlaces_));
}

void CMatlabDlg::onSize(int width, int height) {
    if (!editOut_.window())
        return;
    const HWND list = control(IDC_MATLAB_LEVEL);
    const HWND test = control(IDC_MATLAB_TEST);
    const HWND inner = control(IDC_MATLAB_TABS);
    const Box listBox = boxOf(list);
    const auto [left, top, buttonWidth, buttonHeight] = boxOf(test);
    const int buttonTop = height - layoutMargin - buttonHeight;
    const int placeLeft = 3 * layoutMargin + 2 * buttonWidth + layoutMargin;
    const int innerTop = listBox.bottom() + layoutMargin;
    {
        Layout layout;
        layout.move(list, {listBox.left, listBox.top, width - layoutMargin - listBox.left, listBox.height});
        layout.move(test, {layoutMargin, buttonTop, buttonWidth, buttonHeight});
        layout.move(control(IDC_MATLAB_EDIT),
                    {2 * layoutMargin + buttonWidth, buttonTop, buttonWidth, buttonHeight});
        layout.move(control(IDC_MATLAB_PLACE),
                    {placeLeft, buttonTop, width - layoutMargin - placeLeft, buttonHeight});
        layout.move(inner,
                    {layoutMargin, innerTop, width - 2 * layoutMargin, buttonTop - layoutMargin - innerTop});
    }
    RECT area{};
    GetClientRect(inner, &area);
    TabCtrl_AdjustRect(inner, FALSE, &area);
    const Box views{area.left, area.top, area.right - area.left, area.bottom - area.top};
    lineNumbers_.place(views, editIn_.window());
    Layout().move(editOut_.window(), views);
}

} // namespace solvane
