// What only the 1.0 generation offers.
#include "MaterialCalls.h"

namespace solvane::host {

namespace {

class Material10 : public testing::Test {
protected:
    MaterialCalls calls{Generation::v10, newState()};
    ComRef<ICapeThermoMaterialObject> material = calls.as<ICapeThermoMaterialObject>();
    const Bstr fraction{L"fraction"}, overall{L"Overall"}, mole{L"mole"}, mixture{L"Mixture"};
};

TEST_F(Material10, returnsTheRequestedCompoundsInTheirOrder) {
    ASSERT_EQ(calls.set(L"fraction", gasFractions), S_OK);
    Variant answer;
    ASSERT_EQ(material->GetProp(fraction.get(), overall.get(), texts({L"propane", L"METHANE"}).get(), nullptr,
                                mole.get(), answer.put()),
              S_OK);
    EXPECT_EQ(realsOf(answer), (std::vector<double>{0.15, 0.50}));

    const auto reversed = texts({L"n-pentane", L"n-butane", L"propane", L"ethane", L"methane"});
    ASSERT_EQ(material->SetProp(fraction.get(), overall.get(), reversed.get(), mixture.get(), mole.get(),
                                reals({0.1, 0.2, 0.3, 0.4, 0}).get()),
              S_OK);
    EXPECT_EQ(calls.vector(L"fraction"), (std::vector<double>{0, 0.4, 0.3, 0.2, 0.1}));
    EXPECT_EQ(material->SetProp(fraction.get(), overall.get(), texts({L"methane"}).get(), nullptr, mole.get(),
                                reals({1}).get()),
              HRESULT(ECapeInvalidArgumentHR));
    EXPECT_EQ(material->GetProp(fraction.get(), overall.get(), texts({L"argon"}).get(), nullptr, mole.get(),
                                answer.put()),
              HRESULT(ECapeInvalidArgumentHR));
}

TEST_F(Material10, calculatesTheStreamAsAWhole) {
    ASSERT_EQ(calls.flash(), S_OK);
    const double ofPhases = calls.mixtureValue(L"enthalpy");
    ASSERT_EQ(calls.calculate(L"enthalpy", L"Overall"), S_OK);
    EXPECT_DOUBLE_EQ(calls.scalar(L"enthalpy"), ofPhases);
    ASSERT_EQ(calls.set(L"fraction", gasFractions, L"Liquid"), S_OK);
    std::vector<double> values;
    EXPECT_EQ(calls.get(L"enthalpy", values), HRESULT(ECapeThrmPropertyNotAvailableHR));
    EXPECT_EQ(calls.calculate(L"fugacityCoefficient", L"Overall"), HRESULT(ECapeNoImplHR));
}

TEST_F(Material10, calculatesPropertiesWithTheFlash) {
    ASSERT_EQ(calls.set(L"fraction", gasFractions), S_OK);
    ASSERT_EQ(calls.set(L"temperature", {260}), S_OK);
    ASSERT_EQ(calls.set(L"pressure", {2e6}), S_OK);
    ASSERT_EQ(material->CalcEquilibrium(Bstr(L"tp").get(), texts({L"enthalpy"}).get()), S_OK);
    EXPECT_LT(calls.scalar(L"enthalpy", L"Liquid"), calls.scalar(L"enthalpy", L"Vapor"));
    ASSERT_EQ(material->RemoveResults(VARIANT{}), S_OK);
    std::vector<double> values;
    EXPECT_EQ(calls.get(L"enthalpy", values, L"Liquid"), HRESULT(ECapeThrmPropertyNotAvailableHR));
    EXPECT_EQ(calls.get(L"fraction", values, L"Liquid"), S_OK);
}

TEST_F(Material10, rejectsUnknownCalculationAndFlashTypes) {
    ASSERT_EQ(calls.flash(), S_OK);
    EXPECT_EQ(material->CalcProp(texts({L"enthalpy"}).get(), texts({L"Vapor"}).get(), Bstr(L"pure").get()),
              HRESULT(ECapeNoImplHR));
    EXPECT_EQ(material->CalcEquilibrium(Bstr(L"XY").get(), VARIANT{}), HRESULT(ECapeInvalidArgumentHR));
    EXPECT_NE(failureOf(material.get()).description.find(L"\"XY\""), std::wstring::npos);
}

TEST_F(Material10, makesIndependentDuplicates) {
    ASSERT_EQ(calls.flash(), S_OK);
    ComRef<IDispatch> clone;
    ASSERT_EQ(material->Duplicate(clone.put()), S_OK);
    const auto copy = clone.as<ICapeThermoMaterialObject>();
    Variant answer;
    ASSERT_EQ(copy->SetProp(Bstr(L"temperature").get(), overall.get(), VARIANT{}, nullptr, nullptr,
                            reals({300}).get()),
              S_OK);
    ASSERT_EQ(
        copy->GetProp(fraction.get(), Bstr(L"Liquid").get(), VARIANT{}, nullptr, mole.get(), answer.put()),
        S_OK);
    EXPECT_EQ(realsOf(answer), calls.vector(L"fraction", L"Liquid"));
    EXPECT_EQ(calls.scalar(L"temperature"), 260);
}

} // namespace

} // namespace solvane::host
