#pragma once

#include "ScriptFile.h"
#include "Tab.h"
#include "channel/ErrorStack.h"
#include "ui/controls/LineNumbers.h"
#include "ui/controls/TextView.h"

#include <vector>

namespace solvane {

/// The page where the user writes and tests the script. Its view is read from the script's file, and written
/// back before a test, for an external editor, and when the window closes.
class CMatlabDlg : public Tab {
public:
    CMatlabDlg(Unit& unit, CEditDlg& mainWindow);

    void RefreshFromModel() override;

private:
    void onInit() override;
    void onPlaced() override;
    void onCommand(int id, int notification) override;
    LRESULT onNotify(const NMHDR& header) override;
    void onSize(int width, int height) override;
    void onDestroy() override;

    void fillInfoLevels() const;
    void showInfoLevel() const;
    void storeInfoLevel() const;

    void loadScript();
    void forbidScript() const;

    void test();
    void edit();

    void showView(int tab) const;
    void showPlace() const;

    LineNumbers lineNumbers_;
    TextView editIn_;
    TextView editOut_;
    ScriptFile script_;
    std::vector<ErrorPlace> errorPlaces_; ///< of the last test's error, innermost first
    bool allowRefresh_ = true;
};

} // namespace solvane
