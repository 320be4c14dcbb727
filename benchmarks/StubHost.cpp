#include "StubHost.h"

#include "CapeOpen.h"
#include "com/Dispatch.h"
#include "com/VariantArray.h"

#include <x86intrin.h>

#include <array>
#include <string>
#include <vector>

namespace solvane {

namespace {

/// The time of one method, from its first line to its last.
class Answer {
public:
    Answer() : begin_(__rdtsc()) {}
    ~Answer() { stubHostTicks += __rdtsc() - begin_; }
    Answer(const Answer&) = delete;
    Answer& operator=(const Answer&) = delete;

private:
    std::uint64_t begin_;
};

bool hasOneValue(std::wstring_view property) {
    for (const std::wstring_view scalar :
         {L"temperature", L"pressure", L"totalFlow", L"phaseFraction", L"enthalpy", L"volume"})
        if (property == scalar)
            return true;
    return false;
}

/// Its methods that units call; the others are not implemented.
class StubMaterial final : public DispatchImpl<ICapeThermoMaterial>,
                           public DispatchImpl<ICapeThermoCompounds>,
                           public DispatchImpl<ICapeThermoPhases>,
                           public DispatchImpl<ICapeThermoPropertyRoutine>,
                           public DispatchImpl<ICapeThermoEquilibriumRoutine> {
public:
    explicit StubMaterial(std::size_t compounds) : values_(compounds, 1 / static_cast<double>(compounds)) {}

    STDMETHODIMP QueryInterface(REFIID iid, void** result) override {
        const Answer answer;
        IUnknown* object = nullptr;
        if (iid == IID_IUnknown || iid == IID_IDispatch || iid == __uuidof(ICapeThermoMaterial))
            object = static_cast<ICapeThermoMaterial*>(this);
        else if (iid == __uuidof(ICapeThermoCompounds))
            object = static_cast<ICapeThermoCompounds*>(this);
        else if (iid == __uuidof(ICapeThermoPhases))
            object = static_cast<ICapeThermoPhases*>(this);
        else if (iid == __uuidof(ICapeThermoPropertyRoutine))
            object = static_cast<ICapeThermoPropertyRoutine*>(this);
        else if (iid == __uuidof(ICapeThermoEquilibriumRoutine))
            object = static_cast<ICapeThermoEquilibriumRoutine*>(this);
        *result = object;
        references_ += object ? 1 : 0;
        return object ? S_OK : E_NOINTERFACE;
    }
    STDMETHODIMP_(ULONG) AddRef() override { return ++references_; }
    STDMETHODIMP_(ULONG) Release() override {
        const ULONG left = --references_;
        if (left == 0)
            delete this;
        return left;
    }

    STDMETHODIMP ClearAllProps() override { return E_NOTIMPL; }
    STDMETHODIMP CopyFromMaterial(IDispatch**) override { return S_OK; }
    STDMETHODIMP CreateMaterial(IDispatch** material) override {
        *material = createStubMaterial(values_.size()).release();
        return S_OK;
    }
    STDMETHODIMP GetOverallProp(BSTR property, BSTR, VARIANT* values) override {
        return give(property, values);
    }
    STDMETHODIMP GetOverallTPFraction(double*, double*, VARIANT*) override { return E_NOTIMPL; }
    STDMETHODIMP GetPresentPhases(VARIANT* labels, VARIANT* statuses) override {
        const Answer answer;
        *labels = VariantArray::ofTexts({L"Vapor", L"Liquid"}).release();
        *statuses = VariantArray::of(std::array<LONG, 2>{CAPE_ATEQUILIBRIUM, CAPE_ATEQUILIBRIUM}).release();
        return S_OK;
    }
    STDMETHODIMP GetSinglePhaseProp(BSTR property, BSTR, BSTR, VARIANT* values) override {
        return give(property, values);
    }
    STDMETHODIMP GetTPFraction(BSTR, double*, double*, VARIANT*) override { return E_NOTIMPL; }
    STDMETHODIMP GetTwoPhaseProp(BSTR property, VARIANT, BSTR, VARIANT* values) override {
        return give(property, values);
    }
    STDMETHODIMP SetOverallProp(BSTR, BSTR, VARIANT) override { return S_OK; }
    STDMETHODIMP SetPresentPhases(VARIANT, VARIANT) override { return S_OK; }
    STDMETHODIMP SetSinglePhaseProp(BSTR, BSTR, BSTR, VARIANT) override { return S_OK; }
    STDMETHODIMP SetTwoPhaseProp(BSTR, VARIANT, BSTR, VARIANT) override { return E_NOTIMPL; }

    STDMETHODIMP GetCompoundConstant(VARIANT, VARIANT, VARIANT* values) override {
        const Answer answer;
        values->vt = VT_ARRAY | VT_VARIANT;
        values->parray = SafeArrayCreateVector(VT_VARIANT, 0, static_cast<ULONG>(values_.size()));
        for (std::size_t i = 0; i < values_.size(); ++i)
            static_cast<VARIANT*>(values->parray->pvData)[i] = Variant(values_[i]).release();
        return S_OK;
    }
    STDMETHODIMP GetCompoundList(VARIANT* ids, VARIANT*, VARIANT*, VARIANT*, VARIANT*, VARIANT*) override {
        std::vector<std::wstring> names;
        for (std::size_t i = 1; i <= values_.size(); ++i)
            names.push_back(L"C" + std::to_wstring(i));
        *ids = VariantArray::of(names).release();
        return S_OK;
    }
    STDMETHODIMP GetConstPropList(VARIANT*) override { return E_NOTIMPL; }
    STDMETHODIMP GetNumCompounds(LONG*) override { return E_NOTIMPL; }
    STDMETHODIMP GetPDependentProperty(VARIANT, double, VARIANT, VARIANT* values) override {
        return giveVector(values);
    }
    STDMETHODIMP GetPDependentPropList(VARIANT*) override { return E_NOTIMPL; }
    STDMETHODIMP GetTDependentProperty(VARIANT, double, VARIANT, VARIANT* values) override {
        return giveVector(values);
    }
    STDMETHODIMP GetTDependentPropList(VARIANT*) override { return E_NOTIMPL; }

    STDMETHODIMP GetNumPhases(LONG*) override { return E_NOTIMPL; }
    STDMETHODIMP GetPhaseInfo(BSTR, BSTR, VARIANT*) override { return E_NOTIMPL; }
    STDMETHODIMP GetPhaseList(VARIANT* labels, VARIANT* aggregationStates, VARIANT*) override {
        *labels = VariantArray::ofTexts({L"Vapor", L"Liquid"}).release();
        *aggregationStates = VariantArray::ofTexts({L"Vapor", L"Liquid"}).release();
        return S_OK;
    }

    STDMETHODIMP CalcAndGetLnPhi(BSTR, double, double, VARIANT, INT, VARIANT*, VARIANT*, VARIANT*,
                                 VARIANT*) override {
        return E_NOTIMPL;
    }
    STDMETHODIMP CalcSinglePhaseProp(VARIANT, BSTR) override { return S_OK; }
    STDMETHODIMP CalcTwoPhaseProp(VARIANT, VARIANT) override { return S_OK; }
    STDMETHODIMP CheckSinglePhasePropSpec(BSTR, BSTR, VARIANT_BOOL*) override { return E_NOTIMPL; }
    STDMETHODIMP CheckTwoPhasePropSpec(BSTR, VARIANT, VARIANT_BOOL*) override { return E_NOTIMPL; }
    STDMETHODIMP GetSinglePhasePropList(VARIANT*) override { return E_NOTIMPL; }
    STDMETHODIMP GetTwoPhasePropList(VARIANT*) override { return E_NOTIMPL; }

    STDMETHODIMP CalcEquilibrium(VARIANT, VARIANT, BSTR) override { return S_OK; }
    STDMETHODIMP CheckEquilibriumSpec(VARIANT, VARIANT, BSTR, VARIANT_BOOL*) override { return E_NOTIMPL; }

private:
    HRESULT give(BSTR property, VARIANT* values) {
        const Answer answer;
        const std::span<const double> all(values_);
        *values = VariantArray::of(hasOneValue(viewOf(property)) ? all.first(1) : all).release();
        return S_OK;
    }
    HRESULT giveVector(VARIANT* values) {
        const Answer answer;
        *values = VariantArray::of(values_).release();
        return S_OK;
    }

    std::vector<double> values_;
    ULONG references_ = 0;
};

} // namespace

ComRef<IDispatch> createStubMaterial(std::size_t compounds) {
    return ComRef<IDispatch>(static_cast<ICapeThermoMaterial*>(new StubMaterial(compounds)));
}

} // namespace solvane
