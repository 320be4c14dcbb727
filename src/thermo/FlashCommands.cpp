#include "FlashCommands.h"

#include "CalculationMaterial.h"
#include "Equilibrium.h"
#include "FlashConstraints.h"
#include "HostTexts.h"
#include "OverallProperty.h"
#include "channel/ChannelFrame.h"
#include "com/Text.h"

#include <algorithm>
#include <array>

namespace solvane {

namespace {

constexpr std::int32_t vaporAggregation = 1;

struct Flash {
    std::vector<double> composition;
    std::array<FlashConstraint, 2> constraints;
};

Flash readFlash(const CalculationRun& run, RequestReader& request) {
    Flash flash;
    flash.composition = request.reals(run.nComp);
    for (FlashConstraint& constraint : flash.constraints)
        constraint.value = request.real();
    for (FlashConstraint& constraint : flash.constraints)
        constraint.name = request.text();
    return flash;
}

bool compositionFailed(IUnknown& material, HRESULT hr, std::string& error) {
    return fail(error, "Failed to set composition: " + describeFailure(material, hr));
}

bool flashMaterial10(CalculationRun& run, const Flash& flash, std::string& error) {
    ICapeThermoMaterialObject& material = *run.material10;
    const HRESULT hr =
        material.SetProp(hostTexts.fraction.get(), hostTexts.overall.get(), allCompounds, notGiven,
                         hostTexts.mole.get(), VariantArray::of(flash.composition).get());
    if (FAILED(hr))
        return compositionFailed(material, hr, error);
    return flash10(material, flash.constraints, run.oneReal, error);
}

bool setConstraint11(CalculationRun& run, const FlashConstraint& constraint,
                     FlashSpecification& specification, std::string& error) {
    ICapeThermoMaterial& material = *run.material11;
    if (!isVaporFraction(constraint))
        return setOverallConstraint11(material, constraint, " on material", run.oneReal, specification,
                                      error);
    const auto code = std::ranges::find(run.aggregationCodes, vaporAggregation);
    if (code == run.aggregationCodes.end())
        return fail(error, "Vapor phase not found for vaporFraction specification");
    const std::string& label = run.phaseNames[static_cast<std::size_t>(code - run.aggregationCodes.begin())];
    return setVaporFraction11(material, widen(label, CP_THREAD_ACP), constraint.value, run.oneReal,
                              specification, error);
}

bool flashMaterial11(CalculationRun& run, const Flash& flash, std::string& error) {
    ICapeThermoMaterial& material = *run.material11;
    ICapeThermoEquilibriumRoutine* routine = equilibriumRoutine(run);
    if (!routine)
        return fail(error, "Failed to get ICapeThermoEquilibriumRoutine from calculation material");
    HRESULT hr = material.SetOverallProp(hostTexts.fraction.get(), hostTexts.mole.get(),
                                         VariantArray::of(flash.composition).get());
    if (FAILED(hr))
        return compositionFailed(material, hr, error);

    std::vector<std::wstring> labels;
    for (const std::string& name : run.phaseNames)
        labels.push_back(widen(name, CP_THREAD_ACP));
    hr = offerPhases11(material, VariantArray::of(labels), labels.size());
    if (FAILED(hr))
        return fail(error, "Failed to set present phases: " + describeFailure(material, hr));

    std::array<FlashSpecification, 2> specifications;
    for (std::size_t i = 0; i < specifications.size(); ++i)
        if (!setConstraint11(run, flash.constraints[i], specifications[i], error))
            return false;
    hr = routine->CalcEquilibrium(specifications[0].get(), specifications[1].get(), unspecifiedSolution());
    return SUCCEEDED(hr) || fail(error, "Failed to calculate equilibrium: " + describeFailure(*routine, hr));
}

bool flashCalculationMaterial(CalculationRun& run, const Flash& flash, std::string& error) {
    if (!areFlashConstraints(flash.constraints, "", error))
        return false;
    if (run.material10)
        return flashMaterial10(run, flash, error);
    if (run.material11)
        return flashMaterial11(run, flash, error);
    return fail(error, noCalculationMaterial);
}

/// What flashProperty gives, by the exact name.
constexpr std::array<std::string_view, 8> overallProperties{
    "enthalpy", "enthalpyF", "enthalpyNF", "entropy", "entropyF", "entropyNF", "internalEnergy", "volume",
};

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
    if (!flashCalculationMaterial(run, readFlash(run, request), error))
        return false;
    return run.material10 ? writeEquilibrium10(run, *run.material10, reply, error)
                          : writeEquilibrium11(run, *run.material11, reply, error);
}

bool flashProperty(CalculationRun& run, RequestReader& request, ReplyWriter& reply, std::string& error) {
    const Flash flash = readFlash(run, request);
    const std::string name = request.text();
    double value = 0;
    if (!flashCalculationMaterial(run, flash, error) || !overallProperty(run, name, value, error))
        return false;
    reply.success();
    reply.real(value);
    return true;
}

} // namespace solvane
