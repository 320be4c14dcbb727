#pragma once

#include "HostObject.h"
#include "Material.h"

namespace solvane::host {

/// By this interface a material of this host recognises another: its stream.
MIDL_INTERFACE("7E0B8F0C-3C0E-4B57-9F5B-6C2D1E6A9B41")
IStreamOwner : public IUnknown {
    virtual StreamState& STDMETHODCALLTYPE stream() = 0;
};

} // namespace solvane::host

__CRT_UUID_DECL(solvane::host::IStreamOwner, 0x7E0B8F0C, 0x3C0E, 0x4B57, 0x9F, 0x5B, 0x6C, 0x2D, 0x1E, 0x6A,
                0x9B, 0x41)

namespace solvane::host {

/// A material of the 1.1 generation.
class Material11 : public DispatchImpl<ICapeThermoMaterial>,
                   public DispatchImpl<ICapeThermoCompounds>,
                   public DispatchImpl<ICapeThermoPhases>,
                   public DispatchImpl<ICapeThermoPropertyRoutine>,
                   public DispatchImpl<ICapeThermoEquilibriumRoutine>,
                   public IStreamOwner,
                   public HostObject {
public:
    static ComRef<IDispatch> create(std::shared_ptr<StreamState> state, std::wstring name);
    static std::span<const InterfaceEntry> interfaceTable();

    // ICapeThermoMaterial
    STDMETHODIMP ClearAllProps() override;
    STDMETHODIMP CopyFromMaterial(IDispatch** source) override;
    STDMETHODIMP CreateMaterial(IDispatch** materialObject) override;
    STDMETHODIMP GetOverallProp(BSTR property, BSTR basis, VARIANT* results) override;
    STDMETHODIMP GetOverallTPFraction(double* temperature, double* pressure, VARIANT* composition) override;
    STDMETHODIMP GetPresentPhases(VARIANT* phaseLabels, VARIANT* phaseStatus) override;
    STDMETHODIMP GetSinglePhaseProp(BSTR property, BSTR phaseLabel, BSTR basis, VARIANT* results) override;
    STDMETHODIMP GetTPFraction(BSTR phaseLabel, double* temperature, double* pressure,
                               VARIANT* composition) override;
    STDMETHODIMP GetTwoPhaseProp(BSTR property, VARIANT phaseLabels, BSTR basis, VARIANT* results) override;
    STDMETHODIMP SetOverallProp(BSTR property, BSTR basis, VARIANT values) override;
    STDMETHODIMP SetPresentPhases(VARIANT phaseLabels, VARIANT phaseStatus) override;
    STDMETHODIMP SetSinglePhaseProp(BSTR property, BSTR phaseLabel, BSTR basis, VARIANT values) override;
    STDMETHODIMP SetTwoPhaseProp(BSTR property, VARIANT phaseLabels, BSTR basis, VARIANT values) override;
    // ICapeThermoCompounds
    STDMETHODIMP GetCompoundConstant(VARIANT props, VARIANT compIds, VARIANT* propVals) override;
    STDMETHODIMP GetCompoundList(VARIANT* compIds, VARIANT* formulae, VARIANT* names, VARIANT* boilTemps,
                                 VARIANT* molwts, VARIANT* casnos) override;
    STDMETHODIMP GetConstPropList(VARIANT* props) override;
    STDMETHODIMP GetNumCompounds(LONG* num) override;
    STDMETHODIMP GetPDependentProperty(VARIANT props, double pressure, VARIANT compIds,
                                       VARIANT* propVals) override;
    STDMETHODIMP GetPDependentPropList(VARIANT* props) override;
    STDMETHODIMP GetTDependentProperty(VARIANT props, double temperature, VARIANT compIds,
                                       VARIANT* propVals) override;
    STDMETHODIMP GetTDependentPropList(VARIANT* props) override;
    // ICapeThermoPhases
    STDMETHODIMP GetNumPhases(LONG* num) override;
    STDMETHODIMP GetPhaseInfo(BSTR phaseLabel, BSTR phaseAttribute, VARIANT* value) override;
    STDMETHODIMP GetPhaseList(VARIANT* phaseLabels, VARIANT* stateOfAggregation,
                              VARIANT* keyCompoundId) override;
    // ICapeThermoPropertyRoutine
    STDMETHODIMP CalcAndGetLnPhi(BSTR phaseLabel, double temperature, double pressure, VARIANT moleNumbers,
                                 int fFlags, VARIANT* lnPhi, VARIANT* lnPhiDT, VARIANT* lnPhiDP,
                                 VARIANT* lnPhiDn) override;
    STDMETHODIMP CalcSinglePhaseProp(VARIANT props, BSTR phaseLabel) override;
    STDMETHODIMP CalcTwoPhaseProp(VARIANT props, VARIANT phaseLabels) override;
    STDMETHODIMP CheckSinglePhasePropSpec(BSTR property, BSTR phaseLabel, VARIANT_BOOL* valid) override;
    STDMETHODIMP CheckTwoPhasePropSpec(BSTR property, VARIANT phaseLabels, VARIANT_BOOL* valid) override;
    STDMETHODIMP GetSinglePhasePropList(VARIANT* props) override;
    STDMETHODIMP GetTwoPhasePropList(VARIANT* props) override;
    // ICapeThermoEquilibriumRoutine
    STDMETHODIMP CalcEquilibrium(VARIANT specification1, VARIANT specification2, BSTR solutionType) override;
    STDMETHODIMP CheckEquilibriumSpec(VARIANT specification1, VARIANT specification2, BSTR solutionType,
                                      VARIANT_BOOL* isSupported) override;
    // IStreamOwner
    StreamState& STDMETHODCALLTYPE stream() override { return *state_; }

private:
    void onCall() override { callBack(state_->habits()); }
    /// Reads the label of a phase, which must be present under strict rules.
    bool readOwnPhase(BSTR label, Place& phase, Failure& failure) const;
    bool readOwnPhasePair(const VARIANT& labels, Place& both, Failure& failure) const;
    bool getValues(Place place, BSTR property, BSTR basis, VARIANT* results, Failure& failure) const;
    bool setValues(Place place, BSTR property, BSTR basis, const VARIANT& values, Failure& failure);
    bool calculate(const VARIANT& props, Place place, Failure& failure);
    HRESULT getPureProperties(const wchar_t* operation, PureArgument argument, double at,
                              const VARIANT& props, const VARIANT& compIds, VARIANT* propVals);
    bool getTPFraction(Place place, double* temperature, double* pressure, VARIANT* composition,
                       Failure& failure) const;

    std::shared_ptr<StreamState> state_;
};

} // namespace solvane::host
