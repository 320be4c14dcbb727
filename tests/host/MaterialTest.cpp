// What the materials of both generations share.
#include "LateBound.h"
#include "MaterialCalls.h"
#include "com/Module.h"

#include <algorithm>
#include <functional>

namespace solvane::host {

namespace {

ComModule module; // carries the type library for late-bound callers

class BothGenerations : public testing::TestWithParam<Generation> {
protected:
    MaterialCalls material{GetParam(), newState()};
};

INSTANTIATE_TEST_SUITE_P(Material, BothGenerations, testing::Values(Generation::v10, Generation::v11),
                         [](const auto& generation) {
                             return generation.param == Generation::v10 ? "v10" : "v11";
                         });

TEST_P(BothGenerations, hasNoPhaseThatDoesNotForm) {
    ASSERT_EQ(material.flash(500, 1e5), S_OK);
    EXPECT_EQ(material.presentPhases(), std::vector<std::wstring>{L"Vapor"});
    std::vector<double> values;
    EXPECT_EQ(material.get(L"fraction", values, L"Liquid"), HRESULT(ECapeThrmPropertyNotAvailableHR));
}

TEST_P(BothGenerations, startsWithAllPhasesAndNoValues) {
    EXPECT_EQ(material.presentPhases().size(), 2u);
    std::vector<double> values;
    EXPECT_EQ(material.get(L"temperature", values), HRESULT(ECapeThrmPropertyNotAvailableHR));
    EXPECT_NE(failureOf(material.object()).description.find(L"temperature"), std::wstring::npos);
}

TEST_P(BothGenerations, dropsCalculatedValuesWithTheirState) {
    ASSERT_EQ(material.flash(), S_OK);
    ASSERT_EQ(material.calculate(L"enthalpy", L"Vapor"), S_OK);
    const double enthalpy = material.scalar(L"enthalpy", L"Vapor");

    ASSERT_EQ(material.set(L"temperature", {280}), S_OK);
    std::vector<double> values;
    EXPECT_EQ(material.get(L"enthalpy", values, L"Vapor"), HRESULT(ECapeThrmPropertyNotAvailableHR));
    ASSERT_EQ(material.calculate(L"enthalpy", L"Vapor"), S_OK);
    EXPECT_GT(material.scalar(L"enthalpy", L"Vapor"), enthalpy);
}

TEST_P(BothGenerations, keepsTheFlowsOfCompoundsAndPhasesConsistent) {
    ASSERT_EQ(material.set(L"flow", {5, 2, 1.5, 1, 0.5}), S_OK);
    EXPECT_DOUBLE_EQ(material.scalar(L"totalFlow"), 10);
    EXPECT_DOUBLE_EQ(material.vector(L"fraction")[1], 0.2);
    EXPECT_EQ(material.set(L"flow", {0, 0, 0, 0, 0}), HRESULT(ECapeInvalidArgumentHR));

    ASSERT_EQ(material.flash(), S_OK); // which sets another composition and leaves the total flow
    double ofPhases = 0;
    std::vector<double> ofCompounds(gasFractions.size());
    for (const wchar_t* phase : {L"Vapor", L"Liquid"}) {
        ofPhases += material.scalar(L"totalFlow", phase);
        const auto flows = material.vector(L"flow", phase);
        std::ranges::transform(ofCompounds, flows, ofCompounds.begin(), std::plus());
    }
    EXPECT_DOUBLE_EQ(ofPhases, 10);
    for (std::size_t i = 0; i < ofCompounds.size(); ++i)
        EXPECT_NEAR(ofCompounds[i], 10 * gasFractions[i], 1e-12);
}

TEST_P(BothGenerations, reportsCodeNameAndPlaceOfFailures) {
    struct Row {
        HRESULT code;
        const wchar_t* name;
        const wchar_t* part; // of the description
        std::function<HRESULT(MaterialCalls&)> call;
    };
    std::vector<double> values;
    const Row rows[] = {
        {HRESULT(ECapeThrmPropertyNotAvailableHR), L"ECapeThrmPropertyNotAvailable", L"\"pH\"",
         [](MaterialCalls& m) { return m.calculate(L"pH", L"Vapor"); }},
        {HRESULT(ECapeThrmPropertyNotAvailableHR), L"ECapeThrmPropertyNotAvailable", L"\"enthalpy.Dfoo\"",
         [](MaterialCalls& m) { return m.calculate(L"enthalpy.Dfoo", L"Vapor"); }},
        {HRESULT(ECapeNoImplHR), L"ECapeNoImpl", L"kvalue is not calculated for Vapor",
         [](MaterialCalls& m) { return m.calculate(L"kvalue", L"Vapor"); }},
        {HRESULT(ECapeThrmPropertyNotAvailableHR), L"ECapeThrmPropertyNotAvailable", L"pressure",
         [](MaterialCalls& m) { return m.calculate(L"pressure", L"Vapor"); }},
        {HRESULT(ECapeInvalidArgumentHR), L"ECapeInvalidArgument", L"\"Solid\"",
         [](MaterialCalls& m) { return m.calculate(L"enthalpy", L"Solid"); }},
        {HRESULT(ECapeInvalidArgumentHR), L"ECapeInvalidArgument", L"fraction",
         [](MaterialCalls& m) { return m.set(L"fraction", {0.5, 0.5}); }},
        {HRESULT(ECapeInvalidArgumentHR), L"ECapeInvalidArgument", L"temperature: expected 1 value, got 2",
         [](MaterialCalls& m) { return m.set(L"temperature", {300, 310}); }},
        {HRESULT(ECapeNoImplHR), L"ECapeNoImpl", L"totalFlow of phase Vapor",
         [](MaterialCalls& m) { return m.set(L"totalFlow", {1}, L"Vapor"); }},
        {HRESULT(ECapeSolvingErrorHR), L"ECapeSolvingError", L"The flash failed: ",
         [](MaterialCalls& m) { return m.flash(-3, 1e5); }},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(narrow(row.part));
        EXPECT_EQ(row.call(material), row.code);
        const FailureTexts texts = failureOf(material.object());
        EXPECT_EQ(texts.code, row.code);
        EXPECT_EQ(texts.name, row.name);
        EXPECT_NE(texts.description.find(row.part), std::wstring::npos) << narrow(texts.description);
        EXPECT_FALSE(texts.operation.empty());
        EXPECT_EQ(texts.interfaceName.substr(0, 10), L"ICapeTherm");
    }
}

TEST_P(BothGenerations, keepsTheStreamAfterAFailedFlash) {
    ASSERT_EQ(material.flash(), S_OK);
    const double vaporFraction = material.scalar(L"phaseFraction", L"Vapor");
    ASSERT_NE(material.flash(260, 0), S_OK);
    EXPECT_EQ(material.scalar(L"phaseFraction", L"Vapor"), vaporFraction);
}

TEST_P(BothGenerations, acceptsOnlyWhatTheStandardAllowsUnderStrictRules) {
    MaterialCalls strict(GetParam(), newState(gasNames, {.strict = true}));
    EXPECT_EQ(strict.set(L"fraction", {0.5, 0.2, 0.1, 0.1, 0}), HRESULT(ECapeInvalidArgumentHR));
    EXPECT_NE(failureOf(strict.object()).description.find(L"not to 1"), std::wstring::npos);
    ASSERT_EQ(strict.flash(500, 1e5), S_OK);
    EXPECT_EQ(strict.calculate(L"density", L"Vapor"), S_OK);
    EXPECT_EQ(strict.scalar(L"temperature"), 500);
    const Bstr temperature(L"temperature"), density(L"density"), vapor(L"Vapor"), overall(L"overall"),
        mole(L"mole");
    Variant answer;
    if (GetParam() == Generation::v10) {
        const auto own = strict.as<ICapeThermoMaterialObject>();
        EXPECT_EQ(own->GetProp(density.get(), vapor.get(), VARIANT{}, nullptr, nullptr, answer.put()),
                  HRESULT(ECapeInvalidArgumentHR));
        EXPECT_EQ(
            own->SetProp(temperature.get(), overall.get(), VARIANT{}, nullptr, nullptr, Variant(300.0).get()),
            HRESULT(ECapeInvalidArgumentHR));
    } else {
        const auto own = strict.as<ICapeThermoMaterial>();
        EXPECT_EQ(own->GetOverallProp(temperature.get(), mole.get(), answer.put()),
                  HRESULT(ECapeInvalidArgumentHR));
        EXPECT_EQ(own->SetOverallProp(temperature.get(), nullptr, Variant(300.0).get()),
                  HRESULT(ECapeInvalidArgumentHR));
    }
}

// A host compares what it stated with what the stream reports.
TEST(Material, keepsTheConditionsOfItsFlashToTheLastDigit) {
    struct Condition {
        const StreamProperty& property;
        Place place;
        double value;
    };
    const StreamProperty& entropy = *findStreamProperty(L"entropy");
    const Condition temperature{temperatureProperty, Place::overall, 260.1},
        pressure{pressureProperty, Place::overall, 2.3e6}, vapor{phaseFractionProperty, Place::vapor, 0.3},
        liquid{phaseFractionProperty, Place::liquid, 0.7}, enthalpy{enthalpyProperty, Place::overall, -7e3},
        cold{entropy, Place::overall, -49.3};
    const std::pair<Condition, Condition> pairs[] = {
        {temperature, pressure}, {temperature, vapor}, {pressure, liquid}, {temperature, enthalpy},
        {pressure, enthalpy},    {temperature, cold},  {vapor, enthalpy},  {liquid, cold}};
    for (const auto& pair : pairs) {
        const auto state = newState();
        Failure failure;
        EXPECT_TRUE(state->set(Place::overall, fractionProperty, gasFractions, failure));
        const std::array conditions{pair.first, pair.second};
        for (const Condition& one : conditions)
            EXPECT_TRUE(state->set(one.place, one.property, std::span(&one.value, 1), failure));
        EXPECT_TRUE(state->flash({&conditions[0].property, conditions[0].place},
                                 {&conditions[1].property, conditions[1].place}, failure))
            << narrow(failure.text);
        for (const Condition& one : conditions) {
            std::vector<double> values;
            EXPECT_TRUE(state->get(one.place, one.property, values, failure)) << narrow(failure.text);
            EXPECT_EQ(values, std::vector<double>{one.value}) << narrow(describe(one.place, one.property));
        }
    }
}

TEST_P(BothGenerations, servesLateBoundCallers) {
    const LateBound script(material.object());
    if (GetParam() == Generation::v10) {
        EXPECT_EQ(textsOf(script.call(L"ComponentIds", DISPATCH_PROPERTYGET).value)[4], L"n-pentane");
    } else {
        const LateBound::Call made = script.call(L"CreateMaterial", DISPATCH_METHOD);
        ASSERT_EQ(made.value.type(), VT_DISPATCH);
        EXPECT_TRUE(queryInterface<ICapeThermoCompounds>(made.value.get().pdispVal));
    }
}

} // namespace

} // namespace solvane::host
