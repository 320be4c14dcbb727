#include "MaterialCalls.h"

#include <algorithm>

namespace solvane::host {

namespace {

VariantArray arrayOf(const Variant& answer, VARTYPE elementType) {
    VariantArray array(answer);
    std::string error;
    EXPECT_EQ(answer.type(), VT_ARRAY | elementType);
    EXPECT_TRUE(readVariantArray(array, elementType, error)) << error;
    EXPECT_EQ(array.lowerBound(), 0);
    return array;
}

bool hasBasis(std::wstring_view property) {
    return property != L"temperature" && property != L"pressure";
}

struct FlashLetter {
    std::wstring_view property;
    std::wstring_view letters;
};

/// In the order in which a flash type of the first generation names them.
constexpr std::array flashLetters{
    FlashLetter{L"temperature", L"T"}, FlashLetter{L"pressure", L"P"}, FlashLetter{L"enthalpy", L"H"},
    FlashLetter{L"entropy", L"S"},     FlashLetter{L"volume", L"V"},   FlashLetter{L"vaporFraction", L"VF"},
};

std::wstring flashType(std::wstring_view first, std::wstring_view second) {
    std::wstring type;
    for (const auto& [property, letters] : flashLetters)
        if (property == first || property == second)
            type += letters;
    return type;
}

} // namespace

std::shared_ptr<StreamState> newState(const std::vector<std::string>& names) {
    std::vector<const Compound*> compounds;
    for (const std::string& name : names)
        compounds.push_back(findCompound(name));
    return std::make_shared<StreamState>(std::make_shared<const PropertyPackage>(compounds));
}

Variant reals(std::vector<double> values) {
    return VariantArray::of(std::span<const double>(values));
}

Variant texts(std::vector<std::wstring> values) {
    return VariantArray::of(std::span<const std::wstring>(values));
}

std::vector<double> realsOf(const Variant& answer) {
    return arrayOf(answer, VT_R8).reals();
}

std::vector<std::wstring> textsOf(const Variant& answer) {
    return arrayOf(answer, VT_BSTR).texts();
}

std::vector<LONG> integersOf(const Variant& answer) {
    return arrayOf(answer, VT_I4).integers();
}

FailureTexts failureOf(IUnknown* object) {
    const auto root = queryInterface<ECapeRoot>(object);
    const auto user = queryInterface<ECapeUser>(object);
    Bstr name, description, interfaceName, operation;
    FailureTexts texts;
    root->get_name(name.put());
    user->get_description(description.put());
    user->get_interfaceName(interfaceName.put());
    user->get_operation(operation.put());
    user->get_code(&texts.code);
    texts.name = name.view();
    texts.description = description.view();
    texts.interfaceName = interfaceName.view();
    texts.operation = operation.view();
    return texts;
}

HRESULT MaterialCalls::set(const wchar_t* property, std::vector<double> values, const wchar_t* phase) {
    const Bstr name(property), label(phase), mole(L"mole");
    const BSTR basis = hasBasis(property) ? mole.get() : nullptr;
    const Variant array = reals(std::move(values));
    if (generation_ == Generation::v10)
        return as<ICapeThermoMaterialObject>()->SetProp(name.get(), label.get(), VARIANT{}, nullptr, basis,
                                                        array.get());
    if (label.view() == L"overall")
        return as<ICapeThermoMaterial>()->SetOverallProp(name.get(), basis, array.get());
    return as<ICapeThermoMaterial>()->SetSinglePhaseProp(name.get(), label.get(), basis, array.get());
}

HRESULT MaterialCalls::get(const wchar_t* property, std::vector<double>& values, const wchar_t* phase) {
    const Bstr name(property), label(phase), mole(L"mole");
    const BSTR basis = hasBasis(property) ? mole.get() : nullptr;
    Variant answer;
    HRESULT result = S_OK;
    if (generation_ == Generation::v10)
        result = as<ICapeThermoMaterialObject>()->GetProp(name.get(), label.get(), VARIANT{}, nullptr, basis,
                                                          answer.put());
    else if (label.view() == L"overall")
        result = as<ICapeThermoMaterial>()->GetOverallProp(name.get(), basis, answer.put());
    else
        result = as<ICapeThermoMaterial>()->GetSinglePhaseProp(name.get(), label.get(), basis, answer.put());
    if (SUCCEEDED(result))
        values = realsOf(answer);
    return result;
}

HRESULT MaterialCalls::calculate(const wchar_t* property, const wchar_t* phase) {
    const Variant names = texts({property}), labels = texts({phase});
    if (generation_ == Generation::v10)
        return as<ICapeThermoMaterialObject>()->CalcProp(names.get(), labels.get(), Bstr(L"mixture").get());
    return as<ICapeThermoPropertyRoutine>()->CalcSinglePhaseProp(names.get(), Bstr(phase).get());
}

HRESULT MaterialCalls::constants(const wchar_t* name, std::vector<Variant>& values) {
    const Variant names = texts({name});
    Variant answer;
    const HRESULT result =
        generation_ == Generation::v10
            ? as<ICapeThermoMaterialObject>()->GetComponentConstant(names.get(), VARIANT{}, answer.put())
            : as<ICapeThermoCompounds>()->GetCompoundConstant(names.get(), VARIANT{}, answer.put());
    values.clear();
    VariantArray array(answer);
    std::string error;
    EXPECT_TRUE(readVariantArray(array, VT_VARIANT, error)) << error;
    for (LONG i = 0; i < static_cast<LONG>(array.count()); ++i)
        SafeArrayGetElement(array.get().parray, &i, values.emplace_back().put());
    return result;
}

HRESULT MaterialCalls::pureValues(const wchar_t* property, PureArgument argument, double at,
                                  std::vector<double>& values) {
    const bool byTemperature = argument == PureArgument::temperature;
    const Variant names = texts({property});
    Variant answer;
    HRESULT result = S_OK;
    if (generation_ == Generation::v10) {
        const auto material = as<ICapeThermoMaterialObject>();
        const Bstr overall(L"overall"), pure(L"pure");
        result = set(byTemperature ? L"temperature" : L"pressure", {at});
        if (SUCCEEDED(result))
            result = material->CalcProp(names.get(), texts({L"overall"}).get(), pure.get());
        if (SUCCEEDED(result))
            result = material->GetProp(Bstr(property).get(), overall.get(), VARIANT{}, pure.get(), nullptr,
                                       answer.put());
    } else {
        const auto compounds = as<ICapeThermoCompounds>();
        result = byTemperature ? compounds->GetTDependentProperty(names.get(), at, VARIANT{}, answer.put())
                               : compounds->GetPDependentProperty(names.get(), at, VARIANT{}, answer.put());
    }
    if (SUCCEEDED(result))
        values = realsOf(answer);
    return result;
}

HRESULT MaterialCalls::twoPhaseValues(const wchar_t* property, const wchar_t* first, const wchar_t* second,
                                      std::vector<double>& values) {
    const Variant names = texts({property});
    const std::wstring joined = std::wstring(first) + second;
    const HRESULT result =
        generation_ == Generation::v10
            ? as<ICapeThermoMaterialObject>()->CalcProp(names.get(), texts({joined}).get(),
                                                        Bstr(L"mixture").get())
            : as<ICapeThermoPropertyRoutine>()->CalcTwoPhaseProp(names.get(), texts({first, second}).get());
    return FAILED(result) ? result : getTwoPhase(property, first, second, values);
}

HRESULT MaterialCalls::getTwoPhase(const wchar_t* property, const wchar_t* first, const wchar_t* second,
                                   std::vector<double>& values) {
    if (generation_ == Generation::v10)
        return get(property, values, (std::wstring(first) + second).c_str());
    Variant answer;
    const HRESULT result = as<ICapeThermoMaterial>()->GetTwoPhaseProp(
        Bstr(property).get(), texts({first, second}).get(), nullptr, answer.put());
    if (SUCCEEDED(result))
        values = realsOf(answer);
    return result;
}

HRESULT MaterialCalls::flash(const wchar_t* first, double firstValue, const wchar_t* second,
                             double secondValue) {
    const auto setCondition = [&](std::wstring_view property, double value) {
        return property == L"vaporFraction"
                   ? set(L"phaseFraction", {value}, generation_ == Generation::v10 ? L"vapor" : L"Vapor")
                   : set(property.data(), {value});
    };
    HRESULT result = set(L"fraction", gasFractions);
    if (generation_ == Generation::v11 && SUCCEEDED(result))
        result = as<ICapeThermoMaterial>()->SetPresentPhases(
            texts({L"Vapor", L"Liquid"}).get(),
            VariantArray::of(std::span<const LONG>(std::array<LONG, 2>{0, 0})).get());
    if (SUCCEEDED(result))
        result = setCondition(first, firstValue);
    if (SUCCEEDED(result))
        result = setCondition(second, secondValue);
    if (FAILED(result))
        return result;
    if (generation_ == Generation::v10)
        return as<ICapeThermoMaterialObject>()->CalcEquilibrium(Bstr(flashType(first, second)).get(),
                                                                VARIANT{});
    const auto specification = [](std::wstring_view property) {
        return property == L"vaporFraction"
                   ? Variant(VariantArray::ofTexts({L"phaseFraction", L"mole", L"Vapor"}))
                   : Variant(VariantArray::ofTexts({property.data(), nullptr, L"overall"}));
    };
    return as<ICapeThermoEquilibriumRoutine>()->CalcEquilibrium(
        specification(first).get(), specification(second).get(), Bstr(L"unspecified").get());
}

std::vector<std::wstring> MaterialCalls::presentPhases() {
    Variant labels, statuses;
    if (generation_ == Generation::v11) {
        EXPECT_EQ(as<ICapeThermoMaterial>()->GetPresentPhases(labels.put(), statuses.put()), S_OK);
        return textsOf(labels);
    }
    EXPECT_EQ(as<ICapeThermoMaterialObject>()->get_PhaseIds(labels.put()), S_OK);
    auto phases = textsOf(labels);
    std::erase(phases, L"Overall");
    return phases;
}

double MaterialCalls::scalar(const wchar_t* property, const wchar_t* phase) {
    const auto values = vector(property, phase);
    EXPECT_EQ(values.size(), 1u);
    return values.empty() ? 0.0 : values.front();
}

std::vector<double> MaterialCalls::vector(const wchar_t* property, const wchar_t* phase) {
    std::vector<double> values;
    EXPECT_EQ(get(property, values, phase), S_OK)
        << narrow(property) << ": " << narrow(failureOf(object()).description);
    return values;
}

double MaterialCalls::mixtureValue(const wchar_t* property) {
    double sum = 0;
    for (const std::wstring& phase : presentPhases()) {
        EXPECT_EQ(calculate(property, phase.c_str()), S_OK);
        sum += scalar(L"phaseFraction", phase.c_str()) * scalar(property, phase.c_str());
    }
    return sum;
}

} // namespace solvane::host
