#include "MaterialFlash.h"

#include "CalculationMaterial.h"
#include "HostTexts.h"
#include "PropertyCalls.h"
#include "com/Text.h"

#include <algorithm>

namespace solvane {

namespace {

// ---- both generations

bool invalidProperty(const FlashConstraint& constraint, std::string& error) {
    return fail(error, "Invalid flash property: " + constraint.name);
}

/// `failure` precedes the host's description of a failure.
template <class Material>
bool setComposition(Material& material, const std::vector<double>& composition, const char* failure,
                    std::string& error) {
    const HRESULT hr = setOverall(material, hostTexts.fraction, VariantArray::of(composition).get());
    return SUCCEEDED(hr) || fail(error, failure + describeFailure(material, hr));
}

template <class Material>
bool setProductFlow(Material& material, const ProductSpecification& product, OneReal& oneReal,
                    std::string& error) {
    const HRESULT hr = setOverall(material, hostTexts.totalFlow, oneReal.of(product.totalFlow));
    if (FAILED(hr))
        return fail(error, "Failed to set total flow on material: " + describeFailure(material, hr));
    return setComposition(material, product.composition, "Failed to set composition on material: ", error);
}

constexpr char calculationCompositionFailed[] = "Failed to set composition: ";

// ---- 1.0

bool setConstraint10(ICapeThermoMaterialObject& material, const FlashConstraint& constraint, OneReal& oneReal,
                     std::string& error) {
    const FlashProperty code = codeOf(constraint);
    if (!isFlashConstraint(code))
        return invalidProperty(constraint, error);
    const VARIANT& value = oneReal.of(constraint.value);
    if (code == FlashProperty::vaporFraction) {
        const HRESULT hr = setProperty10(material, hostTexts.phaseFraction.get(), hostTexts.vapor.get(),
                                         hostTexts.mole.get(), value);
        return SUCCEEDED(hr) ||
               fail(error, "Failed to set vapor fraction on material: " + describeFailure(material, hr));
    }
    const BSTR calculationType = isMolar(code) ? hostTexts.mixture.get() : notGiven;
    const BSTR basis = isMolar(code) ? hostTexts.mole.get() : notGiven;
    const HRESULT hr = setProperty10(material, hostText(constraint.name).get(), hostTexts.overall.get(),
                                     basis, value, calculationType);
    return SUCCEEDED(hr) ||
           fail(error, "Failed to set " + constraint.name + " on material: " + describeFailure(material, hr));
}

/// Flashes a material whose composition is set.
bool flash10(ICapeThermoMaterialObject& material, FlashConstraints constraints, OneReal& oneReal,
             std::string& error) {
    for (const FlashConstraint& constraint : constraints)
        if (!setConstraint10(material, constraint, oneReal, error))
            return false;
    const wchar_t* type = flashType(codeOf(constraints[0]), codeOf(constraints[1]));
    if (!type)
        return fail(error, "Unsupported combination of flash properties");
    constexpr VARIANT noProperties{};
    const HRESULT hr = material.CalcEquilibrium(Bstr(type).get(), noProperties);
    return SUCCEEDED(hr) || fail(error, describeFailure(material, hr));
}

bool flashCalculationMaterial10(CalculationRun& run, const FlashRequest& request, std::string& error) {
    ICapeThermoMaterialObject& material = *run.material10;
    return setComposition(material, request.composition, calculationCompositionFailed, error) &&
           flash10(material, request.constraints, run.oneReal, error);
}

bool flashProduct10(const ProductSpecification& product, ICapeThermoMaterialObject& material,
                    std::string& error) {
    OneReal oneReal;
    return setProductFlow(material, product, oneReal, error) &&
           flash10(material, product.constraints, oneReal, error);
}

// ---- 1.1

/// The form of a constraint for an equilibrium routine: property, basis, phase.
using Specifications = std::array<VariantArray, 2>;

bool setVaporFraction11(ICapeThermoMaterial& material, const std::wstring& label, double value,
                        OneReal& oneReal, VariantArray& specification, std::string& error) {
    specification =
        VariantArray::ofTexts({hostTexts.phaseFraction.get(), hostTexts.mole.get(), label.c_str()});
    const HRESULT hr = material.SetSinglePhaseProp(hostTexts.phaseFraction.get(), Bstr(label).get(),
                                                   hostTexts.mole.get(), oneReal.of(value));
    return SUCCEEDED(hr) ||
           fail(error, "Failed to set vapor phase fraction: " + describeFailure(material, hr));
}

bool setOverallConstraint11(ICapeThermoMaterial& material, const FlashConstraint& constraint,
                            FlashProperty code, const char* failureTail, OneReal& oneReal,
                            VariantArray& specification, std::string& error) {
    if (!isFlashConstraint(code))
        return invalidProperty(constraint, error);
    const Bstr property = hostText(constraint.name);
    // The basis goes with the value; hosts expect none in the specification.
    specification = VariantArray::ofTexts({property.get(), notGiven, hostTexts.overall.get()});
    const HRESULT hr = material.SetOverallProp(
        property.get(), isMolar(code) ? hostTexts.mole.get() : notGiven, oneReal.of(constraint.value));
    return SUCCEEDED(hr) || fail(error, "Failed to set " + constraint.name + failureTail + ": " +
                                            describeFailure(material, hr));
}

/// Sets both constraints.
///  - findVapor(place, label, error) finds the vapor phase for a constraint on its fraction,
///  - `failureTail` follows the name of any other property that the host rejects.
template <class FindVapor>
bool setConstraints11(ICapeThermoMaterial& material, FlashConstraints constraints, FindVapor findVapor,
                      const char* failureTail, OneReal& oneReal, Specifications& specifications,
                      std::string& error) {
    for (std::size_t place = 0; place < constraints.size(); ++place) {
        const FlashConstraint& constraint = constraints[place];
        VariantArray& specification = specifications[place];
        const FlashProperty code = codeOf(constraint);
        std::wstring label;
        const bool isSet =
            code == FlashProperty::vaporFraction
                ? findVapor(place, label, error) &&
                      setVaporFraction11(material, label, constraint.value, oneReal, specification, error)
                : setOverallConstraint11(material, constraint, code, failureTail, oneReal, specification,
                                         error);
        if (!isSet)
            return false;
    }
    return true;
}

/// Offers these phases to the next flash of the material, all with unknown status.
HRESULT offerPhases(ICapeThermoMaterial& material, const VariantArray& labels, std::size_t count) {
    const std::vector<LONG> unknownStatus(count, CAPE_UNKNOWNPHASESTATUS);
    return material.SetPresentPhases(labels.get(), VariantArray::of(unknownStatus).get());
}

HRESULT flash11(ICapeThermoEquilibriumRoutine& routine, const Specifications& specifications) {
    return routine.CalcEquilibrium(specifications[0].get(), specifications[1].get(), unspecifiedSolution());
}

/// The run's first vapor phase.
bool findVaporOfRun(const CalculationRun& run, std::wstring& label, std::string& error) {
    constexpr std::int32_t vapor = 1;
    const auto code = std::ranges::find(run.aggregationCodes, vapor);
    if (code == run.aggregationCodes.end())
        return fail(error, "Vapor phase not found for vaporFraction specification");
    label = run.phaseLabels[static_cast<std::size_t>(code - run.aggregationCodes.begin())];
    return true;
}

bool flashCalculationMaterial11(CalculationRun& run, const FlashRequest& request, std::string& error) {
    ICapeThermoMaterial& material = *run.material11;
    ICapeThermoEquilibriumRoutine* routine = equilibriumRoutine(run);
    if (!routine)
        return fail(error, "Failed to get ICapeThermoEquilibriumRoutine from calculation material");
    if (!setComposition(material, request.composition, calculationCompositionFailed, error))
        return false;
    HRESULT hr = offerPhases(material, VariantArray::of(run.phaseLabels), run.phaseLabels.size());
    if (FAILED(hr))
        return fail(error, "Failed to set present phases: " + describeFailure(material, hr));

    const auto findVapor = [&](std::size_t, std::wstring& label, std::string& reason) {
        return findVaporOfRun(run, label, reason);
    };
    Specifications specifications;
    if (!setConstraints11(material, request.constraints, findVapor, " on material", run.oneReal,
                          specifications, error))
        return false;
    hr = flash11(*routine, specifications);
    return SUCCEEDED(hr) || fail(error, "Failed to calculate equilibrium: " + describeFailure(*routine, hr));
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
bool findVaporOfProduct(PhaseList& list, std::size_t place, std::wstring& label, std::string& error) {
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

bool flashProduct11(CPort& port, const ComRef<ICapeThermoMaterial>& connected, std::string& error) {
    if (!connected)
        return fail(error, "Port is not connected");
    PhaseList phases;
    if (!readPhaseList(port, connected, phases, error))
        return false;
    ICapeThermoMaterial& material = *connected;
    HRESULT hr = offerPhases(material, phases.labels, phases.labels.count());
    if (FAILED(hr))
        return fail(error, "Failed to set list of possible flash phases on material: " +
                               describeFailure(material, hr));

    const auto findVapor = [&](std::size_t place, std::wstring& label, std::string& reason) {
        return findVaporOfProduct(phases, place, label, reason);
    };
    OneReal oneReal;
    Specifications specifications;
    if (!setProductFlow(material, port.product, oneReal, error) ||
        !setConstraints11(material, port.product.constraints, findVapor, "", oneReal, specifications, error))
        return false;
    const ComRef routine = port.interfaceOf(connected, &CPort::equilibriumRoutine);
    if (!routine)
        return fail(error, "Failed to get ICapeThermoEquilibriumRoutine from material");
    hr = flash11(*routine, specifications);
    return SUCCEEDED(hr) || fail(error, describeFailure(*routine, hr));
}

} // namespace

bool flashCalculationMaterial(CalculationRun& run, const FlashRequest& request, std::string& error) {
    if (run.material10)
        return flashCalculationMaterial10(run, request, error);
    if (run.material11)
        return flashCalculationMaterial11(run, request, error);
    return fail(error, noCalculationMaterial);
}

bool flashProductPort(CPort& port, std::string& error) {
    // Held, since the host may disconnect the material from inside its own flash.
    if (const ComRef material10 = port.materialObject10)
        return flashProduct10(port.product, *material10, error);
    const ComRef material11 = port.materialObject11;
    return flashProduct11(port, material11, error);
}

} // namespace solvane
