#include "ReportDlg.h"

#include "resources/ResourceIds.h"

namespace solvane {

CReportDlg::CReportDlg(CSolvaneUnitOp& unit, CEditDlg& mainWindow) : Tab(IDD_REPORT, unit, mainWindow) {}

void CReportDlg::RefreshFromModel() {}

} // namespace solvane
