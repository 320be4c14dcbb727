#include "Run.h"

#include "BlockText.h"
#include "channel/BlockSize.h"

#include <algorithm>

namespace solvane::gateway {

namespace {

bool readCompoundCount(std::size_t& count, std::string& error) {
    const mxArray* number = mexGetVariable("global", "nComp");
    if (!number || !mxIsNumeric(number) || mxGetNumberOfElements(number) != 1 ||
        !(mxGetScalar(number) >= 0)) {
        error = "the global variable nComp is not set";
        return false;
    }
    count = static_cast<std::size_t>(mxGetScalar(number));
    return true;
}

/// A quote in a compound's name may make two names of it, or a number.
bool areCompoundsNamed(std::size_t count, std::string& error) {
    const mxArray* cells = mexGetVariable("global", "compNames");
    if (!cells || !mxIsCell(cells)) // not set
        return true;
    bool areNamed = mxGetNumberOfElements(cells) == count;
    for (std::size_t compound = 0; areNamed && compound < count; ++compound) {
        const mxArray* name = mxGetCell(cells, compound);
        areNamed = name && mxIsChar(name);
    }
    if (!areNamed)
        error = "the global variable compNames does not hold the names of the compounds: rename those with "
                "quotes";
    return areNamed;
}

/// There are none where the variable is not set.
bool readPhaseNames(std::vector<std::string>& names, std::string& error) {
    const mxArray* cells = mexGetVariable("global", "phaseNames");
    names.resize(cells && mxIsCell(cells) ? mxGetNumberOfElements(cells) : 0);
    for (std::size_t phase = 0; phase < names.size(); ++phase)
        if (const mxArray* name = mxGetCell(cells, phase); !name || !readText(name, names[phase], error)) {
            error = "the global variable phaseNames does not hold the names of the phases";
            return false;
        }
    return true;
}

} // namespace

/// The unit's wire format leaves out the number of compounds, and gives phases as indices: both sides go by
/// what the unit wrote into the run script's global variables. They are read here, where initRun has just set
/// them, so that a script that changes or clears its globals does no harm.
std::unique_ptr<Run> openRun(const std::string& unitId, std::string& error) {
    auto run = std::make_unique<Run>();
    if (!readCompoundCount(run->compoundCount, error) || !areCompoundsNamed(run->compoundCount, error) ||
        !readPhaseNames(run->phaseNames, error))
        return nullptr;
    run->transport = openTransport(unitId, error);
    if (!run->transport)
        return nullptr;
    const std::size_t phases = run->phaseNames.size();
    const std::uint64_t blockSize =
        blockSizeFor(run->compoundCount, phases > 0 ? std::optional<std::uint64_t>(phases) : std::nullopt);
    run->blockSize = static_cast<std::size_t>(std::min<std::uint64_t>(blockSize, run->transport->capacity()));
    return run;
}

} // namespace solvane::gateway
