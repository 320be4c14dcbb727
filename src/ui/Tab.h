#pragma once

#include "Dialog.h"
#include "DialogFunctions.h"

namespace solvane {

class CEditDlg;
class Unit;

/// A page of the main window. It shows the unit's fields, and each action changes them at once.
class Tab : public Dialog, public DialogFunctions {
protected:
    Tab(int templateId, Unit& unit, CEditDlg& mainWindow)
        : Dialog(templateId), unit_(unit), mainWindow_(mainWindow) {}

    /// A view of a text asks its page for the control after it. Behind the page's last one come the main
    /// window's.
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
