#include "OddVariants.h"
#include "Rig.h"

#include <gmock/gmock.h>

#include <cmath>

namespace solvane {

namespace {

using testing::ElementsAre;
using testing::StartsWith;

Wire feedProperty(std::int32_t feed, const std::string& name) {
    return wireOf(1u, feed, name);
}

Scenario reading(Generation generation, const std::string& name) {
    return asking(generation, feedProperty(1, name));
}

TEST(FeedProperty, readsDirectPropertiesWithTheirBasisInAnyCase) {
    const struct {
        std::string name;
        std::string hostName;
        std::string basis;
        std::vector<double> values;
    } rows[] = {
        {"temperature", "temperature", "null", {300}},
        {"Temperature", "temperature", "null", {300}},
        {"pressure", "pressure", "null", {101325}},
        {"TOTALFLOW", "totalFlow", "mole", {10}},
        {"flow", "flow", "mole", {10.0 / 6, 10.0 / 3, 5}},
        {"fraction", "fraction", "mole", {1.0 / 6, 1.0 / 3, 0.5}},
    };
    for (const Generation generation : bothGenerations)
        for (const auto& row : rows) {
            SCOPED_TRACE(row.name);
            const bool isVector = row.values.size() > 1;
            const std::string call =
                generation == Generation::v10
                    ? "GetProp(" + row.hostName + ", overall, empty, null, " + row.basis + ")"
                    : "GetOverallProp(" + row.hostName + ", " + row.basis + ")";
            const std::string invalid = "Invalid value for " + row.name + " from feed 1: ";
            const std::string wrongCount = isVector ? "Unexpected number of values" : "Scalar expected";
            expectRoad({{call, "Failed to get " + row.name + " from feed 1: "}},
                       reading(generation, row.name));
            expectOddLists(call, VT_R8, invalid, reading(generation, row.name));
            expectOddAnswers(
                {{call, Variant(), invalid + wrongCount}, {call, reals({1, 2}), invalid + wrongCount}},
                reading(generation, row.name));
            Rig rig;
            rig.prepare(rig.addFeed(generation));
            Reply reply = rig.send(feedProperty(1, row.name));
            EXPECT_EQ(reply.word(), 0u);
            EXPECT_EQ(reply.word(), isVector ? 1u : 0u);
            EXPECT_THAT(reply.reals(row.values.size()), testing::Pointwise(testing::DoubleEq(), row.values));
        }
}

TEST(FeedProperty, calculatesOnTheCalculationMaterial) {
    for (const Generation generation : bothGenerations) {
        const bool is10 = generation == Generation::v10;
        FakeStream stream = makeFakeStream();
        for (FakePhase& phase : stream.phases)
            phase.properties[L"energy"] = -7;
        const Scenario scenario = asking(generation, feedProperty(1, "energy"), stream);
        std::vector<Step> steps{
            {is10 ? "Duplicate" : "copy.CopyFromMaterial", "Failed to copy feed 1 to calculation material: "},
            {is10 ? "copy.PhaseIds" : "copy.GetPresentPhases",
             "Failed to get list of present phases from material: "}};
        expectOddLists(steps[1].call, VT_BSTR, "Invalid list of present phases from material: ", scenario);
        for (const std::string phase : {"Vapor", "Liquid"}) {
            const std::string ofPhase = " for phase " + phase + ": ";
            const auto expectRead = [&](const std::string& call, const std::string& what,
                                        const std::string& failure) {
                steps.push_back({call, failure});
                expectOddLists(call, VT_R8, "Invalid value for " + what + ofPhase, scenario);
                expectOddAnswers(
                    {{call, Variant(), "Invalid value for " + what + ofPhase + "Scalar expected"}}, scenario);
            };
            expectRead(is10 ? "copy.GetProp(phaseFraction, " + phase + ", empty, null, mole)"
                            : "copy.GetSinglePhaseProp(phaseFraction, " + phase + ", mole)",
                       "phase fraction",
                       "Failed to get phase fraction for phase " + phase + " from material: ");
            steps.push_back({is10 ? "copy.CalcProp(BSTR[energy], BSTR[" + phase + "], mixture)"
                                  : "copy.CalcSinglePhaseProp(BSTR[energy], " + phase + ")",
                             "Failed to calculate energy" + ofPhase});
            expectRead(is10 ? "copy.GetProp(energy, " + phase + ", empty, mixture, mole)"
                            : "copy.GetSinglePhaseProp(energy, " + phase + ", mole)",
                       "energy", "Failed to get energy" + ofPhase);
        }
        expectRoad(steps, scenario);
    }
}

// A liquid with zero fraction cannot be calculated here, but one with a NaN fraction must be.
TEST(FeedProperty, sumsOverPresentPhases) {
    const struct {
        double vapor, liquid;
        bool arePresent;
        double sum;
        const char* failure;
    } rows[] = {
        {0.25, 0.75, true, -775, ""},
        {1, 0, true, -100, ""},
        {0.25, 0.75, false, 0, ""},
        {0.25, std::nan(""), true, 0,
         "Failed to calculate enthalpy for phase Liquid: can't calculate enthalpy"},
    };
    for (const Generation generation : bothGenerations)
        for (const auto& row : rows) {
            FakeStream stream = makeFakeStream();
            stream.phases[0].fraction = row.vapor;
            stream.phases[1].fraction = row.liquid;
            for (FakePhase& phase : stream.phases)
                phase.isPresent = phase.isPresent && row.arePresent;
            if (!(row.liquid > 0))
                stream.phases[1].properties.clear();
            Rig rig;
            rig.prepare(rig.addFeed(generation, stream));
            EXPECT_EQ(rig.failureOf(feedProperty(1, "enthalpy")), row.failure);
            Reply reply = rig.send(feedProperty(1, "enthalpy"));
            if (reply.word() == 0) {
                EXPECT_EQ(reply.word(), 0u);
                EXPECT_DOUBLE_EQ(reply.real(), row.sum);
            }
        }
}

TEST(FeedProperty, keepsThe10DuplicateAsCalculationMaterial) {
    Rig rig;
    FakeMaterial& first = rig.addFeed(Generation::v10);
    FakeMaterial& second = rig.addFeed(Generation::v10);
    rig.prepare(first);
    ASSERT_EQ(rig.failureOf(feedProperty(2, "enthalpy")), "");
    ASSERT_EQ(rig.failureOf(wireOf(16u, Reals{0.5, 0.3, 0.2}, 300., 1e5, "temperature", "pressure")), "");
    EXPECT_TRUE(first.record->calls.empty());
    EXPECT_EQ(second.record->callsOf("copy.CalcEquilibrium").size(), 1u);
}

TEST(FeedProperty, rejectsACopyThatIsNotAMaterial) {
    Rig rig;
    FakeMaterial& material = rig.addFeed(Generation::v10);
    rig.prepare(material);
    // Success without an object.
    material.record->add({.call = "Duplicate", .text = {}, .value = {}});
    EXPECT_EQ(rig.failureOf(feedProperty(1, "volume")),
              "Copied feed 1 does not expose ICapeThermoMaterialObject");
    material.hiddenOnCopies.push_back(__uuidof(ICapeThermoMaterialObject));
    EXPECT_EQ(rig.failureOf(feedProperty(1, "volume")),
              "Copied feed 1 does not expose ICapeThermoMaterialObject");
}

TEST(FeedProperty, rejectsFeedsOfAnotherGenerationForCalculations) {
    Rig rig;
    rig.prepare(rig.addFeed(Generation::v10));
    rig.addFeed(Generation::v11);
    EXPECT_THAT(rig.failureOf(feedProperty(2, "enthalpy")),
                StartsWith("Failed to copy feed 2 to calculation material: "));
}

TEST(FeedProperty, rejectsPropertiesThatAStreamDoesNotHave) {
    Rig rig;
    rig.prepare(rig.addFeed(Generation::v11));
    for (const char* name : {"nonsense", "vaporFraction", ""})
        EXPECT_EQ(rig.failureOf(feedProperty(1, name)),
                  std::string("Unknown/unsupported property \"") + name + "\" in getFeedProp");
}

} // namespace

} // namespace solvane
