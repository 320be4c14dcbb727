// What only the 1.1 generation offers.
#include "MaterialCalls.h"

#include <cmath>

namespace solvane::host {

namespace {

class Material11 : public testing::Test {
protected:
    MaterialCalls calls{Generation::v11, newState()};
    ComRef<ICapeThermoMaterial> material = calls.as<ICapeThermoMaterial>();
    ComRef<ICapeThermoEquilibriumRoutine> equilibria = calls.as<ICapeThermoEquilibriumRoutine>();
    ComRef<ICapeThermoPropertyRoutine> properties = calls.as<ICapeThermoPropertyRoutine>();
};

TEST_F(Material11, acceptsVaporFractionsInManyForms) {
    struct Form {
        VariantArray specification;
        const wchar_t* phase;
        double value;
    };
    const Form forms[] = {
        {VariantArray::ofTexts({L"phaseFraction", L"mole", L"Vapor"}), L"Vapor", 0.25},
        {VariantArray::ofTexts({L"phaseFraction", L"Mole", L"vapor"}), L"vapor", 0.25},
        {VariantArray::ofTexts({L"PhaseFraction", nullptr, L"VAPOR"}), L"VAPOR", 0.25},
        {VariantArray::ofTexts({L"phaseFraction", L"mole", L"Liquid"}), L"Liquid", 0.75},
    };
    const auto pressure = VariantArray::ofTexts({L"pressure", nullptr, L"overall"});
    double temperature = 0; // that of the first
    for (const Form& form : forms)
        for (const bool pressureFirst : {true, false}) {
            ASSERT_EQ(material->ClearAllProps(), S_OK);
            ASSERT_EQ(calls.set(L"fraction", gasFractions), S_OK);
            ASSERT_EQ(calls.set(L"pressure", {2e6}), S_OK);
            ASSERT_EQ(calls.set(L"phaseFraction", {form.value}, form.phase), S_OK);
            const VARIANT first = pressureFirst ? pressure.get() : form.specification.get();
            const VARIANT second = pressureFirst ? form.specification.get() : pressure.get();
            VARIANT_BOOL isSupported = VARIANT_FALSE;
            EXPECT_EQ(equilibria->CheckEquilibriumSpec(first, second, nullptr, &isSupported), S_OK);
            EXPECT_EQ(isSupported, VARIANT_TRUE);
            ASSERT_EQ(equilibria->CalcEquilibrium(first, second, Bstr(L"Unspecified").get()), S_OK)
                << narrow(failureOf(calls.object()).description);
            if (temperature == 0)
                temperature = calls.scalar(L"temperature");
            EXPECT_NEAR(calls.scalar(L"temperature"), temperature, 1e-6);
        }
}

TEST_F(Material11, rejectsInvalidFlashSpecifications) {
    ASSERT_EQ(calls.flash(), S_OK);
    const auto temperature = VariantArray::ofTexts({L"temperature", nullptr, L"overall"});
    const Variant wrong[] = {
        VariantArray::ofTexts({L"phaseFraction", L"mole", L"overall"}),
        VariantArray::ofTexts({L"pressure", nullptr, L"Vapor"}),
        VariantArray::ofTexts({L"fraction", L"mole", L"overall"}),
        VariantArray::ofTexts({L"pressure"}),
        Variant(std::wstring_view(L"pressure")),
        Variant(),
    };
    for (const Variant& specification : wrong) {
        EXPECT_EQ(equilibria->CalcEquilibrium(temperature.get(), specification.get(), nullptr),
                  HRESULT(ECapeInvalidArgumentHR));
        VARIANT_BOOL isSupported = VARIANT_TRUE;
        EXPECT_EQ(
            equilibria->CheckEquilibriumSpec(temperature.get(), specification.get(), nullptr, &isSupported),
            S_OK);
        EXPECT_EQ(isSupported, VARIANT_FALSE);
    }
    const auto pressure = VariantArray::ofTexts({L"pressure", nullptr, L"overall"});
    EXPECT_EQ(equilibria->CalcEquilibrium(temperature.get(), pressure.get(), Bstr(L"retrograde").get()),
              HRESULT(ECapeNoImplHR));
    const auto enthalpy = VariantArray::ofTexts({L"enthalpy", nullptr, L"overall"});
    const auto entropy = VariantArray::ofTexts({L"entropy", nullptr, L"overall"});
    EXPECT_EQ(equilibria->CalcEquilibrium(enthalpy.get(), entropy.get(), nullptr), HRESULT(ECapeNoImplHR));
}

TEST_F(Material11, dropsValuesOfUnlistedPhases) {
    ASSERT_EQ(calls.flash(), S_OK);
    const LONG status[] = {CAPE_ESTIMATES};
    ASSERT_EQ(material->SetPresentPhases(texts({L"liquid"}).get(),
                                         VariantArray::of(std::span<const LONG>(status)).get()),
              S_OK);
    Variant labels, statuses;
    ASSERT_EQ(material->GetPresentPhases(labels.put(), statuses.put()), S_OK);
    EXPECT_EQ(textsOf(labels), std::vector<std::wstring>{L"Liquid"});
    EXPECT_EQ(integersOf(statuses), std::vector<LONG>{CAPE_ESTIMATES});
    std::vector<double> values;
    EXPECT_EQ(calls.get(L"fraction", values, L"Liquid"), S_OK);
    EXPECT_EQ(calls.get(L"fraction", values, L"Vapor"), HRESULT(ECapeThrmPropertyNotAvailableHR));

    ASSERT_EQ(material->SetPresentPhases(VARIANT{}, VARIANT{}), S_OK);
    EXPECT_EQ(material->SetPresentPhases(texts({L"Vapor", L"Liquid"}).get(),
                                         VariantArray::of(std::span<const LONG>(status)).get()),
              HRESULT(ECapeInvalidArgumentHR));
    ASSERT_EQ(material->GetPresentPhases(labels.put(), statuses.put()), S_OK);
    EXPECT_TRUE(labels.isEmpty());
}

TEST_F(Material11, calculatesAPhaseAtItsOwnConditions) {
    ASSERT_EQ(calls.set(L"temperature", {350}, L"Vapor"), S_OK);
    ASSERT_EQ(calls.set(L"pressure", {1e5}, L"Vapor"), S_OK);
    ASSERT_EQ(calls.set(L"fraction", gasFractions, L"Vapor"), S_OK);
    ASSERT_EQ(calls.calculate(L"volume", L"Vapor"), S_OK);
    EXPECT_NEAR(calls.scalar(L"volume", L"Vapor"), 8.314 * 350 / 1e5, 0.02 * 0.029);

    ASSERT_EQ(calls.calculate(L"fugacityCoefficient", L"Vapor"), S_OK);
    const auto coefficients = calls.vector(L"fugacityCoefficient", L"Vapor");
    Variant lnPhi, none;
    const Variant moles = reals({50, 20, 15, 10, 5});
    ASSERT_EQ(properties->CalcAndGetLnPhi(Bstr(L"Vapor").get(), 350, 1e5, moles.get(),
                                          CAPE_LOG_FUGACITY_COEFFICIENTS, lnPhi.put(), none.put(), none.put(),
                                          none.put()),
              S_OK);
    const auto logarithms = realsOf(lnPhi);
    for (std::size_t i = 0; i < coefficients.size(); ++i)
        EXPECT_NEAR(logarithms[i], std::log(coefficients[i]), 1e-12);
    EXPECT_EQ(properties->CalcAndGetLnPhi(Bstr(L"Vapor").get(), 350, 1e5, moles.get(), CAPE_T_DERIVATIVE,
                                          lnPhi.put(), none.put(), none.put(), none.put()),
              HRESULT(ECapeNoImplHR));
}

TEST_F(Material11, acceptsOnlyExactArrays) {
    const Bstr fraction(L"fraction"), temperature(L"temperature"), mole(L"mole");
    SAFEARRAYBOUND bounds[] = {{5, 0}, {1, 0}};
    Variant twoDimensions;
    twoDimensions.put()->parray = SafeArrayCreate(VT_R8, 2, bounds);
    twoDimensions.in()->vt = VT_ARRAY | VT_R8;
    EXPECT_EQ(material->SetOverallProp(fraction.get(), mole.get(), twoDimensions.get()),
              HRESULT(ECapeInvalidArgumentHR));
    EXPECT_EQ(material->SetOverallProp(fraction.get(), mole.get(), texts({L"1"}).get()),
              HRESULT(ECapeInvalidArgumentHR));
    EXPECT_EQ(
        properties->CalcSinglePhaseProp(Variant(std::wstring_view(L"enthalpy")).get(), Bstr(L"Vapor").get()),
        HRESULT(ECapeInvalidArgumentHR));
    EXPECT_EQ(material->SetOverallProp(temperature.get(), nullptr, Variant(300.0).get()), S_OK);
    EXPECT_EQ(calls.scalar(L"temperature"), 300);
    Variant answer;
    EXPECT_EQ(material->GetOverallProp(temperature.get(), Bstr(L"mass").get(), answer.put()),
              HRESULT(ECapeNoImplHR));
}

TEST_F(Material11, makesIndependentCopies) {
    ASSERT_EQ(calls.flash(), S_OK);
    ComRef<IDispatch> created;
    ASSERT_EQ(material->CreateMaterial(created.put()), S_OK);
    const auto copy = created.as<ICapeThermoMaterial>();
    Variant answer;
    EXPECT_EQ(copy->GetOverallProp(Bstr(L"temperature").get(), nullptr, answer.put()),
              HRESULT(ECapeThrmPropertyNotAvailableHR));

    IDispatch* source = calls.object();
    ASSERT_EQ(copy->CopyFromMaterial(&source), S_OK);
    ASSERT_EQ(copy->GetSinglePhaseProp(Bstr(L"fraction").get(), Bstr(L"Liquid").get(), Bstr(L"mole").get(),
                                       answer.put()),
              S_OK);
    EXPECT_EQ(realsOf(answer), calls.vector(L"fraction", L"Liquid"));
    ASSERT_EQ(copy->ClearAllProps(), S_OK);
    EXPECT_EQ(calls.scalar(L"temperature"), 260);
}

TEST_F(Material11, copiesOnlyFromMaterialsOfItsPackage) {
    MaterialCalls stranger(Generation::v11, newState({"methane"}));
    MaterialCalls older(Generation::v10, newState());
    for (const MaterialCalls* other : {&stranger, &older}) {
        IDispatch* source = other->object();
        EXPECT_EQ(material->CopyFromMaterial(&source), HRESULT(ECapeInvalidArgumentHR));
    }
    EXPECT_EQ(material->CopyFromMaterial(nullptr), HRESULT(ECapeInvalidArgumentHR));
}

TEST_F(Material11, listsItsCompoundsAndPhases) {
    Variant ids, formulae, names, boilingPoints, weights, casNumbers;
    ASSERT_EQ(calls.as<ICapeThermoCompounds>()->GetCompoundList(ids.put(), formulae.put(), names.put(),
                                                                boilingPoints.put(), weights.put(),
                                                                casNumbers.put()),
              S_OK);
    EXPECT_EQ(textsOf(ids)[3], L"n-butane");
    EXPECT_EQ(textsOf(formulae)[0], L"CH4");
    EXPECT_EQ(textsOf(casNumbers)[1], L"74-84-0");
    EXPECT_NEAR(realsOf(weights)[2], 44.1, 0.01);
    EXPECT_NEAR(realsOf(boilingPoints)[4], 309.2, 0.3);

    Variant labels, states, keys;
    ASSERT_EQ(calls.as<ICapeThermoPhases>()->GetPhaseList(labels.put(), states.put(), keys.put()), S_OK);
    EXPECT_EQ(textsOf(labels), (std::vector<std::wstring>{L"Vapor", L"Liquid"}));
    EXPECT_EQ(textsOf(states).size(), 2u);
    EXPECT_EQ(textsOf(keys).size(), 2u);
}

TEST_F(Material11, byStrictRulesGivesPropertiesOfPresentPhasesOnly) {
    MaterialCalls strict(Generation::v11, newState(gasNames, {.strict = true}));
    const auto isRejected = [&](HRESULT result) {
        EXPECT_EQ(result, HRESULT(ECapeInvalidArgumentHR));
        EXPECT_NE(failureOf(strict.object()).description.find(L"is not present; call SetPresentPhases"),
                  std::wstring::npos);
    };
    isRejected(strict.set(L"temperature", {300}, L"Vapor")); // a new material has no stated phases
    ASSERT_EQ(strict.flash(500, 1e5), S_OK);                 // all of it vapour
    EXPECT_EQ(strict.set(L"temperature", {510}, L"Vapor"), S_OK);
    isRejected(strict.set(L"temperature", {510}, L"Liquid"));
    isRejected(strict.calculate(L"density", L"Liquid"));
    std::vector<double> values;
    isRejected(strict.get(L"fraction", values, L"Liquid"));
    isRejected(strict.as<ICapeThermoPropertyRoutine>()->CalcTwoPhaseProp(texts({L"kvalue"}).get(),
                                                                         texts({L"Vapor", L"Liquid"}).get()));
}

TEST_F(Material11, listsTheLiquidFirstIfItsHostDoes) {
    MaterialCalls other(Generation::v11, newState(gasNames, {.liquidFirst = true}));
    Variant labels, states, keys;
    ASSERT_EQ(other.as<ICapeThermoPhases>()->GetPhaseList(labels.put(), states.put(), keys.put()), S_OK);
    EXPECT_EQ(textsOf(labels), (std::vector<std::wstring>{L"Liquid", L"Vapor"}));
    ASSERT_EQ(other.flash(), S_OK);
    EXPECT_EQ(other.presentPhases(), (std::vector<std::wstring>{L"Liquid", L"Vapor"}));
}

TEST_F(Material11, replacesWhatAnInOutArgumentHeld) {
    ASSERT_EQ(calls.set(L"temperature", {300}), S_OK);
    const Bstr temperature(L"temperature");
    Variant answer(std::wstring_view(L"old contents"));
    ASSERT_EQ(material->GetOverallProp(temperature.get(), nullptr, answer.in()), S_OK);
    EXPECT_EQ(realsOf(answer), std::vector<double>{300});
    EXPECT_EQ(material->GetOverallProp(temperature.get(), nullptr, nullptr), E_POINTER);
}

} // namespace

} // namespace solvane::host
