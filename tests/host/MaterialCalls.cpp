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

} // namespace

std::shared_ptr<StreamState> newState(const std::vector<std::string>& names, MaterialRules rules) {
    std::vector<const Compound*> compounds;
    for (const std::string& name : names)
        compounds.push_back(findCompound(name));
    return std::make_shared<StreamState>(std::make_shared<const PropertyPackage>(compounds),
                                         std::make_shared<MaterialHabits>(MaterialHabits{.rules = rules}));
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

HRESULT MaterialCalls::flash(double temperature, double pressure) {
    HRESULT result = set(L"fraction", gasFractions);
    if (generation_ == Generation::v11 && SUCCEEDED(result))
        result = as<ICapeThermoMaterial>()->SetPresentPhases(
            texts({L"Vapor", L"Liquid"}).get(),
            VariantArray::of(std::span<const LONG>(std::array<LONG, 2>{0, 0})).get());
    if (SUCCEEDED(result))
        result = set(L"temperature", {temperature});
    if (SUCCEEDED(result))
        result = set(L"pressure", {pressure});
    if (FAILED(result))
        return result;
    if (generation_ == Generation::v10)
        return as<ICapeThermoMaterialObject>()->CalcEquilibrium(Bstr(L"TP").get(), VARIANT{});
    return as<ICapeThermoEquilibriumRoutine>()->CalcEquilibrium(
        VariantArray::ofTexts({L"temperature", nullptr, L"overall"}).get(),
        VariantArray::ofTexts({L"pressure", nullptr, L"overall"}).get(), Bstr(L"unspecified").get());
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
