#include "Run.h"

#include <algorithm>

namespace solvane::gateway {

namespace {

/// The size that the unit gives its block for these counts, in bytes. The block itself can't tell: the system
/// rounds it up to whole pages. No phases are taken as a material of version 1.0.
std::size_t blockSizeFor(std::size_t compounds, std::size_t phases) {
    const std::size_t equilibrium =
        phases > 0 ? (8 * compounds + 12) * phases + 8 : (8 * compounds + 12) * 10 + 8 + 1024;
    return std::max({std::size_t{2048}, 8 * compounds * compounds + 8, 64 * compounds + 8, equilibrium});
}

} // namespace

/// The unit's wire format leaves out the number of compounds, and gives phases as indices: both sides go by
/// what the unit wrote into the run script's global variables. The counts are taken here, where initRun has
/// just set them, so that a script that changes or clears its globals does no harm.
std::unique_ptr<Run> openRun(const std::string& unitId, std::string& error) {
    const mxArray* compoundCount = mexGetVariable("global", "nComp");
    if (!compoundCount || !mxIsNumeric(compoundCount) || mxGetNumberOfElements(compoundCount) != 1 ||
        !(mxGetScalar(compoundCount) >= 0)) {
        error = "the global variable nComp is not set";
        return nullptr;
    }
    auto run = std::make_unique<Run>();
    run->compoundCount = static_cast<std::size_t>(mxGetScalar(compoundCount));
    if (const mxArray* names = phaseNames())
        run->phaseCount = mxGetNumberOfElements(names);
    run->transport = openTransport(unitId, error);
    if (!run->transport)
        return nullptr;
    run->blockSize = std::min(blockSizeFor(run->compoundCount, run->phaseCount), run->transport->capacity());
    return run;
}

const mxArray* phaseNames() {
    const mxArray* names = mexGetVariable("global", "phaseNames");
    return names && mxIsCell(names) ? names : nullptr;
}

} // namespace solvane::gateway
