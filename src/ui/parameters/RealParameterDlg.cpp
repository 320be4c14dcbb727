#include "RealParameterDlg.h"

#include "UnitOfMeasure.h"
#include "com/Numbers.h"
#include "com/Text.h"
#include "resources/ResourceIds.h"
#include "unit/model/Unit.h"

namespace solvane {

namespace {

constexpr int exponentId(std::size_t unit) {
    return IDC_PARAMETER_EXPONENT + static_cast<int>(unit);
}

} // namespace

CRealParameterDlg::CRealParameterDlg(CParameter& parameter)
    : NumberParameterDlg(IDD_PARAMETER_REAL, parameter) {}

void CRealParameterDlg::showValues() {
    NumberParameterDlg::showValues();
    const std::vector<double>& exponents = parameter_.dimensionality;
    for (std::size_t unit = 0; unit < std::min(exponents.size(), baseUnitCount); ++unit)
        if (exponents[unit] != 0.0)
            setText(exponentId(unit), widen(printReal(exponents[unit])));
    check(IDC_PARAMETER_DIFFERENCE, exponents.size() == baseUnitCount + 1 && exponents[baseUnitCount] != 0.0);
}

const wchar_t* CRealParameterDlg::storeValues() {
    const wchar_t* fault = NumberParameterDlg::storeValues();
    if (!fault)
        parameter_.dimensionality = dimensionality();
    return fault;
}

void CRealParameterDlg::onCommand(int id, int notification) {
    if (notification == EN_CHANGE && id >= exponentId(0) && id < exponentId(baseUnitCount)) {
        const std::wstring unit = unitText(dimensionality());
        setText(IDC_PARAMETER_UNIT, unit.empty() ? unit : L"Unit of measure: " + unit);
    }
    NumberParameterDlg::onCommand(id, notification);
}

std::vector<double> CRealParameterDlg::dimensionality() const {
    std::array<std::wstring, baseUnitCount> exponents;
    for (std::size_t unit = 0; unit < baseUnitCount; ++unit)
        exponents[unit] = text(exponentId(unit));
    return readDimensionality(exponents, isChecked(IDC_PARAMETER_DIFFERENCE),
                              parameter_.ownerUnit->numericLocale.get());
}

} // namespace solvane
