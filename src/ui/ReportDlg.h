#pragma once

#include "Tab.h"

namespace solvane {

class CReportDlg : public Tab {
public:
    CReportDlg(CSolvaneUnitOp& unit, CEditDlg& mainWindow);

    void RefreshFromModel() override;
};

} // namespace solvane
