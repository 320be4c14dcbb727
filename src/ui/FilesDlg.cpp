#include "FilesDlg.h"

#include "resources/ResourceIds.h"

namespace solvane {

CFilesDlg::CFilesDlg(CSolvaneUnitOp& unit, CEditDlg& mainWindow) : Tab(IDD_FILES, unit, mainWindow) {}

void CFilesDlg::RefreshFromModel() {}

} // namespace solvane
