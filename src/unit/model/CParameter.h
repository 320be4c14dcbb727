#pragma once

#include "CapeOpenBaseObject.h"

#include <cstdint>
#include <string>
#include <vector>

namespace solvane {

class Unit;

/// The values of CapeParamType; the kinds of parameter that a unit can have.
enum class ParameterKind : std::int32_t { real = 0, integer = 1, string = 2, boolean = 3 };

/// The type of a parameter's VARIANTs: VT_R8, VT_I4, VT_BSTR, VT_BOOL.
VARTYPE variantTypeOf(ParameterKind kind);

/// One user-defined value of the unit. The object exposes the specification interfaces of all four kinds;
/// operations of a kind other than the parameter's own fail.
class CParameter : public DispatchImpl<ICapeBooleanParameterSpec>,
                   public DispatchImpl<ICapeIntegerParameterSpec>,
                   public DispatchImpl<ICapeOptionParameterSpec>,
                   public DispatchImpl<ICapeParameter>,
                   public DispatchImpl<ICapeParameterSpec>,
                   public DispatchImpl<ICapeRealParameterSpec>,
                   public CapeOpenBaseObject {
public:
    /// Not counted: the unit owns its parameters. Null for a parameter that no unit made.
    Unit* ownerUnit = nullptr;
    ParameterKind parameterKind = ParameterKind::real;
    bool isInput = true;
    /// Of a real parameter only: exponents of the SI base units, in the order of ui/UnitOfMeasure.h; may be
    /// empty.
    std::vector<double> dimensionality;
    // VT_EMPTY: no lower bound, no upper bound, no default.
    Variant minimumValue;
    Variant maximumValue;
    Variant defaultValue;
    Variant currentValue; ///< a null text counts as empty
    // Of a string parameter.
    std::vector<std::wstring> optionList;
    bool restrictedToList = false;

    /// Whether the text is one of the options, compared exactly.
    bool isOption(std::wstring_view text) const;

    // One of each for all interfaces; the form in which the object is created implements them.
    STDMETHODIMP QueryInterface(REFIID iid, void** result) override = 0;
    STDMETHODIMP_(ULONG) AddRef() override = 0;
    STDMETHODIMP_(ULONG) Release() override = 0;

    static std::span<const InterfaceEntry> interfaceTable();
    HRESULT FinalConstruct() { return S_OK; }

    // ICapeParameter
    STDMETHODIMP get_Specification(IDispatch** specification) override;
    STDMETHODIMP get_value(VARIANT* value) override;
    STDMETHODIMP put_value(VARIANT value) override;
    STDMETHODIMP get_ValStatus(CapeValidationStatus* status) override;
    STDMETHODIMP get_Mode(CapeParamMode* mode) override;
    STDMETHODIMP put_Mode(CapeParamMode mode) override;
    STDMETHODIMP Validate(BSTR* message, VARIANT_BOOL* isValid) override;
    STDMETHODIMP Reset() override;
    // ICapeParameterSpec
    STDMETHODIMP get_Type(CapeParamType* type) override;
    STDMETHODIMP get_Dimensionality(VARIANT* dimensions) override;
    // ICapeRealParameterSpec
    STDMETHODIMP get_DefaultValue(double* value) override;
    STDMETHODIMP get_LowerBound(double* value) override;
    STDMETHODIMP get_UpperBound(double* value) override;
    STDMETHODIMP Validate(double value, BSTR* message, VARIANT_BOOL* isValid) override;
    // ICapeIntegerParameterSpec
    STDMETHODIMP get_DefaultValue(LONG* value) override;
    STDMETHODIMP get_LowerBound(LONG* value) override;
    STDMETHODIMP get_UpperBound(LONG* value) override;
    STDMETHODIMP Validate(LONG value, BSTR* message, VARIANT_BOOL* isValid) override;
    // ICapeOptionParameterSpec
    STDMETHODIMP get_DefaultValue(BSTR* value) override;
    STDMETHODIMP get_OptionList(VARIANT* options) override;
    STDMETHODIMP get_RestrictedToList(VARIANT_BOOL* restricted) override;
    STDMETHODIMP Validate(BSTR value, BSTR* message, VARIANT_BOOL* isValid) override;
    // ICapeBooleanParameterSpec
    STDMETHODIMP get_DefaultValue(VARIANT_BOOL* value) override;
    STDMETHODIMP Validate(VARIANT_BOOL value, BSTR* message, VARIANT_BOOL* isValid) override;

private:
    HRESULT checkKind(ParameterKind kind, const wchar_t* method);
    HRESULT raiseAbsent(const wchar_t* text, const wchar_t* method);
    HRESULT raiseInvalidValue(const wchar_t* text);
    template <class T>
    HRESULT getNumber(ParameterKind kind, const Variant& field, const wchar_t* method, const wchar_t* absent,
                      T* value);
    template <class T>
    HRESULT validateBounds(ParameterKind kind, T value, BSTR* message, VARIANT_BOOL* isValid);
    /// The value was replaced: the unit must be validated and saved again.
    void markValueChanged();
};

} // namespace solvane
