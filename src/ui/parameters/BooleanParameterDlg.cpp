#include "BooleanParameterDlg.h"

#include "resources/ResourceIds.h"
#include "ui/controls/ComboBox.h"

namespace solvane {

CBooleanParameterDlg::CBooleanParameterDlg(CParameter& parameter)
    : ParameterEditor(IDD_PARAMETER_BOOLEAN, parameter) {}

/// A default opens as the current value, whatever it is, as it always has.
void CBooleanParameterDlg::showValues() {
    const Variant& value = parameter_.currentValue;
    const bool isTrue = value.type() == VT_BOOL && value.boolean();
    const int shownDefault = isTrue ? 1 : 2;
    fillComboBox(control(IDC_PARAMETER_VALUE), {L"True", L"False"}, isTrue ? 0 : 1);
    fillComboBox(control(IDC_PARAMETER_DEFAULT), {L"<none>", L"True", L"False"},
                 parameter_.defaultValue.isEmpty() ? 0 : shownDefault);
}

const wchar_t* CBooleanParameterDlg::storeValues() {
    const int chosenDefault = selectedEntry(control(IDC_PARAMETER_DEFAULT));
    parameter_.currentValue = Variant(selectedEntry(control(IDC_PARAMETER_VALUE)) == 0);
    parameter_.defaultValue = chosenDefault == 0 ? Variant() : Variant(chosenDefault == 1);
    return nullptr;
}

} // namespace solvane
