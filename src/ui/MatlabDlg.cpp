#include "MatlabDlg.h"

#include "resources/ResourceIds.h"

namespace solvane {

CMatlabDlg::CMatlabDlg(CSolvaneUnitOp& unit, CEditDlg& mainWindow) : Tab(IDD_MATLAB, unit, mainWindow) {}

void CMatlabDlg::RefreshFromModel() {}

} // namespace solvane
