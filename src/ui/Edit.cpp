#include "Edit.h"

#include "EditDlg.h"
#include "HostWindow.h"
#include "TabKeys.h"
#include "WindowContext.h"
#include "unit/model/Unit.h"

namespace solvane {

HRESULT editUnit(Unit& unit) {
    const WindowContext context;
    const TabKeys keys;
    CEditDlg(unit).runModal(FindHostWindow());
    return unit.modelEdited ? S_OK : S_FALSE;
}

} // namespace solvane
