#pragma once

#include "HostObject.h"
#include "Material.h"

namespace solvane::host {

/// A material of the 1.0 generation: everything in one interface.
class Material10 : public DispatchImpl<ICapeThermoMaterialObject>, public HostObject {
public:
    static ComRef<IDispatch> create(std::shared_ptr<StreamState> state, std::wstring name);
    static std::span<const InterfaceEntry> interfaceTable();

    // ICapeThermoMaterialObject
    STDMETHODIMP get_ComponentIds(VARIANT* compIds) override;
    STDMETHODIMP get_PhaseIds(VARIANT* phaseIds) override;
    STDMETHODIMP GetUniversalConstant(VARIANT props, VARIANT* propVals) override;
    STDMETHODIMP GetComponentConstant(VARIANT props, VARIANT compIds, VARIANT* propVals) override;
    STDMETHODIMP CalcProp(VARIANT props, VARIANT phases, BSTR calcType) override;
    STDMETHODIMP GetProp(BSTR property, BSTR phase, VARIANT compIds, BSTR calcType, BSTR basis,
                         VARIANT* results) override;
    STDMETHODIMP SetProp(BSTR property, BSTR phase, VARIANT compIds, BSTR calcType, BSTR basis,
                         VARIANT values) override;
    STDMETHODIMP CalcEquilibrium(BSTR flashType, VARIANT props) override;
    STDMETHODIMP SetIndependentVar(VARIANT indVars, VARIANT values) override;
    STDMETHODIMP GetIndependentVar(VARIANT indVars, VARIANT* values) override;
    STDMETHODIMP PropCheck(VARIANT props, VARIANT* valid) override;
    STDMETHODIMP AvailableProps(VARIANT* props) override;
    STDMETHODIMP RemoveResults(VARIANT props) override;
    STDMETHODIMP CreateMaterialObject(IDispatch** materialObject) override;
    STDMETHODIMP Duplicate(IDispatch** clone) override;
    STDMETHODIMP ValidityCheck(VARIANT props, VARIANT* relList) override;
    STDMETHODIMP GetPropList(VARIANT* props) override;
    STDMETHODIMP GetNumComponents(LONG* numComp) override;

private:
    void onCall() override { callBack(state_->habits()); }
    bool calculate(const std::vector<std::wstring>& properties, std::span<const Place> places, BSTR calcType,
                   Failure& failure);

    std::shared_ptr<StreamState> state_;
};

} // namespace solvane::host
