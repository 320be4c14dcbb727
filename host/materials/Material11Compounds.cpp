// The compounds' constants and properties as a 1.1 material returns them.
#include "Arguments.h"
#include "Material11.h"
#include "PureCompounds.h"
#include "com/Text.h"

namespace solvane::host {

namespace {

constexpr wchar_t compoundsInterface[] = L"ICapeThermoCompounds";

template <class T>
VariantArray ofCompounds(const PropertyPackage& package, T (*value)(const Compound&)) {
    std::vector<T> values;
    for (const Compound* compound : package.compounds())
        values.push_back(value(*compound));
    return VariantArray::of(std::span<const T>(values));
}

} // namespace

STDMETHODIMP Material11::GetCompoundList(VARIANT* compIds, VARIANT* formulae, VARIANT* names,
                                         VARIANT* boilTemps, VARIANT* molwts, VARIANT* casnos) {
    if (!clearResults({compIds, formulae, names, boilTemps, molwts, casnos}))
        return E_POINTER;
    return border([&]() -> HRESULT {
        using Text = std::wstring;
        const PropertyPackage& package = *state_->package();
        replace(compIds, VariantArray::of(std::span<const Text>(compoundIds(package))));
        replace(formulae,
                ofCompounds<Text>(package, [](const Compound& c) { return widen(c.formula, CP_UTF8); }));
        replace(names, ofCompounds<Text>(package, [](const Compound& c) { return widen(c.name, CP_UTF8); }));
        replace(boilTemps,
                ofCompounds<double>(package, [](const Compound& c) { return c.normalBoilingPoint; }));
        replace(molwts, ofCompounds<double>(package, [](const Compound& c) { return c.molecularWeight; }));
        replace(casnos,
                ofCompounds<Text>(package, [](const Compound& c) { return widen(c.casNumber, CP_UTF8); }));
        return S_OK;
    });
}

STDMETHODIMP Material11::GetNumCompounds(LONG* num) {
    return returnCount(num, state_->compoundCount());
}

STDMETHODIMP Material11::GetConstPropList(VARIANT* props) {
    return returnNames(props, constantNames);
}

STDMETHODIMP Material11::GetTDependentPropList(VARIANT* props) {
    return returnNames(props, [] { return purePropertyNames(PureArgument::temperature); });
}

STDMETHODIMP Material11::GetPDependentPropList(VARIANT* props) {
    return returnNames(props, [] { return purePropertyNames(PureArgument::pressure); });
}

/// If a value is missing, the others are returned with the code that says so.
STDMETHODIMP Material11::GetCompoundConstant(VARIANT props, VARIANT compIds, VARIANT* propVals) {
    if (!prepareResult(propVals))
        return E_POINTER;
    return call(compoundsInterface, L"GetCompoundConstant", [&](Failure& failure) {
        PureQuestion question;
        if (!readQuestion(props, L"list of constants", compIds, *state_->package(), question, failure))
            return false;
        ConstantValues constants = readConstants(*state_->package(), question);
        *propVals = constants.values.release();
        return constants.isComplete || fail(failure, ECapeThrmPropertyNotAvailableHR,
                                            L"Not every compound has each of the constants");
    });
}

STDMETHODIMP Material11::GetTDependentProperty(VARIANT props, double temperature, VARIANT compIds,
                                               VARIANT* propVals) {
    return getPureProperties(L"GetTDependentProperty", PureArgument::temperature, temperature, props, compIds,
                             propVals);
}

STDMETHODIMP Material11::GetPDependentProperty(VARIANT props, double pressure, VARIANT compIds,
                                               VARIANT* propVals) {
    return getPureProperties(L"GetPDependentProperty", PureArgument::pressure, pressure, props, compIds,
                             propVals);
}

HRESULT Material11::getPureProperties(const wchar_t* operation, PureArgument argument, double at,
                                      const VARIANT& props, const VARIANT& compIds, VARIANT* propVals) {
    if (!clearResults({propVals}))
        return E_POINTER;
    return call(compoundsInterface, operation, [&](Failure& failure) {
        PureQuestion question;
        std::vector<double> values;
        if (!readQuestion(props, L"list of properties", compIds, *state_->package(), question, failure) ||
            !readPureProperties(*state_->package(), argument, at, question, values, failure))
            return false;
        replace(propVals, VariantArray::of(values));
        return true;
    });
}

} // namespace solvane::host
