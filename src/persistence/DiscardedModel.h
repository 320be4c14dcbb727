#pragma once

namespace solvane {

class CSolvaneUnitOp;

/// What every load begins with: takes parameters, ports and further files from the unit, which is no longer
/// validated. The files themselves go too: the next model's script would find them today, and not once the
/// model is opened again. Reports and the script stay.
void discardModel(CSolvaneUnitOp& unit);

} // namespace solvane
