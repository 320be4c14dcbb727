#pragma once

#include "Tab.h"
#include "TextView.h"

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

    /// -1 where none is.
    int selected() const;
    /// Shows the names with one of them selected, and that report.
    void fill(int position);
    void showSelected();
    void add();
    void remove();

    TextView text_;
};

} // namespace solvane
