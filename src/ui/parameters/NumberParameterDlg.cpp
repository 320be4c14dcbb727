#include "NumberParameterDlg.h"

#include "ParameterTexts.h"
#include "resources/ResourceIds.h"
#include "ui/controls/NumberFields.h"
#include "unit/model/Unit.h"

namespace solvane {

namespace {

template <class T>
Variant variantOf(const std::optional<T>& value) {
    return value ? Variant(*value) : Variant();
}

} // namespace

template <class T>
void NumberParameterDlg<T>::showValues() {
    setText(IDC_PARAMETER_VALUE, valueText(parameter_.currentValue));
    setText(IDC_PARAMETER_DEFAULT, valueText(parameter_.defaultValue));
    setText(IDC_PARAMETER_MINIMUM, valueText(parameter_.minimumValue));
    setText(IDC_PARAMETER_MAXIMUM, valueText(parameter_.maximumValue));
}

template <class T>
const wchar_t* NumberParameterDlg<T>::storeValues() {
    const auto read = [this](int id) {
        return readNumber<T>(text(id), parameter_.ownerUnit->numericLocale.get());
    };
    const NumberFields<T> fields{read(IDC_PARAMETER_VALUE), read(IDC_PARAMETER_DEFAULT),
                                 read(IDC_PARAMETER_MINIMUM), read(IDC_PARAMETER_MAXIMUM)};
    if (const wchar_t* fault = fields.fault())
        return fault;
    parameter_.currentValue = variantOf(fields.value);
    parameter_.defaultValue = variantOf(fields.defaultValue);
    parameter_.minimumValue = variantOf(fields.minimum);
    parameter_.maximumValue = variantOf(fields.maximum);
    return nullptr;
}

template class NumberParameterDlg<double>;
template class NumberParameterDlg<LONG>;

} // namespace solvane
