#pragma once

#include "Tab.h"
#include "ui/controls/TextView.h"

namespace solvane {

/// The unit's reports: Matlab's output, at position 0, and those that the script fills.
class CReportDlg : public Tab {
public:
    CReportDlg(Unit& unit, CEditDlg& mainWindow);

    void RefreshFromModel() override;

private:
    void onInit() override;
    void onCommand(int id, int notification) override;
    void onSize(int width, int height) override;
    void onDestroy() override;

    /// -1 if none is selected.
    int selected() const;
    /// Lists the names, selects one of them, and shows that report.
    void fill(int position);
    void showSelected();
    void add();
    void remove();

    TextView text_;
};

} // namespace solvane
