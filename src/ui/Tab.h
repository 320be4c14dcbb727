#pragma once

#include "Dialog.h"
#include "DialogFunctions.h"

namespace solvane {

class CEditDlg;
class CSolvaneUnitOp;

/// A page of the main window. It shows the unit's fields, and each action changes them at once.
class Tab : public Dialog, public DialogFunctions {
protected:
    Tab(int templateId, CSolvaneUnitOp& unit, CEditDlg& mainWindow)
        : Dialog(templateId), unit_(unit), mainWindow_(mainWindow) {}

    CSolvaneUnitOp& unit_;
    CEditDlg& mainWindow_;
};

} // namespace solvane
