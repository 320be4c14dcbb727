#include "PortDlg.h"

#include "resources/ResourceIds.h"

namespace solvane {

CPortDlg::CPortDlg(CSolvaneUnitOp& unit, CEditDlg& mainWindow) : Tab(IDD_PORT, unit, mainWindow) {}

void CPortDlg::RefreshFromModel() {}

} // namespace solvane
