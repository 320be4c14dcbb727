#include "FakeMaterial10.h"

#include "com/Text.h"
#include "com/VariantArray.h"

namespace solvane {

namespace {

bool isOverall(BSTR phase) {
    return compareNoCase(viewOf(phase), L"overall") == 0;
}

} // namespace

STDMETHODIMP FakeMaterial10::QueryInterface(REFIID iid, void** result) {
    const bool isOwn =
        iid == IID_IUnknown || iid == IID_IDispatch || iid == __uuidof(ICapeThermoMaterialObject);
    return query(iid, isOwn ? static_cast<ICapeThermoMaterialObject*>(this) : nullptr, result);
}

STDMETHODIMP_(ULONG) FakeMaterial10::Release() {
    const ULONG left = --references_;
    if (left == 0)
        delete this;
    return left;
}

STDMETHODIMP FakeMaterial10::get_ComponentIds(VARIANT* compounds) {
    return answer("ComponentIds", {compounds}, [&] {
        *compounds = VariantArray::of(stream.compounds).release();
        return S_OK;
    });
}

STDMETHODIMP FakeMaterial10::get_PhaseIds(VARIANT* phases) {
    return answer("PhaseIds", {phases}, [&] {
        std::vector<std::wstring> labels;
        if (stream.listsOverall)
            labels.push_back(L"Overall");
        for (const FakePhase& phase : stream.phases)
            if (phase.isPresent)
                labels.push_back(phase.label);
        *phases = VariantArray::of(labels).release();
        return S_OK;
    });
}

STDMETHODIMP FakeMaterial10::GetComponentConstant(VARIANT properties, VARIANT compounds, VARIANT* values) {
    return answer(describeCall("GetComponentConstant", {describe(properties), describe(compounds)}), {values},
                  [&] { return getConstant(properties, values); });
}

STDMETHODIMP FakeMaterial10::CalcProp(VARIANT properties, VARIANT phases, BSTR calculationType) {
    return answer(
        describeCall("CalcProp", {describe(properties), describe(phases), describe(calculationType)}), {},
        [&] {
            if (phases.vt != (VT_ARRAY | VT_BSTR))
                return fail(ECapeInvalidArgumentHR, L"no list of phases");
            return calculate(properties, std::wstring(viewOf(*static_cast<BSTR*>(phases.parray->pvData))));
        });
}

STDMETHODIMP FakeMaterial10::GetProp(BSTR property, BSTR phase, VARIANT compounds, BSTR calculationType,
                                     BSTR basis, VARIANT* values) {
    return answer(describeCall("GetProp", {describe(property), describe(phase), describe(compounds),
                                           describe(calculationType), describe(basis)}),
                  {values}, [&] {
                      return isOverall(phase) ? getOverall(property, values)
                                              : getOfPhase(property, phase, values);
                  });
}

STDMETHODIMP FakeMaterial10::SetProp(BSTR property, BSTR phase, VARIANT compounds, BSTR calculationType,
                                     BSTR basis, VARIANT values) {
    return answer(describeCall("SetProp", {describe(property), describe(phase), describe(compounds),
                                           describe(calculationType), describe(basis), describe(values)}),
                  {}, [&] {
                      return isOverall(phase) ? setOverall(property, values)
                                              : setOfPhase(property, phase, values);
                  });
}

STDMETHODIMP FakeMaterial10::CalcEquilibrium(BSTR flashType, VARIANT properties) {
    return answer(describeCall("CalcEquilibrium", {describe(flashType), describe(properties)}), {},
                  [&] { return flash(); });
}

STDMETHODIMP FakeMaterial10::Duplicate(IDispatch** clone) {
    return answerObject("Duplicate", clone, [&] {
        ComRef<FakeMaterial10> copy = create(stream);
        adopt(*copy.get());
        *clone = static_cast<ICapeThermoMaterialObject*>(copy.release());
        return S_OK;
    });
}

} // namespace solvane
