#include "OverallProperty.h"

#include "HostTexts.h"
#include "HostValues.h"
#include "PropertyCalls.h"

namespace solvane {

namespace {

/// Both generations: the calls differ, the sum and its failures don't.
///  - calculate(phase) and getProperty(phase, values) are the calls,
///  - `material` returns the values, `calculator` calculates; each describes its own failures.
template <class Material, class Calculate, class GetProperty>
bool sumOverPhases(const std::vector<PhaseLabel>& phases, const std::string& name, Material& material,
                   IUnknown& calculator, Calculate calculate, GetProperty getProperty, double& result,
                   std::string& error) {
    constexpr char wrongCount[] = "Scalar expected";
    double sum = 0;
    for (const PhaseLabel& phase : phases) {
        const std::string& label = phase.script;
        VariantArray values;
        HRESULT hr = getOfPhase(material, hostTexts.phaseFraction.get(), phase.host.get(), values.put());
        if (FAILED(hr))
            return fail(error, "Failed to get phase fraction for phase " + label +
                                   " from material: " + describeFailure(material, hr));
        double fraction = 0;
        if (!readScalar(values, wrongCount, fraction, error))
            return fail(error, "Invalid value for phase fraction for phase " + label + ": " + error);
        if (fraction == 0)
            continue;
        hr = calculate(phase.host);
        if (FAILED(hr))
            return fail(error, "Failed to calculate " + name + " for phase " + label + ": " +
                                   describeFailure(calculator, hr));
        hr = getProperty(phase.host.get(), values.put());
        if (FAILED(hr))
            return fail(error, "Failed to get " + name + " for phase " + label + ": " +
                                   describeFailure(material, hr));
        double value = 0;
        if (!readScalar(values, wrongCount, value, error))
            return fail(error, "Invalid value for " + name + " for phase " + label + ": " + error);
        sum += fraction * value;
    }
    result = sum;
    return true;
}

} // namespace

bool overallFromPhases10(CalculationRun& run, ICapeThermoMaterialObject& material, const std::string& name,
                         double& result, std::string& error) {
    VariantArray labels;
    const HRESULT hr = material.get_PhaseIds(labels.put());
    std::vector<PhaseLabel> phases;
    if (!readPresentPhases(material, hr, labels, phases, error))
        return false;
    std::erase_if(phases, isOverallLabel);

    const Bstr property = hostText(name);
    OneText phaseArray;
    return sumOverPhases(
        phases, name, material, material,
        [&](const Bstr& phase) {
            return material.CalcProp(run.oneText.of(property), phaseArray.of(phase), hostTexts.mixture.get());
        },
        [&](BSTR phase, VARIANT* values) {
            return getProperty10(material, property.get(), phase, hostTexts.mole.get(), values,
                                 hostTexts.mixture.get());
        },
        result, error);
}

bool overallFromPhases11(CalculationRun& run, ICapeThermoMaterial& material,
                         ICapeThermoPropertyRoutine& routine, const std::string& name, double& result,
                         std::string& error) {
    VariantArray labels;
    VariantArray statuses;
    const HRESULT hr = material.GetPresentPhases(labels.put(), statuses.put());
    std::vector<PhaseLabel> phases;
    if (!readPresentPhases(material, hr, labels, phases, error))
        return false;

    const Bstr property = hostText(name);
    return sumOverPhases(
        phases, name, material, routine,
        [&](const Bstr& phase) { return routine.CalcSinglePhaseProp(run.oneText.of(property), phase.get()); },
        [&](BSTR phase, VARIANT* values) { return getOfPhase(material, property.get(), phase, values); },
        result, error);
}

} // namespace solvane
