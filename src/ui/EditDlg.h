#pragma once

#include "ui/tabs/Tab.h"

#include <memory>
#include <vector>

namespace solvane {

/// The main window: the tabs, and buttons to save and load a model file, for help and to close. There is no
/// working copy: each action changes the unit at once.
class CEditDlg : public Dialog {
public:
    explicit CEditDlg(Unit& unit);

    /// Refreshes all tabs from the model.
    void RefreshTabs() const;
    /// Closes the window, as Escape does wherever the focus is.
    void close() const { end(0); }

private:
    void onInit() override;
    void onCommand(int id, int notification) override;
    LRESULT onNotify(const NMHDR& header) override;
    void onSize(int width, int height) override;
    void onDestroy() override;
    std::optional<INT_PTR> onMessage(UINT message, WPARAM wParam, LPARAM lParam) override;

    void showSelectedTab() const;
    void saveModel();
    void loadModel();
    bool replaceModel(const std::wstring& path, std::string& error) const;
    void help() const;

    Unit& unit_;
    std::vector<std::unique_ptr<Tab>> tabs_;
    SIZE smallest_{}; ///< of the window
    int dpi_ = 0;     ///< of the screen that the layout was made for
};

} // namespace solvane
