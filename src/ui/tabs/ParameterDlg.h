#pragma once

#include "Tab.h"
#include "ui/controls/ListView.h"
#include "unit/model/CParameter.h"

namespace solvane {

/// The unit's parameters, which the script reads and writes by name.
class CParameterDlg : public Tab {
public:
    CParameterDlg(Unit& unit, CEditDlg& mainWindow);

    void RefreshFromModel() override;

private:
    void onInit() override;
    void onCommand(int id, int notification) override;
    LRESULT onNotify(const NMHDR& header) override;
    void onSize(int width, int height) override;

    void add();
    void remove();
    void edit();
    void rename();

    void fillList() const;
    void updateButtons() const;
    /// Fills the list again and selects a row.
    void showSelected(int row) const;
    /// Whether another parameter than `besides` has that name.
    bool isNameUsed(const std::wstring& name, const CParameter* besides = nullptr) const;

    ListView list_;
};

} // namespace solvane
