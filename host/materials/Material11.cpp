#include "Material11.h"

#include "Arguments.h"
#include "com/Text.h"

#include <algorithm>

namespace solvane::host {

namespace {

constexpr wchar_t materialInterface[] = L"ICapeThermoMaterial";
constexpr wchar_t phasesInterface[] = L"ICapeThermoPhases";

constexpr wchar_t stateOfAggregationAttribute[] = L"StateOfAggregation";

} // namespace

ComRef<IDispatch> Material11::create(std::shared_ptr<StreamState> state, std::wstring name) {
    const ComRef material(new CComObject<Material11>());
    material->state_ = std::move(state);
    material->componentName = std::move(name);
    return ComRef<IDispatch>(static_cast<ICapeThermoMaterial*>(material.get()));
}

std::span<const InterfaceEntry> Material11::interfaceTable() {
    static constexpr std::array table{
        interfaceEntry<Material11, IDispatch, ICapeThermoMaterial>(),
        interfaceEntry<Material11, ICapeThermoMaterial>(),
        interfaceEntry<Material11, ICapeThermoCompounds>(),
        interfaceEntry<Material11, ICapeThermoPhases>(),
        interfaceEntry<Material11, ICapeThermoPropertyRoutine>(),
        interfaceEntry<Material11, ICapeThermoEquilibriumRoutine>(),
        interfaceEntry<Material11, IStreamOwner>(),
        interfaceEntry<Material11, ECapeRoot>(),
        interfaceEntry<Material11, ECapeUser>(),
        interfaceEntry<Material11, ICapeIdentification>(),
    };
    return table;
}

bool Material11::readOwnPhase(BSTR label, Place& phase, Failure& failure) const {
    return readPhase(viewOf(label), phase, failure) &&
           (!state_->habits().rules.strict || state_->isPresent(phase) ||
            fail(failure, ECapeInvalidArgumentHR,
                 L"The phase " + std::wstring(placeLabel(phase)) +
                     L" is not present; call SetPresentPhases first, or a flash that finds it"));
}

bool Material11::readOwnPhasePair(const VARIANT& labels, Place& both, Failure& failure) const {
    Place phase{};
    return readPhasePair(labels, both, failure) && std::ranges::all_of(phasePlaces, [&](Place one) {
               return readOwnPhase(Bstr(placeLabel(one)).get(), phase, failure);
           });
}

bool Material11::getValues(Place place, BSTR property, BSTR basis, VARIANT* results, Failure& failure) const {
    const StreamProperty* asked = nullptr;
    std::vector<double> values;
    if (!readProperty(viewOf(property), asked, failure) ||
        !checkBasis(basis, *asked, state_->habits().rules, failure) ||
        !state_->get(place, *asked, values, failure))
        return false;
    replace(results, VariantArray::of(values));
    return true;
}

bool Material11::setValues(Place place, BSTR property, BSTR basis, const VARIANT& values, Failure& failure) {
    const StreamProperty* given = nullptr;
    std::vector<double> numbers;
    const MaterialRules& rules = state_->habits().rules;
    return readProperty(viewOf(property), given, failure) && checkBasis(basis, *given, rules, failure) &&
           readValues(values, given->name, rules, numbers, failure) &&
           state_->set(place, *given, numbers, failure);
}

STDMETHODIMP Material11::ClearAllProps() {
    return border([&]() -> HRESULT {
        state_->clear();
        return S_OK;
    });
}

STDMETHODIMP Material11::CopyFromMaterial(IDispatch** source) {
    return call(materialInterface, L"CopyFromMaterial", [&](Failure& failure) {
        const auto owner = queryInterface<IStreamOwner>(source ? *source : nullptr);
        if (!owner)
            return fail(failure, ECapeInvalidArgumentHR, L"The source is not a material of this host");
        if (owner->stream().package() != state_->package())
            return fail(failure, ECapeInvalidArgumentHR, L"The source belongs to another property package");
        const StreamState copy = owner->stream(); // the source may be this very material
        *state_ = copy;
        return true;
    });
}

STDMETHODIMP Material11::CreateMaterial(IDispatch** materialObject) {
    return border([&]() -> HRESULT {
        if (!prepareResult(materialObject))
            return E_POINTER;
        *materialObject = create(state_->another(), componentName).release();
        return S_OK;
    });
}

STDMETHODIMP Material11::GetOverallProp(BSTR property, BSTR basis, VARIANT* results) {
    if (!clearResults({results}))
        return E_POINTER;
    return call(materialInterface, L"GetOverallProp", [&](Failure& failure) {
        return getValues(Place::overall, property, basis, results, failure);
    });
}

STDMETHODIMP Material11::GetSinglePhaseProp(BSTR property, BSTR phaseLabel, BSTR basis, VARIANT* results) {
    if (!clearResults({results}))
        return E_POINTER;
    return call(materialInterface, L"GetSinglePhaseProp", [&](Failure& failure) {
        Place phase{};
        return readOwnPhase(phaseLabel, phase, failure) &&
               getValues(phase, property, basis, results, failure);
    });
}

STDMETHODIMP Material11::SetOverallProp(BSTR property, BSTR basis, VARIANT values) {
    return call(materialInterface, L"SetOverallProp", [&](Failure& failure) {
        return setValues(Place::overall, property, basis, values, failure);
    });
}

STDMETHODIMP Material11::SetSinglePhaseProp(BSTR property, BSTR phaseLabel, BSTR basis, VARIANT values) {
    return call(materialInterface, L"SetSinglePhaseProp", [&](Failure& failure) {
        Place phase{};
        return readOwnPhase(phaseLabel, phase, failure) && setValues(phase, property, basis, values, failure);
    });
}

bool Material11::getTPFraction(Place place, double* temperature, double* pressure, VARIANT* composition,
                               Failure& failure) const {
    std::vector<double> temperatures, pressures, fractions;
    if (!state_->get(place, temperatureProperty, temperatures, failure) ||
        !state_->get(place, pressureProperty, pressures, failure) ||
        !state_->get(place, fractionProperty, fractions, failure))
        return false;
    *temperature = temperatures.front();
    *pressure = pressures.front();
    replace(composition, VariantArray::of(fractions));
    return true;
}

STDMETHODIMP Material11::GetOverallTPFraction(double* temperature, double* pressure, VARIANT* composition) {
    if (!prepareResult(temperature) || !prepareResult(pressure) || !clearResults({composition}))
        return E_POINTER;
    return call(materialInterface, L"GetOverallTPFraction", [&](Failure& failure) {
        return getTPFraction(Place::overall, temperature, pressure, composition, failure);
    });
}

STDMETHODIMP Material11::GetTPFraction(BSTR phaseLabel, double* temperature, double* pressure,
                                       VARIANT* composition) {
    if (!prepareResult(temperature) || !prepareResult(pressure) || !clearResults({composition}))
        return E_POINTER;
    return call(materialInterface, L"GetTPFraction", [&](Failure& failure) {
        Place phase{};
        return readOwnPhase(phaseLabel, phase, failure) &&
               getTPFraction(phase, temperature, pressure, composition, failure);
    });
}

STDMETHODIMP Material11::GetPresentPhases(VARIANT* phaseLabels, VARIANT* phaseStatus) {
    if (!clearResults({phaseLabels, phaseStatus}))
        return E_POINTER;
    return border([&]() -> HRESULT {
        std::vector<std::wstring> labels;
        std::vector<LONG> statuses;
        for (const Place phase : state_->phases()) {
            if (!state_->isPresent(phase))
                continue;
            labels.emplace_back(placeLabel(phase));
            statuses.push_back(static_cast<LONG>(state_->status(phase)));
        }
        replace(phaseLabels, VariantArray::of(std::span<const std::wstring>(labels)));
        replace(phaseStatus, VariantArray::of(std::span<const LONG>(statuses)));
        return S_OK;
    });
}

STDMETHODIMP Material11::SetPresentPhases(VARIANT phaseLabels, VARIANT phaseStatus) {
    return call(materialInterface, L"SetPresentPhases", [&](Failure& failure) {
        std::vector<std::wstring> labels;
        if (!readNames(phaseLabels, L"list of phases", labels, failure))
            return false;
        VariantArray given;
        std::string error;
        if (FAILED(VariantCopyInd(given.put(), &phaseStatus)) || !readVariantArray(given, VT_I4, error) ||
            given.count() != labels.size())
            return fail(failure, ECapeInvalidArgumentHR,
                        L"The list of phase statuses must hold one long integer for each phase");
        const auto statuses = given.integers();
        std::vector<std::pair<Place, PhaseStatus>> phases;
        for (std::size_t i = 0; i < labels.size(); ++i) {
            Place phase{};
            if (!readPhase(labels[i], phase, failure))
                return false;
            if (statuses[i] < CAPE_UNKNOWNPHASESTATUS || statuses[i] > CAPE_ESTIMATES)
                return fail(failure, ECapeInvalidArgumentHR,
                            L"There is no phase status " + std::to_wstring(statuses[i]));
            phases.emplace_back(phase, static_cast<PhaseStatus>(statuses[i]));
        }
        state_->setPresentPhases(phases);
        return true;
    });
}

STDMETHODIMP Material11::GetTwoPhaseProp(BSTR property, VARIANT phaseLabels, BSTR basis, VARIANT* results) {
    if (!clearResults({results}))
        return E_POINTER;
    return call(materialInterface, L"GetTwoPhaseProp", [&](Failure& failure) {
        Place both{};
        return readOwnPhasePair(phaseLabels, both, failure) &&
               getValues(both, property, basis, results, failure);
    });
}

STDMETHODIMP Material11::SetTwoPhaseProp(BSTR, VARIANT, BSTR, VARIANT) {
    return notImplemented(materialInterface, L"SetTwoPhaseProp");
}

STDMETHODIMP Material11::GetNumPhases(LONG* num) {
    return returnCount(num, phasePlaces.size());
}

STDMETHODIMP Material11::GetPhaseInfo(BSTR phaseLabel, BSTR phaseAttribute, VARIANT* value) {
    if (!prepareResult(value))
        return E_POINTER;
    return call(phasesInterface, L"GetPhaseInfo", [&](Failure& failure) {
        Place phase{};
        if (!readPhase(viewOf(phaseLabel), phase, failure))
            return false;
        if (compareNoCase(viewOf(phaseAttribute), stateOfAggregationAttribute) != 0)
            return fail(failure, ECapeNoImplHR,
                        L"The phase attribute \"" + std::wstring(viewOf(phaseAttribute)) +
                            L"\" is not available");
        *value = Variant(placeLabel(phase)).release();
        return true;
    });
}

STDMETHODIMP Material11::GetPhaseList(VARIANT* phaseLabels, VARIANT* stateOfAggregation,
                                      VARIANT* keyCompoundId) {
    if (!clearResults({phaseLabels, stateOfAggregation, keyCompoundId}))
        return E_POINTER;
    return border([&]() -> HRESULT {
        std::vector<std::wstring> labels;
        for (const Place phase : state_->phases())
            labels.emplace_back(placeLabel(phase));
        // The phases have the names of their states of aggregation, and no key compound distinguishes them.
        replace(phaseLabels, VariantArray::of(std::span<const std::wstring>(labels)));
        replace(stateOfAggregation, VariantArray::of(std::span<const std::wstring>(labels)));
        replace(keyCompoundId, VariantArray::ofTexts({nullptr, nullptr}));
        return S_OK;
    });
}

} // namespace solvane::host
