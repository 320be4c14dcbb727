#pragma once

#include "LineNumbers.h"
#include "ScriptFile.h"
#include "Tab.h"
#include "TextView.h"

#include <optional>

namespace solvane {

/// The page where the user writes the script and tries it. The script is the working folder's file; its view
/// is read from it, and written back for a test, for the editor outside and at the page's end.
class CMatlabDlg : public Tab {
public:
    CMatlabDlg(Unit& unit, CEditDlg& mainWindow);

    void RefreshFromModel() override;

private:
    void onInit() override;
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
    std::optional<TextPlace> errorPlace_; ///< in the script, of the last test
    bool allowRefresh_ = true;
};

} // namespace solvane
