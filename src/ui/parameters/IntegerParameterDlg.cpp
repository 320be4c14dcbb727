#include "IntegerParameterDlg.h"

#include "resources/ResourceIds.h"

namespace solvane {

CIntegerParameterDlg::CIntegerParameterDlg(CParameter& parameter)
    : NumberParameterDlg(IDD_PARAMETER_INTEGER, parameter) {}

} // namespace solvane
