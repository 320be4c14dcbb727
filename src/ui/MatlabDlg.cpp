#include "MatlabDlg.h"

#include "BackupCopy.h"
#include "EditDlg.h"
#include "ErrorPlace.h"
#include "Layout.h"
#include "Messages.h"
#include "ScriptEditor.h"
#include "StartProgram.h"
#include "com/StdioFile.h"
#include "com/Text.h"
#include "resources/ResourceIds.h"
#include "runtime/CalculationDriver.h"
#include "unit/CSolvaneUnitOp.h"

#include <commctrl.h>
#include <windowsx.h>

#include <array>
#include <cerrno>
#include <cstring>

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

constexpr wchar_t fileTitle[] = L"Error:";

bool readAll(std::FILE* file, std::string& bytes) {
    std::array<char, 4096> block;
    while (const std::size_t count = std::fread(block.data(), 1, block.size(), file))
        bytes.append(block.data(), count);
    return std::ferror(file) == 0;
}

std::wstring placeText(const TextPlace& place) {
    return L"ine " + std::to_wstring(place.line) + L", column " + std::to_wstring(place.column);
}

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

} // namespace

CMatlabDlg::CMatlabDlg(CSolvaneUnitOp& unit, CEditDlg& mainWindow)
    : Tab(IDD_MATLAB, unit, mainWindow),
      editIn_(TextView::Kind::editable, IDC_MATLAB_SCRIPT),
      editOut_(TextView::Kind::readOnly, IDC_MATLAB_OUTPUT) {}

void CMatlabDlg::onInit() {
    fillInfoLevels();
    const HWND inner = control(IDC_MATLAB_TABS);
    for (std::size_t i = 0; i < innerTabs.size(); ++i) {
        TCITEMW item{};
        item.mask = TCIF_TEXT;
        item.pszText = const_cast<LPWSTR>(innerTabs[i]);
        TabCtrl_InsertItem(inner, static_cast<int>(i), &item);
    }
    for (TextView* view : {&editIn_, &editOut_}) {
        view->onEscape = [this] { mainWindow_.close(); };
        view->create(inner);
    }
    editIn_.onCaretMoved = [this] { showPlace(); };
    loadScript();
    editOut_.setText(unit_.outputText);
    makeBackupCopy(scriptPath());
    showView(0);
}

void CMatlabDlg::RefreshFromModel() {
    if (!allowRefresh_)
        return;
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
    if (header.code == NM_CLICK) // one who comes with the mouse goes on with the keyboard
        SetFocus(TabCtrl_GetCurSel(header.hwndFrom) == outputTab ? editOut_.window() : editIn_.window());
    return 0;
}

void CMatlabDlg::onDestroy() {
    writeScript();
    editIn_.destroy();
    if (!unit_.modelEdited && differsFromBackupCopy(scriptPath()))
        unit_.markChanged();
    editOut_.destroy();
}

// ---- the info level: neither a change nor a reason to validate anew

void CMatlabDlg::fillInfoLevels() const {
    const HWND list = control(IDC_MATLAB_LEVEL);
    for (const InfoLevel& level : infoLevels) {
        const int index = ComboBox_AddString(list, level.text);
        if (level.value == unit_.echoLevel)
            ComboBox_SetCurSel(list, index);
    }
}

void CMatlabDlg::storeInfoLevel() const {
    const int selected = ComboBox_GetCurSel(control(IDC_MATLAB_LEVEL));
    if (selected >= 0)
        unit_.echoLevel = infoLevels[static_cast<std::size_t>(selected)].value;
}

// ---- the script's file

std::string CMatlabDlg::scriptPath() const {
    return unit_.workingFolder + "calc.m";
}

void CMatlabDlg::loadScript() {
    errorPlace_.reset();
    isLoaded_ = false;
    const StdioFile file = openFile(scriptPath(), "rb");
    if (!file) {
        refuseFile();
        return forbidScript();
    }
    loadedBytes_.clear();
    const bool isRead = readAll(file.get(), loadedBytes_);
    if (!editIn_.setText(widen(loadedBytes_)) || !isRead) {
        showError(window(), L"An error occurred while reading the user script", fileTitle);
        forbidScript();
    }
    editIn_.getText(loadedText_);
    isLoaded_ = true;
}

bool CMatlabDlg::writeScript() {
    // What couldn't be read, or not to its end for lack of memory, is not written over.
    if (!isLoaded_ || !IsWindowEnabled(editIn_.window()))
        return false;
    unit_.scriptDirty = true;
    StdioFile file = openFile(scriptPath(), "wb");
    if (!file) {
        refuseFile();
        return false;
    }
    std::wstring text;
    bool isWritten = editIn_.getText(text);
    // The view makes "\r\n" of each line's end and knows the code page's characters only. A text that the
    // user left alone goes back as it came.
    const std::string bytes = text == loadedText_ ? loadedBytes_ : narrow(text);
    isWritten &= std::fwrite(bytes.data(), 1, bytes.size(), file.get()) == bytes.size();
    isWritten &= closeWritten(std::move(file));
    if (!isWritten)
        showError(window(), L"An error occurred while saving the user script", fileTitle);
    return isWritten;
}

/// For the life of the window.
void CMatlabDlg::forbidScript() const {
    enable(IDC_MATLAB_TEST, false);
    EnableWindow(editIn_.window(), FALSE);
}

void CMatlabDlg::refuseFile() {
    const std::wstring failure = L"Failed to open Matlab script: " + widen(std::strerror(errno));
    showError(window(), failure, fileTitle);
    editIn_.setText(failure);
}

// ---- the buttons

/// One run as the host's calculation makes it, with what the ports hold at the moment.
void CMatlabDlg::test() {
    if (!writeScript())
        return;
    std::wstring error;
    bool isDone = false;
    {
        const WaitCursor cursor;
        isDone = runCalculation(unit_, error);
    }
    errorPlace_.reset();
    if (std::wstring script; !isDone && editIn_.getText(script))
        errorPlace_ = findErrorPlace(error, script);
    if (errorPlace_)
        editIn_.setCaret(*errorPlace_);
    editOut_.setText(unit_.outputText);
    TabCtrl_SetCurSel(control(IDC_MATLAB_TABS), outputTab);
    showView(outputTab);
    if (isDone)
        editOut_.append(L"\r\n\r\nOK", green);
    else
        editOut_.append(L"\r\n\r\nError: " + error, red);

    // The run sets parameters and reports. This page is spared: it shows the verdict.
    allowRefresh_ = false;
    mainWindow_.RefreshTabs();
    allowRefresh_ = true;
}

void CMatlabDlg::edit() {
    if (GetKeyState(VK_CONTROL) < 0)
        return chooseScriptEditor(window());
    const std::wstring command = L"\"" + findScriptEditor() + L"\" \"" + widen(scriptPath()) + L"\"";
    const Handle process = startProgram(command, widen(unit_.workingFolder), true);
    if (!process)
        return showError(window(),
                         L"Failed to run command:\r\n" + command +
                             L"\r\nHold Control while clicking Edit to select a different editor.",
                         L"Failed to Edit:");
    EnableWindow(window(), FALSE);
    writeScript();
    waitForScriptEditor(process.get());
    loadScript();
    EnableWindow(window(), TRUE);
    SetFocus(control(IDC_MATLAB_EDIT)); // a disabled page has lost it
}

// ---- what is to be seen

void CMatlabDlg::showView(int tab) const {
    editIn_.show(tab != outputTab);
    editOut_.show(tab == outputTab);
    showPlace();
}

/// Below the script its caret, below the output the line at fault.
void CMatlabDlg::showPlace() const {
    if (TabCtrl_GetCurSel(control(IDC_MATLAB_TABS)) != outputTab)
        return setText(IDC_MATLAB_PLACE, L"L" + placeText(editIn_.caret()));
    setText(IDC_MATLAB_PLACE, errorPlace_ ? L"The error is in l" + placeText(*errorPlace_) : L"");
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
    Layout views;
    for (const HWND view : {editIn_.window(), editOut_.window()})
        views.move(view, {area.left, area.top, area.right - area.left, area.bottom - area.top});
}

} // namespace solvane
