#include "CParameter.h"

#include "Unit.h"
#include "com/VariantArray.h"

#include <algorithm>
#include <array>
#include <cfloat>
#include <cmath>

namespace solvane {

namespace {

constexpr wchar_t parameterInterface[] = L"ICapeParameter";

/// The names of the kinds in error texts, in the order of ParameterKind.
struct KindTexts {
    VARTYPE variantType;
    const wchar_t* notOfKind;
    const wchar_t* specification;
    const wchar_t* expected;
};
constexpr std::array<KindTexts, 4> kindTexts{{
    {VT_R8, L"Not a real parameter", L"ICapeRealParameterSpec",
     L"Invalid data type: double precision value expected"},
    {VT_I4, L"Not an integer parameter", L"ICapeIntegerParameterSpec",
     L"Invalid data type: integer value expected"},
    {VT_BSTR, L"Not an option parameter", L"ICapeOptionParameterSpec",
     L"Invalid data type: string value expected"},
    {VT_BOOL, L"Not a boolean parameter", L"ICapeBooleanParameterSpec",
     L"Invalid data type: boolean value expected"},
}};

const KindTexts* textsOf(ParameterKind kind) {
    const auto index = static_cast<std::size_t>(kind);
    return index < kindTexts.size() ? &kindTexts[index] : nullptr;
}

/// The missing value of the parameter interfaces.
constexpr double missingValue = -DBL_MAX;

double numberIn(const Variant& field, double) {
    return field.real();
}
LONG numberIn(const Variant& field, LONG) {
    return field.integer();
}
VARIANT_BOOL numberIn(const Variant& field, VARIANT_BOOL) {
    return field.boolean();
}

} // namespace

VARTYPE variantTypeOf(ParameterKind kind) {
    const KindTexts* texts = textsOf(kind);
    return texts ? texts->variantType : static_cast<VARTYPE>(VT_EMPTY);
}

std::span<const InterfaceEntry> CParameter::interfaceTable() {
    static constexpr std::array table{
        interfaceEntry<CParameter, IDispatch, ICapeParameter>(),
        interfaceEntry<CParameter, ICapeBooleanParameterSpec>(),
        interfaceEntry<CParameter, ICapeIntegerParameterSpec>(),
        interfaceEntry<CParameter, ICapeOptionParameterSpec>(),
        interfaceEntry<CParameter, ICapeParameter>(),
        interfaceEntry<CParameter, ICapeParameterSpec>(),
        interfaceEntry<CParameter, ICapeRealParameterSpec>(),
        interfaceEntry<CParameter, ECapeRoot>(),
        interfaceEntry<CParameter, ECapeUnknown>(),
        interfaceEntry<CParameter, ECapeUser>(),
        interfaceEntry<CParameter, ICapeIdentification>(),
    };
    return table;
}

// ---- the value

STDMETHODIMP CParameter::put_value(VARIANT value) {
    return border([&]() -> HRESULT {
        const KindTexts* texts = textsOf(parameterKind);
        if (!texts)
            return raise(L"internal error", L"Internal error; unknown parameter data type", L"put_value",
                         parameterInterface);
        Variant given;
        Variant converted;
        if (readArgument(value, given))
            VariantChangeType(converted.put(), given.in(), 0, texts->variantType);
        if (converted.type() != texts->variantType)
            return raise(L"Invalid type", texts->expected, L"put_value", parameterInterface);
        if (parameterKind == ParameterKind::real &&
            (converted.real() == missingValue || std::isnan(converted.real())))
            return raiseInvalidValue(L"Value cannot be missing");
        if (parameterKind == ParameterKind::string && restrictedToList) {
            // The conversion turns a null text into an empty one.
            if (given.type() == VT_BSTR && !given.get().bstrVal)
                return raiseInvalidValue(L"A value has not been specified");
            if (!isOption(converted.text()))
                return raiseInvalidValue(L"The specified value is not valid for this parameter");
        }
        currentValue = std::move(converted);
        markValueChanged();
        return S_OK;
    });
}

STDMETHODIMP CParameter::get_value(VARIANT* value) {
    return border([&]() -> HRESULT {
        if (!prepareResult(value))
            return E_POINTER;
        *value = Variant(currentValue).release();
        return S_OK;
    });
}

STDMETHODIMP CParameter::Reset() {
    return border([&]() -> HRESULT {
        if (defaultValue.isEmpty())
            return S_OK;
        currentValue = defaultValue;
        markValueChanged();
        return S_OK;
    });
}

void CParameter::markValueChanged() {
    if (!ownerUnit)
        return;
    ownerUnit->invalidate();
    ownerUnit->markChanged();
}

bool CParameter::isOption(std::wstring_view text) const {
    return std::find(optionList.begin(), optionList.end(), text) != optionList.end();
}

// ---- the rest of ICapeParameter and ICapeParameterSpec

STDMETHODIMP CParameter::get_Specification(IDispatch** specification) {
    return border([&]() -> HRESULT {
        if (!prepareResult(specification))
            return E_POINTER;
        QueryInterface(IID_IDispatch, reinterpret_cast<void**>(specification));
        return S_OK;
    });
}

STDMETHODIMP CParameter::get_ValStatus(CapeValidationStatus* status) {
    if (!prepareResult(status))
        return E_POINTER;
    *status = CAPE_VALID;
    return S_OK;
}

STDMETHODIMP CParameter::get_Mode(CapeParamMode* mode) {
    if (!prepareResult(mode))
        return E_POINTER;
    *mode = isInput ? CAPE_INPUT : CAPE_OUTPUT;
    return S_OK;
}

STDMETHODIMP CParameter::put_Mode(CapeParamMode) {
    return border([&] {
        return raise(L"Access denied", L"The mode of this parameter cannot be changed", L"put_Mode",
                     parameterInterface);
    });
}

STDMETHODIMP CParameter::Validate(BSTR*, VARIANT_BOOL* isValid) {
    if (!prepareResult(isValid))
        return E_POINTER;
    *isValid = VARIANT_TRUE;
    return S_OK;
}

STDMETHODIMP CParameter::get_Type(CapeParamType* type) {
    if (!prepareResult(type))
        return E_POINTER;
    *type = static_cast<CapeParamType>(parameterKind);
    return S_OK;
}

STDMETHODIMP CParameter::get_Dimensionality(VARIANT* dimensions) {
    return border([&]() -> HRESULT {
        if (!prepareResult(dimensions))
            return E_POINTER;
        *dimensions = VariantArray::of(dimensionality).release();
        return S_OK;
    });
}

// ---- what the four specification interfaces share

HRESULT CParameter::checkKind(ParameterKind kind, const wchar_t* method) {
    if (parameterKind == kind)
        return S_OK;
    const KindTexts* texts = textsOf(kind);
    return raise(L"Parameter type error", texts->notOfKind, method, texts->specification);
}

HRESULT CParameter::raiseAbsent(const wchar_t* text, const wchar_t* method) {
    return raise(text, text, method, textsOf(parameterKind)->specification);
}

HRESULT CParameter::raiseInvalidValue(const wchar_t* text) {
    return raise(L"Invalid value", text, L"put_value", parameterInterface);
}

template <class T>
HRESULT CParameter::getNumber(ParameterKind kind, const Variant& field, const wchar_t* method,
                              const wchar_t* absent, T* value) {
    return border([&]() -> HRESULT {
        if (!prepareResult(value))
            return E_POINTER;
        const HRESULT checked = checkKind(kind, method);
        if (FAILED(checked))
            return checked;
        if (field.isEmpty())
            return raiseAbsent(absent, method);
        *value = numberIn(field, T{});
        return S_OK;
    });
}

template <class T>
HRESULT CParameter::validateBounds(ParameterKind kind, T value, BSTR* message, VARIANT_BOOL* isValid) {
    return border([&]() -> HRESULT {
        if (!message || !prepareResult(isValid))
            return E_POINTER;
        prepareMessage(message);
        const HRESULT checked = checkKind(kind, L"Validate");
        if (FAILED(checked))
            return checked;
        const wchar_t* failure = nullptr;
        if (!minimumValue.isEmpty() && numberIn(minimumValue, value) > value)
            failure = L"Value below minimum bound";
        else if (!maximumValue.isEmpty() && value > numberIn(maximumValue, value))
            failure = L"Value above maximum bound";
        *isValid = failure ? VARIANT_FALSE : VARIANT_TRUE;
        if (failure)
            *message = newBstr(failure);
        return S_OK;
    });
}

// ---- ICapeRealParameterSpec

STDMETHODIMP CParameter::get_DefaultValue(double* value) {
    return getNumber(ParameterKind::real, defaultValue, L"get_DefaultValue", L"No default value", value);
}
STDMETHODIMP CParameter::get_LowerBound(double* value) {
    return getNumber(ParameterKind::real, minimumValue, L"get_LowerBound", L"No minimum value", value);
}
STDMETHODIMP CParameter::get_UpperBound(double* value) {
    // Prescribed text: it names the minimum, as hosts know it.
    return getNumber(ParameterKind::real, maximumValue, L"get_UpperBound", L"No minimum value", value);
}
STDMETHODIMP CParameter::Validate(double value, BSTR* message, VARIANT_BOOL* isValid) {
    return validateBounds(ParameterKind::real, value, message, isValid);
}

// ---- ICapeIntegerParameterSpec

STDMETHODIMP CParameter::get_DefaultValue(LONG* value) {
    return getNumber(ParameterKind::integer, defaultValue, L"get_DefaultValue", L"No default value", value);
}
STDMETHODIMP CParameter::get_LowerBound(LONG* value) {
    return getNumber(ParameterKind::integer, minimumValue, L"get_LowerBound", L"No minimum value", value);
}
STDMETHODIMP CParameter::get_UpperBound(LONG* value) {
    return getNumber(ParameterKind::integer, maximumValue, L"get_UpperBound", L"No maximum value", value);
}
STDMETHODIMP CParameter::Validate(LONG value, BSTR* message, VARIANT_BOOL* isValid) {
    return validateBounds(ParameterKind::integer, value, message, isValid);
}

// ---- ICapeOptionParameterSpec

STDMETHODIMP CParameter::get_DefaultValue(BSTR* value) {
    return border([&]() -> HRESULT {
        if (!prepareResult(value))
            return E_POINTER;
        const HRESULT checked = checkKind(ParameterKind::string, L"get_DefaultValue");
        if (FAILED(checked))
            return checked;
        if (defaultValue.isEmpty())
            return raiseAbsent(L"No default value", L"get_DefaultValue");
        if (defaultValue.get().bstrVal)
            *value = newBstr(defaultValue.text());
        return S_OK;
    });
}

STDMETHODIMP CParameter::get_OptionList(VARIANT* options) {
    return border([&]() -> HRESULT {
        if (!prepareResult(options))
            return E_POINTER;
        const HRESULT checked = checkKind(ParameterKind::string, L"get_OptionList");
        if (FAILED(checked))
            return checked;
        *options = VariantArray::of(optionList).release();
        return S_OK;
    });
}

STDMETHODIMP CParameter::get_RestrictedToList(VARIANT_BOOL* restricted) {
    return border([&]() -> HRESULT {
        if (!prepareResult(restricted))
            return E_POINTER;
        const HRESULT checked = checkKind(ParameterKind::string, L"get_RestrictedToList");
        if (FAILED(checked))
            return checked;
        *restricted = restrictedToList ? VARIANT_TRUE : VARIANT_FALSE;
        return S_OK;
    });
}

STDMETHODIMP CParameter::Validate(BSTR value, BSTR* message, VARIANT_BOOL* isValid) {
    return border([&]() -> HRESULT {
        if (!message || !prepareResult(isValid))
            return E_POINTER;
        prepareMessage(message);
        const HRESULT checked = checkKind(ParameterKind::string, L"Validate");
        if (FAILED(checked))
            return checked;
        *isValid = VARIANT_TRUE;
        if (restrictedToList && (!value || !isOption(callersText(value)))) {
            // Accepts the value if there is no memory for the reason.
            *message = SysAllocString(value ? L"Invalid value for this parameter" : L"Value cannot be empty");
            *isValid = *message ? VARIANT_FALSE : VARIANT_TRUE;
        }
        // Hosts expect this code here and read the result from `isValid`.
        return E_NOTIMPL;
    });
}

// ---- ICapeBooleanParameterSpec

STDMETHODIMP CParameter::get_DefaultValue(VARIANT_BOOL* value) {
    return getNumber(ParameterKind::boolean, defaultValue, L"get_DefaultValue", L"No default value", value);
}

STDMETHODIMP CParameter::Validate(VARIANT_BOOL, BSTR* message, VARIANT_BOOL* isValid) {
    return border([&]() -> HRESULT {
        if (!message || !prepareResult(isValid))
            return E_POINTER;
        prepareMessage(message);
        const HRESULT checked = checkKind(ParameterKind::boolean, L"Validate");
        if (FAILED(checked))
            return checked;
        *isValid = VARIANT_TRUE;
        return S_OK;
    });
}

} // namespace solvane
