#include "OddVariants.h"
#include "Rig.h"
#include "thermo/MaterialFlash.h"

#include <gmock/gmock.h>

namespace solvane {

namespace {

using testing::ElementsAre;

Wire product(std::int32_t number, const std::string& name1, double value1, const std::string& name2,
             double value2) {
    return wireOf(2u, number, 12.5, Reals{0.5, 0.3, 0.2}, value1, value2, name1, name2);
}

/// A product stated and flashed at the end of the run.
Scenario flashing(Generation generation, const Wire& request, FakeStream stream = makeFakeStream()) {
    return [=](const std::function<void(CallRecord&)>& sabotage) {
        Rig rig;
        FakeMaterial& material = rig.addProduct(generation, stream);
        rig.prepare(material);
        std::string error = rig.failureOf(request);
        sabotage(*material.record);
        if (error.empty())
            std::ignore = flashProductPort(*rig.unit->productPorts.front().get(), error);
        return Outcome{error, material.record->calls};
    };
}

std::string flashError(Generation generation, const Wire& request, FakeStream stream = makeFakeStream()) {
    return flashing(generation, request, std::move(stream))([](CallRecord&) {}).error;
}

const std::string totalFlow = "Failed to set total flow on material: ";
const std::string composition = "Failed to set composition on material: ";

TEST(ProductFlash, usesThePortsOwnMaterial) {
    expectRoad({{"SetProp(totalFlow, overall, empty, null, mole, R8[12.5])", totalFlow},
                {"SetProp(fraction, overall, empty, null, mole, R8[0.5, 0.3, 0.2])", composition},
                {"SetProp(enthalpy, overall, empty, mixture, mole, R8[-5000])",
                 "Failed to set enthalpy on material: "},
                {"SetProp(pressure, overall, empty, null, null, R8[100000])",
                 "Failed to set pressure on material: "},
                {"CalcEquilibrium(PH, empty)", ""}},
               flashing(Generation::v10, product(1, "enthalpy", -5000, "pressure", 1e5)));
    expectRoad(
        {{"GetPhaseList", "Failed to get possible phase list from material: "},
         {"SetPresentPhases(BSTR[Vapor, Liquid, Liquid2], I4[0, 0, 0])",
          "Failed to set list of possible flash phases on material: "},
         {"SetOverallProp(totalFlow, mole, R8[12.5])", totalFlow},
         {"SetOverallProp(fraction, mole, R8[0.5, 0.3, 0.2])", composition},
         {"SetSinglePhaseProp(phaseFraction, Vapor, mole, R8[0.4])", "Failed to set vapor phase fraction: "},
         {"SetOverallProp(enthalpy, mole, R8[-5000])", "Failed to set enthalpy: "},
         {"CalcEquilibrium(BSTR[phaseFraction, mole, Vapor], BSTR[enthalpy, null, overall], unspecified)",
          ""}},
        flashing(Generation::v11, product(1, "vaporFraction", 0.4, "enthalpy", -5000)));
}

TEST(ProductFlash, looksForTheVaporPhaseAtTheConstraintsOwnPlace) {
    const std::string notFound = "Vapor phase not found for vapor phase flash constraint";
    const Wire vaporFirst = product(1, "vaporFraction", 0.4, "temperature", 300);
    const Wire vaporSecond = product(1, "temperature", 300, "vaporFraction", 0.4);
    FakeStream stream = makeFakeStream();
    EXPECT_EQ(flashError(Generation::v11, vaporFirst, stream), "");
    EXPECT_EQ(flashError(Generation::v11, vaporSecond, stream), notFound);

    // The state counts, not the label, and the result is always the first phase.
    std::swap(stream.phases[0], stream.phases[1]);
    stream.phases[1].label = L"Gas";
    stream.phases[1].aggregation = L"VAPOR";
    EXPECT_EQ(flashError(Generation::v11, vaporFirst, stream), notFound);
    const Outcome second = flashing(Generation::v11, vaporSecond, stream)([](CallRecord&) {});
    EXPECT_EQ(second.error, "");
    EXPECT_THAT(second.calls, testing::Contains("SetSinglePhaseProp(phaseFraction, Liquid, mole, R8[0.4])"));

    stream.phases.resize(1);
    EXPECT_EQ(flashError(Generation::v11, vaporSecond, stream), notFound);
    stream.phases.clear();
    EXPECT_EQ(flashError(Generation::v11, vaporFirst, stream), notFound);
}

TEST(ProductFlash, reportsOddPhaseLists) {
    const Scenario scenario = flashing(Generation::v11, product(1, "vaporFraction", 0.4, "temperature", 300));
    expectOddLists("GetPhaseList", VT_BSTR, "Invalid phase list from material: ", scenario, 0);
    expectOddLists("GetPhaseList", VT_BSTR, "Invalid values for aggregation states from material: ", scenario,
                   1);
    expectOddAnswers(
        {{"GetPhaseList", texts({L"vapor"}), "Number of values does not match number of phases", 1},
         {"GetPhaseList", Variant(), "Number of values does not match number of phases", 1},
         {"GetPhaseList", texts({nullptr, nullptr, nullptr}),
          "Vapor phase not found for vapor phase flash constraint", 1}},
        scenario);
    // Without a vapor fraction, the states do not matter.
    expectOddAnswers({{"GetPhaseList", reals({1}), "", 1}},
                     flashing(Generation::v11, product(1, "pressure", 1e5, "temperature", 300)));
}

TEST(ProductFlash, queriesInterfacesOncePerPort) {
    Rig rig;
    FakeMaterial& material = rig.addProduct(Generation::v11);
    rig.prepare(material);
    CPort& port = *rig.unit->productPorts.front().get();
    ASSERT_EQ(rig.failureOf(product(1, "pressure", 1e5, "temperature", 300)), "");
    std::string error;
    EXPECT_TRUE(flashProductPort(port, error)) << error;
    material.hidden = {__uuidof(ICapeThermoPhases), __uuidof(ICapeThermoEquilibriumRoutine)};
    EXPECT_TRUE(flashProductPort(port, error)) << error;

    // They are not kept beyond the connection.
    const std::pair<IID, std::string> lacks[] = {
        {__uuidof(ICapeThermoEquilibriumRoutine), "ICapeThermoEquilibriumRoutine"},
        {__uuidof(ICapeThermoPhases), "ICapeThermoPhases"},
    };
    for (const auto& [hidden, name] : lacks) {
        Rig::connect(port, Generation::v11, makeFakeStream());
        EXPECT_TRUE(flashProductPort(port, error)) << error;
        Rig::connect(port, Generation::v11, makeFakeStream()).hidden = {hidden};
        EXPECT_FALSE(flashProductPort(port, error));
        EXPECT_EQ(error, "Failed to get " + name + " from material");
    }
    port.Disconnect();
    EXPECT_FALSE(flashProductPort(port, error));
    EXPECT_EQ(error, "Port is not connected");
}

TEST(ProductFlash, rejectsUnsupportedPairsAtTheEndOfA10Run) {
    const Wire pair = product(1, "enthalpy", -5000, "entropy", -10);
    EXPECT_EQ(flashError(Generation::v10, pair), "Unsupported combination of flash properties");
    EXPECT_EQ(flashError(Generation::v11, pair), "");
}

TEST(ProductFlash, rejectsUnknownConstraints) {
    for (const Generation generation : bothGenerations) {
        Rig rig;
        rig.addProduct(generation);
        CPort& port = *rig.unit->productPorts.front().get();
        port.product.constraints[0].name = "temperature";
        port.product.constraints[1].name = "flow";
        std::string error;
        EXPECT_FALSE(flashProductPort(port, error));
        EXPECT_EQ(error, "Invalid flash property: flow");
    }
}

TEST(SetProduct, replacesEarlierCallsUnlessItFails) {
    Rig rig;
    rig.prepare(rig.addProduct(Generation::v11));
    rig.addProduct();
    ASSERT_EQ(rig.failureOf(product(1, "pressure", 1e5, "temperature", 300)), "");
    Reply reply = rig.send(product(1, "Energy", -7, "volume", 0.02));
    EXPECT_EQ(reply.word(), 0u);
    EXPECT_EQ(rig.failureOf(product(1, "flow", 1, "pressure", 2)),
              "setProduct: Invalid value for propName1; \"flow\" is not a valid flash constraint");
    EXPECT_EQ(rig.failureOf(product(1, "pressure", 1, "nonsense", 2)),
              "setProduct: Invalid value for propName2; \"nonsense\" is not a valid flash constraint");

    const ProductSpecification& stated = rig.unit->productPorts[0]->product;
    EXPECT_TRUE(stated.specified);
    EXPECT_EQ(stated.totalFlow, 12.5);
    EXPECT_THAT(stated.composition, ElementsAre(0.5, 0.3, 0.2));
    EXPECT_EQ(stated.constraints[0].name, "Energy");
    EXPECT_EQ(stated.constraints[0].value, -7);
    EXPECT_EQ(stated.constraints[1].name, "volume");
    EXPECT_EQ(stated.constraints[1].value, 0.02);
    EXPECT_FALSE(rig.unit->productPorts[1]->product.specified);
}

} // namespace

} // namespace solvane
