#include "thermo/CalculationMaterial.h"

#include "OddVariants.h"
#include "Rig.h"
#include "com/CapeError.h"
#include "com/Text.h"

#include <gmock/gmock.h>

namespace solvane {

namespace {

using testing::ElementsAre;
using testing::IsEmpty;

/// The prelude of a run with one feed.
Scenario preluding(Generation generation) {
    return [=](const std::function<void(CallRecord&)>& sabotage) {
        Rig rig;
        FakeMaterial& material = rig.addFeed(generation);
        sabotage(*material.record);
        std::wstring error;
        rig.prepare(error);
        return Outcome{narrow(error), material.record->calls};
    };
}

/// The reading of a port's compounds, as the unit's validation does it.
Scenario validating(Generation generation) {
    return [=](const std::function<void(CallRecord&)>& sabotage) {
        Rig rig;
        CPort& port = rig.addFeed();
        FakeMaterial& material = Rig::connect(port, generation, makeFakeStream());
        sabotage(*material.record);
        std::vector<std::wstring> compounds;
        std::wstring error;
        std::ignore = readCompoundList(port, compounds, error);
        return Outcome{narrow(error), material.record->calls};
    };
}

std::wstring preludeError(Rig& rig) {
    std::wstring error;
    rig.prepare(error);
    return error;
}

TEST(CalculationMaterial, readsTheListsFromACopy) {
    const std::string compounds = "Failed to get component list from calculation material: ";
    expectRoad({{"Duplicate", "Failed to duplicate material object: "}, {"copy.ComponentIds", compounds}},
               preluding(Generation::v10));
    expectRoad({{"CreateMaterial", "Failed to duplicate material object: "},
                {"copy.GetCompoundList", compounds},
                {"copy.GetPhaseList", "Failed to get list of phases from material: "}},
               preluding(Generation::v11));
}

TEST(CalculationMaterial, reportsOddLists) {
    const std::string compounds = "Invalid compound list from material: ";
    const std::string states = "Invalid list of phase aggregation states from material: ";
    const Scenario of11 = preluding(Generation::v11);
    expectOddLists("copy.ComponentIds", VT_BSTR, compounds, preluding(Generation::v10));
    expectOddLists("copy.GetCompoundList", VT_BSTR, compounds, of11);
    expectOddLists("copy.GetPhaseList", VT_BSTR, "Invalid list of phase labels from material: ", of11, 0);
    expectOddLists("copy.GetPhaseList", VT_BSTR, states, of11, 1);
    const std::string wrongCount = states + "size does not match number of phases";
    expectOddAnswers({{"copy.GetPhaseList", texts({L"Vapor", L"Liquid"}), wrongCount, 1},
                      {"copy.GetPhaseList", Variant(), wrongCount, 1}},
                     of11);
}

TEST(CalculationMaterial, copiesTheFirstConnectedPortFeedsFirst) {
    Rig rig;
    rig.addFeed();
    FakeMaterial& secondFeed = rig.addFeed(Generation::v11);
    FakeMaterial& thirdFeed = rig.addFeed(Generation::v11);
    FakeMaterial& product = rig.addProduct(Generation::v10);
    EXPECT_EQ(preludeError(rig), L"");
    EXPECT_EQ(secondFeed.record->callsOf("CreateMaterial").size(), 1u);
    EXPECT_THAT(thirdFeed.record->calls, IsEmpty());
    EXPECT_THAT(product.record->calls, IsEmpty());

    Rig productsOnly;
    productsOnly.addFeed();
    productsOnly.addProduct();
    FakeMaterial& second = productsOnly.addProduct(Generation::v10);
    EXPECT_EQ(preludeError(productsOnly), L"");
    EXPECT_EQ(second.record->callsOf("Duplicate").size(), 1u);
    EXPECT_TRUE(productsOnly.run.material10);
}

TEST(CalculationMaterial, staysEmptyWithoutAConnectedPort) {
    Rig rig;
    rig.addFeed();
    EXPECT_EQ(preludeError(rig), L"");
    EXPECT_EQ(rig.run.nComp, 0u);
    EXPECT_THAT(rig.run.phaseNames, IsEmpty());
    for (const Wire& request :
         {wireOf(6u, "x"), wireOf(7u, 1., "x.y"), wireOf(8u, 1., "x"),
          wireOf(9u, 300., 1e5, "volume", "Vapor"), wireOf(10u, 300., 1e5, "kvalue", "Vapor", "Liquid"),
          wireOf(16u, 300., 1e5, "temperature", "pressure")})
        EXPECT_EQ(rig.failureOf(request),
                  "No calculation material available; at least one port must be connected");
}

TEST(CalculationMaterial, failsWithoutAnObjectWhateverTheCode) {
    for (const Generation generation : bothGenerations) {
        Rig rig;
        FakeMaterial& material = rig.addFeed(generation);
        material.record->add({.call = "", .result = S_OK, .text = {}, .value = {}});
        EXPECT_EQ(preludeError(rig), L"Failed to duplicate material object: " + FormatHresultText(S_OK));
    }
}

TEST(CalculationMaterial, namesTheInterfaceThatACopyLacks) {
    struct Row {
        Generation generation;
        IID hidden;
        std::wstring error;
    };
    const Row rows[] = {
        {Generation::v10, __uuidof(ICapeThermoMaterialObject),
         L"Copied material does not expose ICapeThermoMaterialObject"},
        {Generation::v11, __uuidof(ICapeThermoMaterial),
         L"Copied material does not expose ICapeThermoMaterial"},
        {Generation::v11, __uuidof(ICapeThermoCompounds),
         L"Failed to get ICapeThermoCompounds from calculation material"},
        // The same text as if its phases could not be listed.
        {Generation::v11, __uuidof(ICapeThermoPhases),
         L"Failed to get list of phases from material: " + FormatHresultText(E_NOINTERFACE)},
    };
    for (const Row& row : rows) {
        Rig rig;
        rig.addFeed(row.generation).hiddenOnCopies.push_back(row.hidden);
        EXPECT_EQ(preludeError(rig), row.error);
    }
}

TEST(CalculationMaterial, derivesAggregationCodesFromLabels) {
    FakeStream stream = makeFakeStream();
    stream.phases.clear();
    for (const wchar_t* label : {L"VAPOR", L"Gas", L"liquid", L"Solid", L"Liquid2"})
        stream.phases.push_back({label, L"vapor", 0, {}, {}});
    Rig rig;
    rig.addFeed(Generation::v11, stream);
    EXPECT_EQ(preludeError(rig), L"");
    EXPECT_THAT(rig.run.phaseNames, ElementsAre("VAPOR", "Gas", "liquid", "Solid", "Liquid2"));
    EXPECT_THAT(rig.run.aggregationCodes, ElementsAre(1, 0, 2, 3, 0));
}

TEST(CalculationMaterial, acceptsNullAndMissingIdentifiers) {
    Rig rig;
    FakeMaterial& material = rig.addFeed(Generation::v10);
    material.record->add({.call = "copy.ComponentIds", .text = {}, .value = texts({L"C1", nullptr})});
    EXPECT_EQ(preludeError(rig), L"");
    EXPECT_THAT(rig.run.compoundIds.texts(), ElementsAre(L"C1", L""));

    Rig noCompounds;
    noCompounds.addFeed(Generation::v11, makeFakeStream(0));
    EXPECT_EQ(preludeError(noCompounds), L"");
    EXPECT_EQ(noCompounds.run.nComp, 0u);
}

TEST(CompoundList, namesTheFailingCall) {
    const std::string failure = "Failed to get list of compounds from material connected to port: ";
    const std::string invalid = "Invalid compound list from material connected to port: ";
    for (const Generation generation : bothGenerations) {
        const std::string call = generation == Generation::v10 ? "ComponentIds" : "GetCompoundList";
        expectRoad({{call, failure}}, validating(generation));
        expectOddLists(call, VT_BSTR, invalid, validating(generation));
    }
}

TEST(CompoundList, queriesTheCompoundsInterfaceOncePerPort) {
    Rig rig;
    CPort& port = rig.addFeed();
    FakeMaterial& material = Rig::connect(port, Generation::v11, makeFakeStream(2));
    std::vector<std::wstring> compounds;
    std::wstring error;
    EXPECT_TRUE(readCompoundList(port, compounds, error));
    EXPECT_THAT(compounds, ElementsAre(L"C1", L"C2"));
    material.hidden.push_back(__uuidof(ICapeThermoCompounds));
    EXPECT_TRUE(readCompoundList(port, compounds, error));

    CPort& other = rig.addFeed();
    Rig::connect(other, Generation::v11, makeFakeStream()).hidden = material.hidden;
    EXPECT_FALSE(readCompoundList(other, compounds, error));
    EXPECT_EQ(error, L"Failed to get ICapeThermoCompounds interface from material object connected to port");
    EXPECT_FALSE(readCompoundList(rig.addFeed(), compounds, error));
    EXPECT_EQ(error, L"Port is not connected");
}

} // namespace

} // namespace solvane
