#include "ParameterCalls.h"

#include "UnitCalls.h"
#include "cases/NameList.h"
#include "cases/ParameterRules.h"
#include "cases/Quantity.h"
#include "com/Text.h"
#include "com/VariantArray.h"

#include <algorithm>
#include <array>
#include <iterator>

namespace solvane::host {

namespace {

/// A unit without a collection of parameters has no parameters.
bool listParameters(ICapeUnit* unit, std::vector<ComRef<IDispatch>>& items, std::string& error) {
    const auto utilities = queryInterface<ICapeUtilities>(unit);
    if (!utilities)
        return true;
    ComRef<IDispatch> list;
    HRESULT result = utilities->get_parameters(list.put());
    if (FAILED(result))
        return callFailed(error, "get_parameters", unit, result);
    const auto collection = queryInterface<ICapeCollection>(list.get());
    LONG count = 0;
    if (!collection || FAILED(collection->Count(&count)))
        return true;
    for (LONG i = 1; i <= count; ++i) {
        result = collection->Item(Variant(i).get(), items.emplace_back().put());
        if (FAILED(result))
            return callFailed(error, "Item of the parameters", collection.get(), result);
    }
    return true;
}

ParameterValue valueOf(double value) {
    return value;
}
ParameterValue valueOf(LONG value) {
    return static_cast<std::int32_t>(value);
}
ParameterValue valueOf(VARIANT_BOOL value) {
    return value != VARIANT_FALSE;
}

std::optional<ParameterValue> valueOf(const Variant& value) {
    switch (value.type()) {
    case VT_R8:
        return valueOf(value.real());
    case VT_I4:
        return valueOf(value.integer());
    case VT_BOOL:
        return valueOf(value.boolean());
    case VT_BSTR:
        return narrow(value.text(), CP_UTF8);
    default:
        return std::nullopt;
    }
}

/// A getter fails if the specification lacks the value.
template <class Specification, class T>
std::optional<ParameterValue> get(Specification& specification, HRESULT (WINAPI Specification::*getter)(T*)) {
    T value{};
    if (FAILED((specification.*getter)(&value)))
        return std::nullopt;
    return valueOf(value);
}

template <class Specification>
std::optional<ParameterValue> get(Specification& specification,
                                  HRESULT (WINAPI Specification::*getter)(BSTR*)) {
    Bstr value;
    if (FAILED((specification.*getter)(value.put())))
        return std::nullopt;
    return narrow(value.view(), CP_UTF8);
}

template <class Specification>
void readBounds(Specification& specification, ModelParameter& parameter) {
    parameter.minimum = get(specification, &Specification::get_LowerBound);
    parameter.maximum = get(specification, &Specification::get_UpperBound);
}

void readOptions(ICapeOptionParameterSpec& specification, ModelParameter& parameter) {
    VariantArray options;
    std::string error;
    if (SUCCEEDED(specification.get_OptionList(options.put())) && readVariantArray(options, VT_BSTR, error))
        for (const std::wstring& option : options.texts())
            parameter.options.push_back(narrow(option, CP_UTF8));
    VARIANT_BOOL restricted = VARIANT_FALSE;
    specification.get_RestrictedToList(&restricted);
    parameter.restricted = restricted != VARIANT_FALSE;
}

/// Reads what the specifications of all kinds share, and what this kind adds.
template <class Specification>
void readSpecification(IUnknown* object, ModelParameter& parameter,
                       void (*readMore)(Specification&, ModelParameter&)) {
    const auto specification = queryInterface<Specification>(object);
    if (!specification)
        return;
    parameter.defaultValue = get(*specification, &Specification::get_DefaultValue);
    readMore(*specification, parameter);
}

struct Kind {
    CapeParamType type;
    ParameterKind kind;
    void (*read)(IUnknown* specification, ModelParameter& parameter);
};

constexpr std::array kinds{
    Kind{CAPE_REAL, ParameterKind::real,
         [](IUnknown* object, ModelParameter& parameter) {
             readSpecification<ICapeRealParameterSpec>(object, parameter, readBounds);
         }},
    Kind{CAPE_INT, ParameterKind::integer,
         [](IUnknown* object, ModelParameter& parameter) {
             readSpecification<ICapeIntegerParameterSpec>(object, parameter, readBounds);
         }},
    Kind{CAPE_BOOLEAN, ParameterKind::boolean,
         [](IUnknown* object, ModelParameter& parameter) {
             readSpecification<ICapeBooleanParameterSpec>(object, parameter,
                                                          [](ICapeBooleanParameterSpec&, ModelParameter&) {});
         }},
    Kind{CAPE_OPTION, ParameterKind::text,
         [](IUnknown* object, ModelParameter& parameter) {
             readSpecification<ICapeOptionParameterSpec>(object, parameter, readOptions);
         }},
};

void readSpecifications(IUnknown* object, ModelParameter& parameter) {
    const auto specification = queryInterface<ICapeParameterSpec>(object);
    CapeParamType type{};
    if (!specification || FAILED(specification->get_Type(&type)))
        return;
    VariantArray exponents;
    std::string error;
    if (SUCCEEDED(specification->get_Dimensionality(exponents.put())) &&
        readVariantArray(exponents, VT_R8, error))
        parameter.dimensionality = exponents.reals();
    const auto kind = std::ranges::find(kinds, type, &Kind::type);
    if (kind == kinds.end())
        return;
    parameter.kind = kind->kind;
    kind->read(object, parameter);
}

bool readParameter(IUnknown* item, ModelParameter& result, std::string& error) {
    const auto parameter = queryInterface<ICapeParameter>(item);
    const auto identification = queryInterface<ICapeIdentification>(item);
    if (!parameter || !identification) {
        error = "A parameter of the unit has no ICapeParameter or ICapeIdentification";
        return false;
    }
    Bstr name;
    HRESULT hr = identification->get_ComponentName(name.put());
    if (FAILED(hr))
        return callFailed(error, "get_ComponentName of a parameter", item, hr);
    result.name = narrow(name.view(), CP_UTF8);
    CapeParamMode mode{};
    hr = parameter->get_Mode(&mode);
    if (FAILED(hr))
        return callFailed(error, "get_Mode of parameter \"" + result.name + "\"", item, hr);
    Variant value;
    hr = parameter->get_value(value.put());
    if (FAILED(hr))
        return callFailed(error, "get_value of parameter \"" + result.name + "\"", item, hr);
    result.isInput = mode != CAPE_OUTPUT;
    result.value = valueOf(value);
    ComRef<IDispatch> specification;
    if (SUCCEEDED(parameter->get_Specification(specification.put())))
        readSpecifications(specification.get(), result);
    return true;
}

struct ToVariant {
    Variant operator()(double value) const { return Variant(value); }
    Variant operator()(std::int32_t value) const { return Variant(static_cast<LONG>(value)); }
    Variant operator()(bool value) const { return Variant(value); }
    Variant operator()(const std::string& value) const {
        return Variant(std::wstring_view(widen(value, CP_UTF8)));
    }
};

bool setParameter(IUnknown* item, const ModelParameter& parameter, ParameterValue value, std::string& error) {
    const auto reject = [&](const std::string& why) {
        error = "Parameter \"" + parameter.name + "\" cannot be set: " + why;
        return false;
    };
    if (!parameter.isInput)
        return reject("it is an output, which the script sets");
    if (const auto* number = std::get_if<std::int32_t>(&value);
        number && parameter.kind == ParameterKind::real)
        value = static_cast<double>(*number);
    if (const auto* text = std::get_if<std::string>(&value); text && parameter.kind == ParameterKind::real) {
        Quantity quantity;
        if (std::string fault; !parseQuantity(*text, parameter.dimensionality, quantity, fault))
            return reject(fault);
        value = quantity.value;
    }
    if (value.index() != static_cast<std::size_t>(parameter.kind))
        return reject("expected a value of kind \"" + std::string(kindName(parameter.kind)) + "\", got " +
                      valueText(value));
    if (const std::string fault = limitFault(parameter, value); !fault.empty())
        return reject(fault);
    const HRESULT result = queryInterface<ICapeParameter>(item)->put_value(variantOf(value).get());
    return SUCCEEDED(result) ||
           callFailed(error, "put_value of parameter \"" + parameter.name + "\"", item, result);
}

std::string inputList(const std::vector<ModelParameter>& parameters) {
    std::vector<ModelParameter> inputs;
    std::ranges::copy_if(parameters, std::back_inserter(inputs), &ModelParameter::isInput);
    const std::string names = nameList(inputs, &ModelParameter::name);
    return names.empty() ? "; it has no input parameters" : "; its input parameters: " + names;
}

} // namespace

Variant variantOf(const ParameterValue& value) {
    return std::visit(ToVariant(), value);
}

bool readParameters(ICapeUnit* unit, std::vector<ModelParameter>& parameters, std::string& error) {
    std::vector<ComRef<IDispatch>> items;
    return listParameters(unit, items, error) && std::ranges::all_of(items, [&](const auto& item) {
               return readParameter(item.get(), parameters.emplace_back(), error);
           });
}

bool setParameters(ICapeUnit* unit, const std::vector<ParameterSetting>& settings, std::string& error) {
    if (settings.empty())
        return true;
    std::vector<ComRef<IDispatch>> items;
    std::vector<ModelParameter> parameters;
    if (!listParameters(unit, items, error) || !readParameters(unit, parameters, error))
        return false;
    for (const ParameterSetting& setting : settings) {
        const auto parameter = std::ranges::find_if(
            parameters, [&](const ModelParameter& one) { return isSameName(one.name, setting.name); });
        if (parameter == parameters.end()) {
            error = "The unit has no parameter \"" + setting.name + "\"" + inputList(parameters);
            return false;
        }
        const auto item = items.begin() + (parameter - parameters.begin());
        if (!setParameter(item->get(), *parameter, setting.value, error))
            return false;
    }
    return true;
}

} // namespace solvane::host
