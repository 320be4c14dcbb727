#include "ParameterDlg.h"

#include "resources/ResourceIds.h"

namespace solvane {

CParameterDlg::CParameterDlg(CSolvaneUnitOp& unit, CEditDlg& mainWindow)
    : Tab(IDD_PARAMETER, unit, mainWindow) {}

void CParameterDlg::RefreshFromModel() {}

} // namespace solvane
