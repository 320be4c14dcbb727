// What the materials of both generations have in common.
#include "MaterialCalls.h"

#include "com/Module.h"

#include <cmath>

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

TEST_P(BothGenerations, aFlashGivesPhasesThatAddUpToTheStream) {
    ASSERT_EQ(material.set(L"totalFlow", {100}), S_OK);
    ASSERT_EQ(material.flash(L"temperature", 260, L"pressure", 2e6), S_OK);

    ASSERT_EQ(material.presentPhases(), (std::vector<std::wstring>{L"Vapor", L"Liquid"}));
    const auto vapor = material.vector(L"flow", L"Vapor");
    const auto liquid = material.vector(L"flow", L"Liquid");
    for (std::size_t i = 0; i < gasFractions.size(); ++i)
        EXPECT_NEAR(vapor[i] + liquid[i], 100 * gasFractions[i], 1e-8) << gasNames[i];
    EXPECT_NEAR(material.scalar(L"totalFlow", L"Vapor") + material.scalar(L"totalFlow", L"Liquid"), 100,
                1e-9);
    EXPECT_GT(material.vector(L"fraction", L"Vapor")[0], gasFractions[0]);
    EXPECT_DOUBLE_EQ(material.scalar(L"temperature", L"Liquid"), 260);
}

/// A state found at T and P is found again from its other properties.
TEST_P(BothGenerations, everyFlashFindsTheSameState) {
    ASSERT_EQ(material.flash(L"temperature", 260, L"pressure", 2e6), S_OK);
    const double vaporFraction = material.scalar(L"phaseFraction", L"Vapor");
    const double enthalpy = material.mixtureValue(L"enthalpy");
    const double entropy = material.mixtureValue(L"entropy");
    const double volume = material.mixtureValue(L"volume");
    struct Conditions {
        const wchar_t* first;
        double firstValue;
        const wchar_t* second;
        double secondValue;
    };
    const Conditions conditions[] = {
        {L"pressure", 2e6, L"temperature", 260},
        {L"pressure", 2e6, L"enthalpy", enthalpy},
        {L"entropy", entropy, L"pressure", 2e6},
        {L"pressure", 2e6, L"vaporFraction", vaporFraction},
        {L"vaporFraction", vaporFraction, L"temperature", 260},
        {L"temperature", 260, L"volume", volume},
        {L"volume", volume, L"pressure", 2e6},
        {L"vaporFraction", vaporFraction, L"volume", volume},
    };
    for (const auto& [first, firstValue, second, secondValue] : conditions) {
        SCOPED_TRACE(narrow(first) + " and " + narrow(second));
        MaterialCalls other(GetParam(), newState());
        ASSERT_EQ(other.flash(first, firstValue, second, secondValue), S_OK)
            << narrow(failureOf(other.object()).description);
        EXPECT_NEAR(other.scalar(L"temperature"), 260, 1e-4);
        EXPECT_NEAR(other.scalar(L"pressure") / 2e6, 1, 1e-6);
        EXPECT_NEAR(other.scalar(L"phaseFraction", L"Vapor"), vaporFraction, 1e-6);
        EXPECT_NEAR(other.mixtureValue(L"enthalpy"), enthalpy, 0.1);
    }
}

TEST_P(BothGenerations, aPhaseThatDoesNotFormIsNotPresent) {
    ASSERT_EQ(material.flash(L"temperature", 500, L"pressure", 1e5), S_OK);
    EXPECT_EQ(material.presentPhases(), std::vector<std::wstring>{L"Vapor"});
    std::vector<double> values;
    EXPECT_EQ(material.get(L"fraction", values, L"Liquid"), HRESULT(ECapeThrmPropertyNotAvailableHR));
}

TEST_P(BothGenerations, aNewMaterialHasAllPhasesAndNoValues) {
    EXPECT_EQ(material.presentPhases().size(), 2u);
    std::vector<double> values;
    EXPECT_EQ(material.get(L"temperature", values), HRESULT(ECapeThrmPropertyNotAvailableHR));
    EXPECT_NE(failureOf(material.object()).description.find(L"temperature"), std::wstring::npos);
}

TEST_P(BothGenerations, calculatedValuesDoNotOutliveTheirState) {
    ASSERT_EQ(material.flash(L"temperature", 260, L"pressure", 2e6), S_OK);
    ASSERT_EQ(material.calculate(L"enthalpy", L"Vapor"), S_OK);
    const double enthalpy = material.scalar(L"enthalpy", L"Vapor");

    ASSERT_EQ(material.set(L"temperature", {280}), S_OK);
    std::vector<double> values;
    EXPECT_EQ(material.get(L"enthalpy", values, L"Vapor"), HRESULT(ECapeThrmPropertyNotAvailableHR));
    ASSERT_EQ(material.calculate(L"enthalpy", L"Vapor"), S_OK);
    EXPECT_GT(material.scalar(L"enthalpy", L"Vapor"), enthalpy);
}

TEST_P(BothGenerations, theCompoundsFlowsMakeFlowAndComposition) {
    ASSERT_EQ(material.set(L"flow", {5, 2, 1.5, 1, 0.5}), S_OK);
    EXPECT_DOUBLE_EQ(material.scalar(L"totalFlow"), 10);
    EXPECT_DOUBLE_EQ(material.vector(L"fraction")[1], 0.2);
    EXPECT_EQ(material.set(L"flow", {0, 0, 0, 0, 0}), HRESULT(ECapeInvalidArgumentHR));
}

TEST_P(BothGenerations, failuresTellCodeNameAndPlace) {
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
         [](MaterialCalls& m) {
             return m.set(L"fraction", {0.5, 0.5});
         }},
        {HRESULT(ECapeInvalidArgumentHR), L"ECapeInvalidArgument", L"takes 1 values, not 2",
         [](MaterialCalls& m) {
             return m.set(L"temperature", {300, 310});
         }},
        {HRESULT(ECapeNoImplHR), L"ECapeNoImpl", L"totalFlow of phase Vapor",
         [](MaterialCalls& m) { return m.set(L"totalFlow", {1}, L"Vapor"); }},
        {HRESULT(ECapeSolvingErrorHR), L"ECapeSolvingError", L"The flash failed: ",
         [](MaterialCalls& m) { return m.flash(L"temperature", 900, L"vaporFraction", 0.5); }},
        {HRESULT(ECapeSolvingErrorHR), L"ECapeSolvingError", L"The flash failed: ",
         [](MaterialCalls& m) { return m.flash(L"temperature", -3, L"pressure", 1e5); }},
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

TEST_P(BothGenerations, constantsComeForEachCompoundAsFarAsTheyAreKnown) {
    MaterialCalls mixed(GetParam(), newState({"n-pentane", "carbon dioxide", "water"}));
    const HRESULT partly = GetParam() == Generation::v11 ? HRESULT(ECapeThrmPropertyNotAvailableHR) : S_OK;
    std::vector<Variant> values;
    ASSERT_EQ(mixed.constants(L"liquidDensityAt25C", values), partly);
    ASSERT_EQ(values.size(), 3u);
    EXPECT_NEAR(values[0].get().dblVal, 8612, 1);
    EXPECT_TRUE(values[1].isEmpty());
    EXPECT_NEAR(values[2].get().dblVal, 55345, 1);
    ASSERT_EQ(mixed.constants(L"smilesFormula", values), S_OK);
    EXPECT_EQ(viewOf(values.at(1).get().bstrVal), L"O=C=O");
    ASSERT_EQ(mixed.constants(L"heatOfVaporizationAtNormalBoilingPoint", values), partly);
    EXPECT_NEAR(values.at(0).get().dblVal, 25.8e3, 500); // measured
    EXPECT_EQ(mixed.constants(L"flashPoint", values), HRESULT(ECapeThrmPropertyNotAvailableHR));
}

TEST_P(BothGenerations, pureCompoundsHaveVaporPressuresAndBoilingPointsBelowTheirCriticalPoints) {
    std::vector<double> pressures, temperatures, values;
    ASSERT_EQ(material.pureValues(L"vaporPressure", PureArgument::temperature, 300, pressures), S_OK);
    ASSERT_EQ(pressures.size(), gasNames.size());
    EXPECT_TRUE(std::isnan(pressures[0]));       // methane
    EXPECT_NEAR(pressures[3] / 2.58e5, 1, 0.01); // measured
    ASSERT_EQ(
        material.pureValues(L"boilingPointTemperature", PureArgument::pressure, pressures[3], temperatures),
        S_OK);
    EXPECT_NEAR(temperatures[3], 300, 1e-6);
    ASSERT_EQ(material.pureValues(L"vaporPressure.Dtemperature", PureArgument::temperature, 300, values),
              S_OK);
    ASSERT_EQ(material.pureValues(L"boilingPointTemperature.Dpressure", PureArgument::pressure, pressures[3],
                                  temperatures),
              S_OK);
    EXPECT_NEAR(values[3] * temperatures[3], 1, 1e-6);
    EXPECT_EQ(material.pureValues(L"vaporPressure", PureArgument::temperature, -1, values),
              HRESULT(ECapeComputationHR));
    EXPECT_NE(material.pureValues(L"enthalpy", PureArgument::temperature, 300, values), S_OK);
}

TEST_P(BothGenerations, twoPhasesHaveKValuesAndASurfaceTension) {
    ASSERT_EQ(material.flash(L"temperature", 260, L"pressure", 2e6), S_OK);
    const auto y = material.vector(L"fraction", L"Vapor"), x = material.vector(L"fraction", L"Liquid");
    std::vector<double> k, back, values;
    ASSERT_EQ(material.twoPhaseValues(L"kvalue", L"Vapor", L"Liquid", k), S_OK);
    ASSERT_EQ(material.twoPhaseValues(L"kvalues", L"Liquid", L"Vapor", back), S_OK);
    for (std::size_t i = 0; i < gasNames.size(); ++i) {
        EXPECT_NEAR(k[i], y[i] / x[i], 1e-9 * k[i]);
        EXPECT_NEAR(k[i] * back[i], 1, 1e-12);
    }
    const std::pair<const wchar_t*, std::size_t> counts[] = {
        {L"surfaceTension", 1},      {L"surfaceTension.Dtemperature", 1}, {L"surfaceTension.Dmoles", 10},
        {L"logKvalue.Dpressure", 5}, {L"logKvalue.DmolFraction", 50},
    };
    for (const auto& [property, count] : counts) {
        ASSERT_EQ(material.twoPhaseValues(property, L"Vapor", L"Liquid", values), S_OK) << narrow(property);
        EXPECT_EQ(values.size(), count) << narrow(property);
    }
    EXPECT_NE(material.twoPhaseValues(L"kvalue", L"Vapor", L"Vapor", values), S_OK);
    EXPECT_NE(material.twoPhaseValues(L"enthalpy", L"Vapor", L"Liquid", values), S_OK);
    // The values belong to the phases as they were.
    ASSERT_EQ(material.set(L"fraction", gasFractions, L"Liquid"), S_OK);
    EXPECT_NE(material.getTwoPhase(L"kvalue", L"Vapor", L"Liquid", values), S_OK);
}

TEST_P(BothGenerations, derivativesAreServedByTheirSuffix) {
    ASSERT_EQ(material.flash(L"temperature", 260, L"pressure", 2e6), S_OK);
    const std::pair<const wchar_t*, std::size_t> counts[] = {
        {L"heatCapacity", 1}, {L"enthalpy.Dtemperature", 1}, {L"volume.DMOLES", 5}, {L"fugacity.Dmoles", 25}};
    for (const auto& [property, count] : counts) {
        ASSERT_EQ(material.calculate(property, L"Liquid"), S_OK) << narrow(property);
        EXPECT_EQ(material.vector(property, L"Liquid").size(), count) << narrow(property);
    }
    EXPECT_NEAR(material.scalar(L"enthalpy.Dtemperature", L"Liquid"),
                material.scalar(L"heatCapacityCp", L"Liquid"), 1e-9);
}

TEST_P(BothGenerations, aFailedFlashLeavesTheStreamAsItWas) {
    ASSERT_EQ(material.flash(L"temperature", 260, L"pressure", 2e6), S_OK);
    const double vaporFraction = material.scalar(L"phaseFraction", L"Vapor");
    ASSERT_NE(material.flash(L"temperature", 260, L"enthalpy", 1e9), S_OK);
    EXPECT_EQ(material.scalar(L"phaseFraction", L"Vapor"), vaporFraction);
}

/// Asks the object by the names and numbers of a script.
HRESULT callByName(IDispatch* object, const wchar_t* name, Variant& result) {
    LPOLESTR names[] = {const_cast<LPOLESTR>(name)};
    DISPID id = 0;
    const HRESULT found = object->GetIDsOfNames(IID_NULL, names, 1, LOCALE_NEUTRAL, &id);
    if (FAILED(found))
        return found;
    DISPPARAMS none{};
    return object->Invoke(id, IID_NULL, LOCALE_NEUTRAL, DISPATCH_METHOD | DISPATCH_PROPERTYGET, &none,
                          result.put(), nullptr, nullptr);
}

TEST_P(BothGenerations, lateBoundCallersAreServed) {
    Variant result;
    if (GetParam() == Generation::v10) {
        ASSERT_EQ(callByName(material.object(), L"ComponentIds", result), S_OK);
        EXPECT_EQ(textsOf(result)[4], L"n-pentane");
    } else {
        ASSERT_EQ(callByName(material.object(), L"CreateMaterial", result), S_OK);
        ASSERT_EQ(result.type(), VT_DISPATCH);
        EXPECT_TRUE(queryInterface<ICapeThermoCompounds>(result.get().pdispVal));
    }
}

} // namespace

} // namespace solvane::host
