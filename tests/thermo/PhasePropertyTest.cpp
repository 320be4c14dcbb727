#include "OddVariants.h"
#include "Rig.h"

#include <gmock/gmock.h>

#include <map>
#include <numeric>

namespace solvane {

namespace {

/// Of three compounds.
Wire onePhase(const std::string& name, const std::string& phase = "Vapor") {
    return wireOf(9u, 350., 2e5, Reals{0.5, 0.3, 0.2}, name, phase);
}

Wire twoPhases(const std::string& name, const std::string& first = "Vapor",
               const std::string& second = "Liquid") {
    return wireOf(10u, 350., 2e5, Reals{0.5, 0.3, 0.2, 0.1, 0.3, 0.6}, name, first, second);
}

FakeStream streamWith(const std::wstring& name, const std::vector<double>& values) {
    FakeStream stream = makeFakeStream();
    stream.results[name] = values;
    return stream;
}

const std::string temperature = "Failed to set temperature on material: ";
const std::string pressure = "Failed to set pressure on material: ";
const std::string composition = "Failed to set composition on material: ";

/// The last call returns the values.
void expectPropertyRoad(const std::vector<Step>& steps, const Scenario& scenario) {
    expectRoad(steps, scenario);
    expectOddLists(steps.back().call, VT_R8, "Invalid return values: ", scenario);
}

TEST(PhaseProperty, calculatesForOnePhase) {
    expectPropertyRoad(
        {{"copy.SetProp(temperature, overall, empty, null, null, R8[350])", temperature},
         {"copy.SetProp(pressure, overall, empty, null, null, R8[200000])", pressure},
         {"copy.SetProp(fraction, Vapor, empty, null, mole, R8[0.5, 0.3, 0.2])", composition},
         {"copy.CalcProp(BSTR[viscosity], BSTR[Vapor], mixture)", "Failed to calculate viscosity: "},
         {"copy.GetProp(viscosity, Vapor, empty, mixture, null)", "Failed to get viscosity: "}},
        asking(Generation::v10, onePhase("viscosity"), streamWith(L"viscosity", {1e-5})));
    const std::wstring name = L"Enthalpy.Dtemperature";
    expectPropertyRoad(
        {{"copy.SetSinglePhaseProp(temperature, Liquid, null, R8[350])", temperature},
         {"copy.SetSinglePhaseProp(pressure, Liquid, null, R8[200000])", pressure},
         {"copy.SetSinglePhaseProp(fraction, Liquid, mole, R8[0.5, 0.3, 0.2])", composition},
         {"copy.CalcSinglePhaseProp(BSTR[Enthalpy.Dtemperature], Liquid)",
          "Failed to calculate Enthalpy.Dtemperature: "},
         {"copy.GetSinglePhaseProp(Enthalpy.Dtemperature, Liquid, mole)",
          "Failed to get Enthalpy.Dtemperature: "}},
        asking(Generation::v11, onePhase("Enthalpy.Dtemperature", "Liquid"), streamWith(name, {75})));
}

TEST(PhaseProperty, calculatesForTwoPhases) {
    expectPropertyRoad(
        {{"copy.SetProp(temperature, overall, empty, null, null, R8[350])", temperature},
         {"copy.SetProp(pressure, overall, empty, null, null, R8[200000])", pressure},
         {"copy.SetProp(fraction, Vapor, empty, null, mole, R8[0.5, 0.3, 0.2])", composition},
         {"copy.SetProp(fraction, Liquid, empty, null, mole, R8[0.1, 0.3, 0.6])", composition},
         {"copy.CalcProp(BSTR[kvalue], BSTR[VaporLiquid], mixture)", "Failed to calculate kvalue: "},
         {"copy.GetProp(kvalue, VaporLiquid, empty, mixture, null)", "Failed to get kvalue: "}},
        asking(Generation::v10, twoPhases("kvalue"), streamWith(L"kvalue", {5, 1, 0.3})));
    expectPropertyRoad(
        {{"copy.SetSinglePhaseProp(temperature, Vapor, null, R8[350])", temperature},
         {"copy.SetSinglePhaseProp(temperature, Liquid, null, R8[350])", temperature},
         {"copy.SetSinglePhaseProp(pressure, Vapor, null, R8[200000])", pressure},
         {"copy.SetSinglePhaseProp(pressure, Liquid, null, R8[200000])", pressure},
         {"copy.SetSinglePhaseProp(fraction, Vapor, mole, R8[0.5, 0.3, 0.2])", composition},
         {"copy.SetSinglePhaseProp(fraction, Liquid, mole, R8[0.1, 0.3, 0.6])", composition},
         {"copy.CalcTwoPhaseProp(BSTR[kvalue], BSTR[Vapor, Liquid])", "Failed to calculate kvalue: "},
         {"copy.GetTwoPhaseProp(kvalue, BSTR[Vapor, Liquid], null)", "Failed to get kvalue: "}},
        asking(Generation::v11, twoPhases("kvalue"), streamWith(L"kvalue", {5, 1, 0.3})));
}

TEST(PhaseProperty, derivesTheShapeFromTheNumberOfValues) {
    const struct {
        std::string name;
        std::size_t compounds;
        std::map<std::size_t, std::uint32_t> shapes; ///< by the number of values
    } rows[] = {
        {"volume", 3, {{1, 0}, {3, 1}, {9, 2}}}, {"mySurfaceTensionX", 3, {{1, 0}, {6, 3}}},
        {"LOGKVALUES", 3, {{3, 1}, {18, 4}}},    {"volume", 1, {{1, 0}}},
        {"kvalue", 1, {{1, 1}, {2, 4}}},         {"surfaceTension", 1, {{1, 0}, {2, 3}}},
    };
    for (const Generation generation : bothGenerations)
        for (const auto& row : rows)
            for (std::size_t count = 0; count < 20; ++count) {
                SCOPED_TRACE(testing::Message() << row.name << " of " << count);
                std::vector<double> values(count);
                std::iota(values.begin(), values.end(), 1);
                FakeStream stream = makeFakeStream(row.compounds);
                stream.results[{row.name.begin(), row.name.end()}] = values;
                Rig rig;
                rig.prepare(rig.addFeed(generation, stream));
                const bool isSingle = row.name == "volume";
                const Reals compositions(row.compounds * (isSingle ? 1 : 2));
                Reply reply = rig.send(
                    wireOf(isSingle ? 9u : 10u, 300., 1e5, compositions, row.name, "Vapor", "Liquid"));
                const auto shape = row.shapes.find(count);
                ASSERT_EQ(reply.word(), shape == row.shapes.end() ? 1u : 0u);
                if (shape == row.shapes.end()) {
                    EXPECT_EQ(reply.text(), "Invalid return values: unexpected number of values");
                } else {
                    EXPECT_EQ(reply.word(), shape->second);
                    EXPECT_EQ(reply.reals(count), values);
                }
            }
}

TEST(PhaseProperty, checksNamesBeforeTheMaterial) {
    const std::string ofOne = "Invalid or unsupported single-phase property: ";
    const std::string ofTwo = "Invalid or unsupported two-phase property: ";
    const std::string noMaterial = "No calculation material available; at least one port must be connected";
    const struct {
        Wire request;
        std::string failure;
    } rows[] = {
        {onePhase("kvalue"), ofOne + "kvalue"},
        {onePhase("Foo.Dtemperature"), ofOne + "Foo.Dtemperature"},
        {onePhase(".Dtemperature"), ofOne + ".Dtemperature"},
        {onePhase("enthalpy.foo"), noMaterial},
        {onePhase("VOLUME.Dmoles.Dmoles"), noMaterial},
        {onePhase("name"), noMaterial},
        {twoPhases("volume"), ofTwo + "volume"},
        {twoPhases("surface tension"), ofTwo + "surface tension"},
        {twoPhases("kvalue.Dpressure", "Vapor", "Vapor"), "phase names should not be the same"},
        {twoPhases("kvalue.Dpressure", "Vapor", "vapor"), noMaterial},
    };
    Rig rig;
    rig.run.nComp = 3;
    for (const auto& row : rows)
        EXPECT_EQ(rig.failureOf(row.request), row.failure);
}

TEST(PhaseProperty, acceptsAnySuccessCodeAndLowerBound) {
    for (const Generation generation : bothGenerations) {
        Rig rig;
        FakeMaterial& material = rig.addFeed(generation, makeFakeStream(2));
        material.stream.results[L"fugacity"] = {1, 2};
        rig.prepare(material);
        for (const char* call : {"copy.Set", "copy.Calc"})
            material.record->add({.call = call, .result = S_FALSE, .text = {}, .value = {}});
        material.record->add({.call = "copy.Get", .result = 5, .text = {}, .value = realsFrom(-3, 4, 5)});
        Reply reply = rig.send(wireOf(9u, Reals{300, 1e5, 0.5, 0.5}, "fugacity", "Vapor"));
        EXPECT_EQ(reply.word(), 0u);
        EXPECT_EQ(reply.word(), 1u);
        EXPECT_EQ(reply.reals(2), (std::vector<double>{4, 5}));
    }
}

} // namespace

} // namespace solvane
