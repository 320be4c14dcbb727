#pragma once

#include "FakeMaterial.h"

namespace solvane {

/// A material of the 1.1 interfaces, all on one object. Methods that units don't call are not implemented.
class FakeMaterial11 final : public FakeMaterial,
                             public DispatchImpl<ICapeThermoMaterial>,
                             public DispatchImpl<ICapeThermoCompounds>,
                             public DispatchImpl<ICapeThermoPhases>,
                             public DispatchImpl<ICapeThermoPropertyRoutine>,
                             public DispatchImpl<ICapeThermoEquilibriumRoutine> {
public:
    static ComRef<FakeMaterial11> create(FakeStream stream = makeFakeStream()) {
        return ComRef(new FakeMaterial11(std::move(stream)));
    }
    IDispatch* dispatch() { return static_cast<ICapeThermoMaterial*>(this); }

    STDMETHODIMP QueryInterface(REFIID iid, void** result) override;
    STDMETHODIMP_(ULONG) AddRef() override { return ++references_; }
    STDMETHODIMP_(ULONG) Release() override;

    // ICapeThermoMaterial
    STDMETHODIMP ClearAllProps() override { return E_NOTIMPL; }
    STDMETHODIMP CopyFromMaterial(IDispatch** source) override;
    STDMETHODIMP CreateMaterial(IDispatch** material) override;
    STDMETHODIMP GetOverallProp(BSTR property, BSTR basis, VARIANT* values) override;
    STDMETHODIMP GetOverallTPFraction(double*, double*, VARIANT*) override { return E_NOTIMPL; }
    STDMETHODIMP GetPresentPhases(VARIANT* labels, VARIANT* statuses) override;
    STDMETHODIMP GetSinglePhaseProp(BSTR property, BSTR phase, BSTR basis, VARIANT* values) override;
    STDMETHODIMP GetTPFraction(BSTR, double*, double*, VARIANT*) override { return E_NOTIMPL; }
    STDMETHODIMP GetTwoPhaseProp(BSTR property, VARIANT phases, BSTR basis, VARIANT* values) override;
    STDMETHODIMP SetOverallProp(BSTR property, BSTR basis, VARIANT values) override;
    STDMETHODIMP SetPresentPhases(VARIANT labels, VARIANT statuses) override;
    STDMETHODIMP SetSinglePhaseProp(BSTR property, BSTR phase, BSTR basis, VARIANT values) override;
    STDMETHODIMP SetTwoPhaseProp(BSTR, VARIANT, BSTR, VARIANT) override { return E_NOTIMPL; }
    // ICapeThermoCompounds
    STDMETHODIMP GetCompoundConstant(VARIANT properties, VARIANT compounds, VARIANT* values) override;
    STDMETHODIMP GetCompoundList(VARIANT* ids, VARIANT* formulae, VARIANT* names,
                                 VARIANT* boilingTemperatures, VARIANT* molecularWeights,
                                 VARIANT* casNumbers) override;
    STDMETHODIMP GetConstPropList(VARIANT*) override { return E_NOTIMPL; }
    STDMETHODIMP GetNumCompounds(LONG*) override { return E_NOTIMPL; }
    STDMETHODIMP GetPDependentProperty(VARIANT properties, double pressure, VARIANT compounds,
                                       VARIANT* values) override;
    STDMETHODIMP GetPDependentPropList(VARIANT*) override { return E_NOTIMPL; }
    STDMETHODIMP GetTDependentProperty(VARIANT properties, double temperature, VARIANT compounds,
                                       VARIANT* values) override;
    STDMETHODIMP GetTDependentPropList(VARIANT*) override { return E_NOTIMPL; }
    // ICapeThermoPhases
    STDMETHODIMP GetNumPhases(LONG*) override { return E_NOTIMPL; }
    STDMETHODIMP GetPhaseInfo(BSTR, BSTR, VARIANT*) override { return E_NOTIMPL; }
    STDMETHODIMP GetPhaseList(VARIANT* labels, VARIANT* aggregationStates, VARIANT* keyCompounds) override;
    // ICapeThermoPropertyRoutine
    STDMETHODIMP CalcAndGetLnPhi(BSTR, double, double, VARIANT, INT, VARIANT*, VARIANT*, VARIANT*,
                                 VARIANT*) override {
        return E_NOTIMPL;
    }
    STDMETHODIMP CalcSinglePhaseProp(VARIANT properties, BSTR phase) override;
    STDMETHODIMP CalcTwoPhaseProp(VARIANT properties, VARIANT phases) override;
    STDMETHODIMP CheckSinglePhasePropSpec(BSTR, BSTR, VARIANT_BOOL*) override { return E_NOTIMPL; }
    STDMETHODIMP CheckTwoPhasePropSpec(BSTR, VARIANT, VARIANT_BOOL*) override { return E_NOTIMPL; }
    STDMETHODIMP GetSinglePhasePropList(VARIANT*) override { return E_NOTIMPL; }
    STDMETHODIMP GetTwoPhasePropList(VARIANT*) override { return E_NOTIMPL; }
    // ICapeThermoEquilibriumRoutine
    STDMETHODIMP CalcEquilibrium(VARIANT specification1, VARIANT specification2, BSTR solutionType) override;
    STDMETHODIMP CheckEquilibriumSpec(VARIANT, VARIANT, BSTR, VARIANT_BOOL*) override { return E_NOTIMPL; }

private:
    explicit FakeMaterial11(FakeStream initial) : FakeMaterial(std::move(initial)) {}

    ULONG references_ = 0;
};

} // namespace solvane
