#pragma once

#include "Tab.h"

namespace solvane {

class CParameterDlg : public Tab {
public:
    CParameterDlg(CSolvaneUnitOp& unit, CEditDlg& mainWindow);

    void RefreshFromModel() override;
};

} // namespace solvane
