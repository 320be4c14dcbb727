#pragma once

#include "Tab.h"

namespace solvane {

class CFilesDlg : public Tab {
public:
    CFilesDlg(CSolvaneUnitOp& unit, CEditDlg& mainWindow);

    void RefreshFromModel() override;
};

} // namespace solvane
