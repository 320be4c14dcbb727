#include "Edit.h"

#include "EditDlg.h"
#include "HostWindow.h"
#include "ui/controls/TabKeys.h"
#include "ui/controls/WindowContext.h"
#include "unit/model/Unit.h"

namespace solvane {

HRESULT editUnit(Unit& unit) {
    const WindowContext context;
    const TabKeys keys;
    CEditDlg(unit).runModal(FindHostWindow());
    return unit.modelEdited ? S_OK : S_FALSE;
}

} // namespace solvane
