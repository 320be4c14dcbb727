#pragma once

#include "ui/controls/Dialog.h"
#include "ui/controls/DialogFunctions.h"

namespace solvane {

class CEditDlg;
class Unit;

/// A page of the main window. It shows the unit's fields, and each action changes them at once.
class Tab : public Dialog, public DialogFunctions {
public:
    /// Once, when the page has the size in which the window opens. For what takes long to lay out.
    virtual void onPlaced() {}

protected:
    Tab(int templateId, Unit& unit, CEditDlg& mainWindow)
        : Dialog(templateId), unit_(unit), mainWindow_(mainWindow) {}

    /// A text view asks its page for the next control. After the page's last control, the main window's
    /// controls follow.
    std::optional<INT_PTR> onMessage(UINT message, WPARAM wParam, LPARAM lParam) override {
        if (message != WM_NEXTDLGCTL || LOWORD(lParam) != 0)
            return std::nullopt;
        SendMessageW(GetAncestor(window(), GA_ROOT), message, wParam, lParam);
        return TRUE;
    }

    Unit& unit_;
    CEditDlg& mainWindow_;
};

} // namespace solvane
