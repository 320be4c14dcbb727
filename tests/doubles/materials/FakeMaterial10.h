#pragma once

#include "FakeMaterial.h"

namespace solvane {

/// A material of the 1.0 interfaces. Methods that units don't call are not implemented.
class FakeMaterial10 final : public FakeMaterial, public DispatchImpl<ICapeThermoMaterialObject> {
public:
    static ComRef<FakeMaterial10> create(FakeStream stream = makeFakeStream()) {
        return ComRef(new FakeMaterial10(std::move(stream)));
    }
    IDispatch* dispatch() { return static_cast<ICapeThermoMaterialObject*>(this); }

    STDMETHODIMP QueryInterface(REFIID iid, void** result) override;
    STDMETHODIMP_(ULONG) AddRef() override { return ++references_; }
    STDMETHODIMP_(ULONG) Release() override;

    STDMETHODIMP get_ComponentIds(VARIANT* compounds) override;
    STDMETHODIMP get_PhaseIds(VARIANT* phases) override;
    STDMETHODIMP GetUniversalConstant(VARIANT, VARIANT*) override { return E_NOTIMPL; }
    STDMETHODIMP GetComponentConstant(VARIANT properties, VARIANT compounds, VARIANT* values) override;
    STDMETHODIMP CalcProp(VARIANT properties, VARIANT phases, BSTR calculationType) override;
    STDMETHODIMP GetProp(BSTR property, BSTR phase, VARIANT compounds, BSTR calculationType, BSTR basis,
                         VARIANT* values) override;
    STDMETHODIMP SetProp(BSTR property, BSTR phase, VARIANT compounds, BSTR calculationType, BSTR basis,
                         VARIANT values) override;
    STDMETHODIMP CalcEquilibrium(BSTR flashType, VARIANT properties) override;
    STDMETHODIMP SetIndependentVar(VARIANT, VARIANT) override { return E_NOTIMPL; }
    STDMETHODIMP GetIndependentVar(VARIANT, VARIANT*) override { return E_NOTIMPL; }
    STDMETHODIMP PropCheck(VARIANT, VARIANT*) override { return E_NOTIMPL; }
    STDMETHODIMP AvailableProps(VARIANT*) override { return E_NOTIMPL; }
    STDMETHODIMP RemoveResults(VARIANT) override { return E_NOTIMPL; }
    STDMETHODIMP CreateMaterialObject(IDispatch**) override { return E_NOTIMPL; }
    STDMETHODIMP Duplicate(IDispatch** clone) override;
    STDMETHODIMP ValidityCheck(VARIANT, VARIANT*) override { return E_NOTIMPL; }
    STDMETHODIMP GetPropList(VARIANT*) override { return E_NOTIMPL; }
    STDMETHODIMP GetNumComponents(LONG*) override { return E_NOTIMPL; }

private:
    explicit FakeMaterial10(FakeStream initial) : FakeMaterial(std::move(initial)) {}

    ULONG references_ = 0;
};

} // namespace solvane
