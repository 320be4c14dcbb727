#include "ReportDlg.h"

#include "resources/ResourceIds.h"
#include "ui/EditDlg.h"
#include "ui/Messages.h"
#include "ui/controls/InputDlg.h"
#include "ui/controls/Layout.h"
#include "unit/model/ReportNames.h"
#include "unit/model/Unit.h"

#include <algorithm>

namespace solvane {

CReportDlg::CReportDlg(Unit& unit, CEditDlg& mainWindow)
    : Tab(IDD_REPORT, unit, mainWindow), text_(TextView::Kind::readOnly, IDC_REPORT_TEXT) {}

void CReportDlg::onInit() {
    text_.onEscape = [this] { mainWindow_.close(); };
    text_.create(window());
    text_.show(true);
    // The Tab key reaches it after the list.
    SetWindowPos(text_.window(), control(IDC_REPORT_LIST), 0, 0, 0, 0,
                 SWP_NOMOVE | SWP_NOSIZE | SWP_NOACTIVATE);
    fill(0);
}

void CReportDlg::onDestroy() {
    text_.destroy();
}

void CReportDlg::RefreshFromModel() {
    fill(std::clamp(selected(), 0, static_cast<int>(unit_.reportNames.size())));
}

int CReportDlg::selected() const {
    return static_cast<int>(SendMessageW(control(IDC_REPORT_LIST), CB_GETCURSEL, 0, 0));
}

void CReportDlg::fill(int position) {
    const HWND list = control(IDC_REPORT_LIST);
    SendMessageW(list, CB_RESETCONTENT, 0, 0);
    for (const std::wstring& name : allReportNames(unit_))
        SendMessageW(list, CB_ADDSTRING, 0, reinterpret_cast<LPARAM>(name.c_str()));
    SendMessageW(list, CB_SETCURSEL, static_cast<WPARAM>(position), 0);
    showSelected();
}

void CReportDlg::showSelected() {
    const int position = selected();
    text_.setText(position > 0 ? unit_.reportTexts[static_cast<std::size_t>(position) - 1]
                               : unit_.outputText);
    enable(IDC_REPORT_REMOVE, position > 0);
}

void CReportDlg::onCommand(int id, int notification) {
    switch (id) {
    case IDC_REPORT_LIST:
        if (notification == CBN_SELCHANGE)
            showSelected();
        return;
    case IDC_REPORT_ADD:
        return add();
    case IDC_REPORT_REMOVE:
        return remove();
    default:
        return;
    }
}

void CReportDlg::add() {
    const std::optional<std::wstring> name = askText(L"Add report:", L"Report title:");
    if (!name)
        return;
    if (isOutputReport(*name) || findReport(unit_, *name))
        return showError(mainWindow_.window(), L"The specified report name already exists", L"Error:");
    unit_.reportNames.push_back(*name);
    unit_.reportTexts.push_back(L"Report not available...\r\n");
    fill(static_cast<int>(unit_.reportNames.size()));
    showInformation(
        mainWindow_.window(),
        L"To specify the report, add the following to the calculation script:\r\n\r\nsetReport('" + *name +
            L"',reportContent);",
        L"Report added:");
    unit_.markChanged();
}

void CReportDlg::remove() {
    const int position = selected();
    if (position <= 0)
        return;
    const std::ptrdiff_t index = position - 1;
    const std::wstring question =
        L"Remove report \"" + unit_.reportNames[static_cast<std::size_t>(index)] + L"\"?";
    if (!isRemovalConfirmed(mainWindow_.window(), question, L"Remove report:"))
        return;
    unit_.reportNames.erase(unit_.reportNames.begin() + index);
    unit_.reportTexts.erase(unit_.reportTexts.begin() + index);
    focus(IDC_REPORT_LIST); // before the button is disabled
    fill(0);
    unit_.markChanged();
}

void CReportDlg::onSize(int width, int height) {
    if (!text_.window())
        return;
    const Box label = boxOf(control(IDC_REPORT_LABEL));
    const Box list = boxOf(control(IDC_REPORT_LIST));
    const Box button = boxOf(control(IDC_REPORT_ADD));
    const int innerWidth = width - 2 * layoutMargin;
    const int listLeft = label.right() + layoutMargin;
    const int textTop = list.bottom() + layoutMargin;
    const int buttonTop = height - layoutMargin - button.height;
    Layout layout;
    layout.move(control(IDC_REPORT_LIST), {listLeft, list.top, width - layoutMargin - listLeft, list.height});
    layout.move(text_.window(), {layoutMargin, textTop, innerWidth, buttonTop - layoutMargin - textTop});
    layout.move(control(IDC_REPORT_ADD), {layoutMargin, buttonTop, button.width, button.height});
    layout.move(control(IDC_REPORT_REMOVE),
                {2 * layoutMargin + button.width, buttonTop, button.width, button.height});
}

} // namespace solvane
