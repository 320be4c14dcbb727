#pragma once

#include "Tab.h"

namespace solvane {

class CAboutDlg : public Tab {
public:
    CAboutDlg(CSolvaneUnitOp& unit, CEditDlg& mainWindow);

    void RefreshFromModel() override;
};

} // namespace solvane
