#include "FakeMaterial11.h"

#include "com/VariantArray.h"

namespace solvane {

namespace {

/// Under which the values of two phases are kept, whichever phases they are.
constexpr wchar_t pair[] = L"two phases";

} // namespace

STDMETHODIMP FakeMaterial11::QueryInterface(REFIID iid, void** result) {
    IUnknown* own = nullptr;
    if (iid == IID_IUnknown || iid == IID_IDispatch || iid == __uuidof(ICapeThermoMaterial))
        own = static_cast<ICapeThermoMaterial*>(this);
    else if (iid == __uuidof(ICapeThermoCompounds))
        own = static_cast<ICapeThermoCompounds*>(this);
    else if (iid == __uuidof(ICapeThermoPhases))
        own = static_cast<ICapeThermoPhases*>(this);
    else if (iid == __uuidof(ICapeThermoPropertyRoutine))
        own = static_cast<ICapeThermoPropertyRoutine*>(this);
    else if (iid == __uuidof(ICapeThermoEquilibriumRoutine))
        own = static_cast<ICapeThermoEquilibriumRoutine*>(this);
    return query(iid, own, result);
}

STDMETHODIMP_(ULONG) FakeMaterial11::Release() {
    const ULONG left = --references_;
    if (left == 0)
        delete this;
    return left;
}

STDMETHODIMP FakeMaterial11::CopyFromMaterial(IDispatch** source) {
    return answer("CopyFromMaterial", {}, [&] {
        const auto material = queryInterface<ICapeThermoMaterial>(source ? *source : nullptr);
        const auto* other = dynamic_cast<FakeMaterial11*>(material.get());
        if (!other)
            return fail(ECapeInvalidArgumentHR, L"no material to copy from");
        stream = other->stream;
        return S_OK;
    });
}

/// A new material has the compounds and phases of this one and no values.
STDMETHODIMP FakeMaterial11::CreateMaterial(IDispatch** material) {
    return answerObject("CreateMaterial", material, [&] {
        FakeStream empty;
        empty.compounds = stream.compounds;
        empty.constants = stream.constants;
        empty.results = stream.results;
        for (const FakePhase& phase : stream.phases)
            empty.phases.push_back({phase.label, phase.aggregation, 0, {}, {}});
        ComRef<FakeMaterial11> copy = create(std::move(empty));
        adopt(*copy.get());
        *material = static_cast<ICapeThermoMaterial*>(copy.release());
        return S_OK;
    });
}

STDMETHODIMP FakeMaterial11::GetOverallProp(BSTR property, BSTR basis, VARIANT* values) {
    return answer(describeCall("GetOverallProp", {describe(property), describe(basis)}), {values},
                  [&] { return getOverall(property, values); });
}

STDMETHODIMP FakeMaterial11::GetPresentPhases(VARIANT* labels, VARIANT* statuses) {
    return answer("GetPresentPhases", {labels, statuses}, [&] {
        std::vector<std::wstring> present;
        for (const FakePhase& phase : stream.phases)
            if (phase.isPresent)
                present.push_back(phase.label);
        *labels = VariantArray::of(present).release();
        *statuses = VariantArray::of(std::vector<LONG>(present.size(), CAPE_ATEQUILIBRIUM)).release();
        return S_OK;
    });
}

STDMETHODIMP FakeMaterial11::GetSinglePhaseProp(BSTR property, BSTR phase, BSTR basis, VARIANT* values) {
    return answer(describeCall("GetSinglePhaseProp", {describe(property), describe(phase), describe(basis)}),
                  {values}, [&] { return getOfPhase(property, phase, values); });
}

STDMETHODIMP FakeMaterial11::GetTwoPhaseProp(BSTR property, VARIANT phases, BSTR basis, VARIANT* values) {
    return answer(describeCall("GetTwoPhaseProp", {describe(property), describe(phases), describe(basis)}),
                  {values}, [&] { return getOfPhase(property, Bstr(pair).get(), values); });
}

STDMETHODIMP FakeMaterial11::SetOverallProp(BSTR property, BSTR basis, VARIANT values) {
    return answer(describeCall("SetOverallProp", {describe(property), describe(basis), describe(values)}), {},
                  [&] { return setOverall(property, values); });
}

STDMETHODIMP FakeMaterial11::SetPresentPhases(VARIANT labels, VARIANT statuses) {
    return answer(describeCall("SetPresentPhases", {describe(labels), describe(statuses)}), {},
                  [] { return S_OK; });
}

STDMETHODIMP FakeMaterial11::SetSinglePhaseProp(BSTR property, BSTR phase, BSTR basis, VARIANT values) {
    return answer(describeCall("SetSinglePhaseProp",
                               {describe(property), describe(phase), describe(basis), describe(values)}),
                  {}, [&] { return setOfPhase(property, phase, values); });
}

/// Gives the identifiers; the other lists stay empty.
STDMETHODIMP FakeMaterial11::GetCompoundList(VARIANT* ids, VARIANT*, VARIANT*, VARIANT*, VARIANT*, VARIANT*) {
    return answer("GetCompoundList", {ids}, [&] {
        *ids = VariantArray::of(stream.compounds).release();
        return S_OK;
    });
}

STDMETHODIMP FakeMaterial11::GetCompoundConstant(VARIANT properties, VARIANT compounds, VARIANT* values) {
    return answer(describeCall("GetCompoundConstant", {describe(properties), describe(compounds)}), {values},
                  [&] { return getConstant(properties, values); });
}

STDMETHODIMP FakeMaterial11::GetTDependentProperty(VARIANT properties, double temperature, VARIANT compounds,
                                                   VARIANT* values) {
    return answer(describeCall("GetTDependentProperty",
                               {describe(properties), describe(temperature), describe(compounds)}),
                  {values}, [&] { return getResult(properties, values); });
}

STDMETHODIMP FakeMaterial11::GetPDependentProperty(VARIANT properties, double pressure, VARIANT compounds,
                                                   VARIANT* values) {
    return answer(describeCall("GetPDependentProperty",
                               {describe(properties), describe(pressure), describe(compounds)}),
                  {values}, [&] { return getResult(properties, values); });
}

STDMETHODIMP FakeMaterial11::GetPhaseList(VARIANT* labels, VARIANT* aggregationStates,
                                          VARIANT* keyCompounds) {
    return answer("GetPhaseList", {labels, aggregationStates, keyCompounds}, [&] {
        std::vector<std::wstring> allLabels;
        std::vector<std::wstring> states;
        for (const FakePhase& phase : stream.phases) {
            allLabels.push_back(phase.label);
            states.push_back(phase.aggregation);
        }
        *labels = VariantArray::of(allLabels).release();
        *aggregationStates = VariantArray::of(states).release();
        return S_OK;
    });
}

STDMETHODIMP FakeMaterial11::CalcSinglePhaseProp(VARIANT properties, BSTR phase) {
    return answer(describeCall("CalcSinglePhaseProp", {describe(properties), describe(phase)}), {},
                  [&] { return calculate(properties, std::wstring(viewOf(phase))); });
}

STDMETHODIMP FakeMaterial11::CalcTwoPhaseProp(VARIANT properties, VARIANT phases) {
    return answer(describeCall("CalcTwoPhaseProp", {describe(properties), describe(phases)}), {},
                  [&] { return calculate(properties, pair); });
}

STDMETHODIMP FakeMaterial11::CalcEquilibrium(VARIANT specification1, VARIANT specification2,
                                             BSTR solutionType) {
    return answer(describeCall("CalcEquilibrium",
                               {describe(specification1), describe(specification2), describe(solutionType)}),
                  {}, [&] { return flash(); });
}

} // namespace solvane
