#include "ProductFlash.h"

#include "FlashConstraints.h"
#include "HostTexts.h"
#include "com/Text.h"

#include <array>

namespace solvane {

namespace {

bool totalFlowFailed(IUnknown& material, HRESULT hr, std::string& error) {
    return fail(error, "Failed to set total flow on material: " + describeFailure(material, hr));
}

bool compositionFailed(IUnknown& material, HRESULT hr, std::string& error) {
    return fail(error, "Failed to set composition on material: " + describeFailure(material, hr));
}

bool flashProduct10(const CPort& port, ICapeThermoMaterialObject& material, std::string& error) {
    OneReal oneReal;
    HRESULT hr = material.SetProp(hostTexts.totalFlow.get(), hostTexts.overall.get(), allCompounds, notGiven,
                                  hostTexts.mole.get(), oneReal.of(port.product.totalFlow));
    if (FAILED(hr))
        return totalFlowFailed(material, hr, error);
    hr = material.SetProp(hostTexts.fraction.get(), hostTexts.overall.get(), allCompounds, notGiven,
                          hostTexts.mole.get(), VariantArray::of(port.product.composition).get());
    if (FAILED(hr))
        return compositionFailed(material, hr, error);
    return flash10(material, port.product.constraints, oneReal, error);
}

/// The phases that a product's own material can form.
struct PhaseList {
    VariantArray labels;
    VariantArray aggregationStates;
};

bool readPhaseList(CPort& port, const ComRef<ICapeThermoMaterial>& material, PhaseList& list,
                   std::string& error) {
    const ComRef phases = port.interfaceOf(material, &CPort::phases);
    if (!phases)
        return fail(error, "Failed to get ICapeThermoPhases from material");
    VariantArray keyCompounds;
    const HRESULT hr =
        phases->GetPhaseList(list.labels.put(), list.aggregationStates.put(), keyCompounds.put());
    if (FAILED(hr))
        return fail(error,
                    "Failed to get possible phase list from material: " + describeFailure(*phases, hr));
    if (!readVariantArray(list.labels, VT_BSTR, error))
        return fail(error, "Invalid phase list from material: " + error);
    return true;
}

/// Scripts rely on how the vapor phase is found: it is always the first phase, and it counts as found where
/// the state of the phase at the constraint's own place, 0 or 1, is vapor.
bool findVaporLabel(PhaseList& list, std::size_t place, std::wstring& label, std::string& error) {
    if (!readVariantArray(list.aggregationStates, VT_BSTR, error))
        return fail(error, "Invalid values for aggregation states from material: " + error);
    if (list.aggregationStates.count() != list.labels.count())
        return fail(error, "Number of values does not match number of phases");
    const std::vector<std::wstring> states = list.aggregationStates.texts();
    if (place >= states.size() || compareNoCase(states[place], hostTexts.vapor.view()) != 0)
        return fail(error, "Vapor phase not found for vapor phase flash constraint");
    label = list.labels.texts().front();
    return true;
}

bool setConstraint11(ICapeThermoMaterial& material, const CPort& port, std::size_t place, PhaseList& list,
                     OneReal& oneReal, FlashSpecification& specification, std::string& error) {
    const FlashConstraint& constraint = port.product.constraints[place];
    if (!isVaporFraction(constraint))
        return setOverallConstraint11(material, constraint, "", oneReal, specification, error);
    std::wstring label;
    return findVaporLabel(list, place, label, error) &&
           setVaporFraction11(material, label, constraint.value, oneReal, specification, error);
}

bool flashProduct11(CPort& port, const ComRef<ICapeThermoMaterial>& connected, std::string& error) {
    if (!connected)
        return fail(error, "Port is not connected");
    PhaseList phases;
    if (!readPhaseList(port, connected, phases, error))
        return false;

    ICapeThermoMaterial& material = *connected;
    HRESULT hr = offerPhases11(material, phases.labels, phases.labels.count());
    if (FAILED(hr))
        return fail(error, "Failed to set list of possible flash phases on material: " +
                               describeFailure(material, hr));
    OneReal oneReal;
    hr = material.SetOverallProp(hostTexts.totalFlow.get(), hostTexts.mole.get(),
                                 oneReal.of(port.product.totalFlow));
    if (FAILED(hr))
        return totalFlowFailed(material, hr, error);
    hr = material.SetOverallProp(hostTexts.fraction.get(), hostTexts.mole.get(),
                                 VariantArray::of(port.product.composition).get());
    if (FAILED(hr))
        return compositionFailed(material, hr, error);

    std::array<FlashSpecification, 2> specifications;
    for (std::size_t i = 0; i < specifications.size(); ++i)
        if (!setConstraint11(material, port, i, phases, oneReal, specifications[i], error))
            return false;

    const ComRef routine = port.interfaceOf(connected, &CPort::equilibriumRoutine);
    if (!routine)
        return fail(error, "Failed to get ICapeThermoEquilibriumRoutine from material");
    hr = routine->CalcEquilibrium(specifications[0].get(), specifications[1].get(), unspecifiedSolution());
    return SUCCEEDED(hr) || fail(error, describeFailure(*routine, hr));
}

} // namespace

bool flashProductPort(CPort& port, std::string& error) {
    // Held, since the host may disconnect the material from inside its own flash.
    if (const ComRef material10 = port.materialObject10)
        return flashProduct10(port, *material10, error);
    const ComRef material11 = port.materialObject11;
    return flashProduct11(port, material11, error);
}

} // namespace solvane
