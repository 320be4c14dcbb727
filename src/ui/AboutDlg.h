#pragma once

#include "Tab.h"

namespace solvane {

/// What this module is, and under which licence.
class CAboutDlg : public Tab {
public:
    CAboutDlg(Unit& unit, CEditDlg& mainWindow);

    /// None of it is of the model.
    void RefreshFromModel() override {}

private:
    void onInit() override;
    void onCommand(int id, int notification) override;
    void onSize(int width, int height) override;
};

} // namespace solvane
