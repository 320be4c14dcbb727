#pragma once

#include "Tab.h"

namespace solvane {

class CMatlabDlg : public Tab {
public:
    CMatlabDlg(CSolvaneUnitOp& unit, CEditDlg& mainWindow);

    void RefreshFromModel() override;
};

} // namespace solvane
