#pragma once

#include "Tab.h"

namespace solvane {

/// Shows what this module is and its licence.
class CAboutDlg : public Tab {
public:
    CAboutDlg(Unit& unit, CEditDlg& mainWindow);

    /// Shows nothing of the model.
    void RefreshFromModel() override {}

private:
    void onInit() override;
    void onCommand(int id, int notification) override;
    void onSize(int width, int height) override;
};

} // namespace solvane
