#pragma once

#include "Tab.h"
#include "ui/controls/ListView.h"

#include <commctrl.h>

#include <array>

namespace solvane {

/// The unit's feeds and products in two lists.
class CPortDlg : public Tab {
public:
    CPortDlg(Unit& unit, CEditDlg& mainWindow);

    void RefreshFromModel() override;

private:
    /// One of the two lists: its ports and its controls.
    struct Side;
    static const std::array<Side, 2> sides;

    void onInit() override;
    void onCommand(int id, int notification) override;
    LRESULT onNotify(const NMHDR& header) override;
    void onSize(int width, int height) override;

    const ListView& listOf(const Side& side) const;
    void fill(const Side& side) const;
    void updateButtons() const;
    void add(const Side& side);
    void remove(const Side& side);
    /// Ends an edit in place. Returns whether the new name was accepted.
    bool rename(const Side& side, const LVITEMW& edited);

    std::array<ListView, 2> lists_;
};

} // namespace solvane
