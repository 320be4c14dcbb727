#pragma once

#include "Tab.h"

namespace solvane {

class CPortDlg : public Tab {
public:
    CPortDlg(CSolvaneUnitOp& unit, CEditDlg& mainWindow);

    void RefreshFromModel() override;
};

} // namespace solvane
