#include "StringParameterDlg.h"

#include "ParameterTexts.h"
#include "resources/ResourceIds.h"
#include "ui/Messages.h"
#include "ui/controls/InputDlg.h"

#include <algorithm>

namespace solvane {

CStringParameterDlg::CStringParameterDlg(CParameter& parameter)
    : ParameterEditor(IDD_PARAMETER_STRING, parameter), options_(parameter.optionList) {}

void CStringParameterDlg::showValues() {
    setText(IDC_PARAMETER_VALUE, valueText(parameter_.currentValue));
    setText(IDC_PARAMETER_DEFAULT, valueText(parameter_.defaultValue));
    for (const std::wstring& option : options_)
        listOption(option);
    check(IDC_PARAMETER_EXCLUSIVE, parameter_.restrictedToList);
    fillChoices();
    updateButtons();
}

const wchar_t* CStringParameterDlg::storeValues() {
    const std::wstring value = text(IDC_PARAMETER_VALUE);
    const std::wstring defaultValue = text(IDC_PARAMETER_DEFAULT);
    const bool isExclusive = isChecked(IDC_PARAMETER_EXCLUSIVE);
    if (isExclusive && options_.empty())
        return L"Option list cannot be empty if it is exclusive";
    if (isExclusive && !isOption(value))
        return L"Current value is not in the option list, and the list is exclusive";
    if (isExclusive && !defaultValue.empty() && !isOption(defaultValue))
        return L"Default value is not in the option list, and the list is exclusive";
    parameter_.currentValue = Variant::textOrNull(value);
    parameter_.defaultValue = defaultValue.empty() ? Variant() : Variant(std::wstring_view(defaultValue));
    parameter_.restrictedToList = isExclusive;
    parameter_.optionList = options_;
    return nullptr;
}

void CStringParameterDlg::onCommand(int id, int notification) {
    switch (id) {
    case IDC_PARAMETER_OPTION_ADD:
        return addOption();
    case IDC_PARAMETER_OPTION_REMOVE:
        return removeOption();
    case IDC_PARAMETER_OPTIONS:
        return updateButtons();
    default:
        return ParameterEditor::onCommand(id, notification);
    }
}

void CStringParameterDlg::addOption() {
    const std::optional<std::wstring> option = askText(L"Enter option:", L"Value:");
    if (!option)
        return;
    if (isOption(*option)) {
        showError(window(), L"The specified value is already in the list.", L"Add option:");
    } else {
        options_.push_back(*option);
        listOption(*option);
        SendMessageW(control(IDC_PARAMETER_OPTIONS), LB_SETCURSEL, options_.size() - 1, 0);
        updateButtons();
    }
    fillChoices();
}

void CStringParameterDlg::removeOption() {
    const int row = selectedOption();
    if (row < 0)
        return;
    options_.erase(options_.begin() + row);
    SendMessageW(control(IDC_PARAMETER_OPTIONS), LB_DELETESTRING, static_cast<WPARAM>(row), 0);
    fillChoices();
    focus(IDC_PARAMETER_OPTIONS); // before the button is disabled
    updateButtons();
}

void CStringParameterDlg::listOption(const std::wstring& option) const {
    SendMessageW(control(IDC_PARAMETER_OPTIONS), LB_ADDSTRING, 0, reinterpret_cast<LPARAM>(option.c_str()));
}

void CStringParameterDlg::fillChoices() const {
    for (const int id : {IDC_PARAMETER_VALUE, IDC_PARAMETER_DEFAULT}) {
        const std::wstring kept = text(id);
        SendMessageW(control(id), CB_RESETCONTENT, 0, 0);
        for (const std::wstring& option : options_)
            SendMessageW(control(id), CB_ADDSTRING, 0, reinterpret_cast<LPARAM>(option.c_str()));
        setText(id, kept);
    }
}

void CStringParameterDlg::updateButtons() const {
    enable(IDC_PARAMETER_OPTION_REMOVE, selectedOption() >= 0);
}

int CStringParameterDlg::selectedOption() const {
    return static_cast<int>(SendMessageW(control(IDC_PARAMETER_OPTIONS), LB_GETCURSEL, 0, 0));
}

bool CStringParameterDlg::isOption(const std::wstring& text) const {
    return std::ranges::find(options_, text) != options_.end();
}

} // namespace solvane
