#include "ParameterDlg.h"

#include "com/Text.h"
#include "resources/ResourceIds.h"
#include "ui/EditDlg.h"
#include "ui/Messages.h"
#include "ui/controls/InputDlg.h"
#include "ui/controls/Layout.h"
#include "ui/parameters/AddParameterDlg.h"
#include "ui/parameters/ParameterEditor.h"
#include "ui/parameters/ParameterTexts.h"
#include "unit/model/Unit.h"

#include <commctrl.h>

#include <algorithm>

namespace solvane {

namespace {

constexpr std::array columns{L"Name",    L"Type", L"Direction", L"Value",
                             L"Default", L"Min",  L"Max",       L"Unit of measure"};

constexpr wchar_t nameUsed[] = L"The specified name is already used for another parameter";

} // namespace

CParameterDlg::CParameterDlg(Unit& unit, CEditDlg& mainWindow) : Tab(IDD_PARAMETER, unit, mainWindow) {}

void CParameterDlg::onInit() {
    list_ = ListView(control(IDC_PARAMETER_LIST), columns);
    RefreshFromModel();
}

void CParameterDlg::RefreshFromModel() {
    fillList();
    updateButtons();
}

void CParameterDlg::fillList() const {
    std::vector<std::vector<std::wstring>> rows;
    for (const ComRef<CParameter>& parameter : unit_.parameters)
        rows.push_back(parameterCells(*parameter));
    list_.fill(rows);
}

void CParameterDlg::updateButtons() const {
    for (const int id : {IDC_PARAMETER_REMOVE, IDC_PARAMETER_EDIT, IDC_PARAMETER_RENAME})
        enable(id, list_.selected() >= 0);
}

void CParameterDlg::showSelected(int row) const {
    fillList();
    list_.select(row);
    updateButtons();
}

bool CParameterDlg::isNameUsed(const std::wstring& name, const CParameter* besides) const {
    return std::ranges::any_of(unit_.parameters, [&](const ComRef<CParameter>& parameter) {
        return parameter.get() != besides && compareNoCase(parameter->componentName, name) == 0;
    });
}

void CParameterDlg::onCommand(int id, int) {
    switch (id) {
    case IDC_PARAMETER_ADD:
        return add();
    case IDC_PARAMETER_REMOVE:
        return remove();
    case IDC_PARAMETER_EDIT:
        return edit();
    case IDC_PARAMETER_RENAME:
        return rename();
    default:
        return;
    }
}

LRESULT CParameterDlg::onNotify(const NMHDR& header) {
    if (header.idFrom == IDC_PARAMETER_LIST && header.code == LVN_ITEMCHANGED)
        updateButtons();
    if (header.idFrom == IDC_PARAMETER_LIST && header.code == NM_DBLCLK)
        edit();
    return 0;
}

/// Makes a parameter without a name if the name is in use; the user can rename it.
void CParameterDlg::add() {
    CAddParameterDlg dialog;
    if (dialog.runModal() != IDOK)
        return;
    std::wstring name = dialog.name();
    if (isNameUsed(name)) {
        showError(mainWindow_.window(), nameUsed, L"Add parameter:");
        name.clear();
    }
    const ComRef<CParameter> parameter = unit_.CreateParameter(dialog.kind(), true, name);
    if (!editParameter(*parameter))
        return;
    unit_.parameters.push_back(parameter);
    unit_.markChanged();
    unit_.invalidate();
    showSelected(static_cast<int>(unit_.parameters.size()) - 1);
}

/// The validation status stays: a script that still asks for the parameter fails when it runs.
void CParameterDlg::remove() {
    const int row = list_.selected();
    if (row < 0)
        return;
    const auto parameter = unit_.parameters.begin() + row;
    const std::wstring question = L"Remove parameter \"" + (*parameter)->componentName + L"\"?";
    if (!isRemovalConfirmed(mainWindow_.window(), question, L"Remove parameter:"))
        return;
    (*parameter)->ownerUnit = nullptr; // the host may still hold it
    unit_.parameters.erase(parameter);
    unit_.markChanged();
    focus(IDC_PARAMETER_LIST); // before the button is disabled
    RefreshFromModel();
}

void CParameterDlg::edit() {
    const int row = list_.selected();
    if (row < 0 || !editParameter(*unit_.parameters[static_cast<std::size_t>(row)]))
        return;
    unit_.markChanged();
    showSelected(row);
}

void CParameterDlg::rename() {
    const int row = list_.selected();
    if (row < 0)
        return;
    CParameter& parameter = *unit_.parameters[static_cast<std::size_t>(row)];
    const std::optional<std::wstring> name =
        askText(L"Rename parameter:", L"Enter parameter name:", parameter.componentName.c_str());
    if (!name)
        return;
    if (compareNoCase(*name, parameter.componentName) != 0 && isNameUsed(*name, &parameter))
        return showError(mainWindow_.window(), nameUsed, L"Rename parameter:");
    parameter.componentName = *name;
    unit_.markChanged();
    showSelected(row);
}

/// Keeps the buttons in a row at the bottom and gives the list the rest.
void CParameterDlg::onSize(int width, int height) {
    const auto [left, top, buttonWidth, buttonHeight] = boxOf(control(IDC_PARAMETER_ADD));
    const int buttonTop = height - layoutMargin - buttonHeight;
    {
        Layout layout;
        layout.move(list_.window(),
                    {layoutMargin, layoutMargin, width - 2 * layoutMargin, buttonTop - 2 * layoutMargin});
        int place = layoutMargin;
        for (const int id :
             {IDC_PARAMETER_ADD, IDC_PARAMETER_REMOVE, IDC_PARAMETER_EDIT, IDC_PARAMETER_RENAME}) {
            layout.move(control(id), {place, buttonTop, buttonWidth, buttonHeight});
            place += buttonWidth;
        }
    }
    list_.fillWidth();
}

} // namespace solvane
