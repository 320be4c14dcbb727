#include "Edit.h"

#include "EditDlg.h"
#include "TabKeys.h"
#include "WindowContext.h"
#include "unit/CSolvaneUnitOp.h"
#include "unit/HostWindow.h"

namespace solvane {

HRESULT editUnit(CSolvaneUnitOp& unit) {
    const WindowContext context;
    const TabKeys keys;
    CEditDlg(unit).runModal(FindHostWindow());
    return unit.modelEdited ? S_OK : S_FALSE;
}

} // namespace solvane
