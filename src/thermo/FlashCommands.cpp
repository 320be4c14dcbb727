#include "FlashCommands.h"

#include "CalculationMaterial.h"
#include "Equilibrium.h"
#include "MaterialFlash.h"
#include "OverallProperty.h"
#include "channel/ChannelFrame.h"
#include "channel/FlashProperties.h"
#include "com/Failure.h"

#include <algorithm>

namespace solvane {

namespace {

FlashRequest readFlash(const CalculationRun& run, RequestReader& request) {
    FlashRequest flash;
    flash.composition = request.reals(run.nComp);
    for (FlashConstraint& constraint : flash.constraints)
        constraint.value = request.real();
    for (FlashConstraint& constraint : flash.constraints)
        constraint.name = request.text();
    return flash;
}

bool flash(CalculationRun& run, const FlashRequest& request, std::string& error) {
    return areFlashConstraints(request.constraints, "", error) &&
           flashCalculationMaterial(run, request, error);
}

bool overallProperty(CalculationRun& run, const std::string& name, double& value, std::string& error) {
    if (std::ranges::find(overallProperties, name) == overallProperties.end())
        return fail(error, "Invalid or unsupported overall property: " + name);
    if (run.material10)
        return overallFromPhases10(run, *run.material10, name, value, error);
    ICapeThermoPropertyRoutine* routine = propertyRoutine(run);
    if (!routine)
        return fail(error, noPropertyRoutine);
    return overallFromPhases11(run, *run.material11, *routine, name, value, error);
}

} // namespace

bool flashEquilibrium(CalculationRun& run, RequestReader& request, ReplyWriter& reply, std::string& error) {
    if (!flash(run, readFlash(run, request), error))
        return false;
    return run.material10 ? writeEquilibrium10(run, *run.material10, reply, error)
                          : writeEquilibrium11(run, *run.material11, reply, error);
}

bool flashProperty(CalculationRun& run, RequestReader& request, ReplyWriter& reply, std::string& error) {
    const FlashRequest wanted = readFlash(run, request);
    const std::string name = request.text();
    double value = 0;
    if (!flash(run, wanted, error) || !overallProperty(run, name, value, error))
        return false;
    reply.success();
    reply.real(value);
    return true;
}

} // namespace solvane
