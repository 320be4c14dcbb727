#include "AboutDlg.h"

#include "resources/ResourceIds.h"

namespace solvane {

CAboutDlg::CAboutDlg(CSolvaneUnitOp& unit, CEditDlg& mainWindow) : Tab(IDD_ABOUT, unit, mainWindow) {}

void CAboutDlg::RefreshFromModel() {}

} // namespace solvane
