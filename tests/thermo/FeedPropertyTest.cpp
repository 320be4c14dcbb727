#include "OddVariants.h"
#include "Rig.h"
#include "Road.h"

#include <gmock/gmock.h>

#include <limits>

namespace solvane {

namespace {

using testing::ElementsAre;
using testing::StartsWith;

Request feedProperty(std::int32_t feed, const std::string& name) {
    return Request(1).integer(feed).text(name);
}

/// getFeedProp of the first of one feed.
Scenario reading(Generation generation, const std::string& name) {
    return [=](const std::function<void(CallRecord&)>& sabotage) {
        Rig rig;
        FakeMaterial& material = rig.addFeed(generation);
        rig.prepare(material);
        sabotage(*material.record);
        return Outcome{rig.failureOf(feedProperty(1, name)), material.record->calls};
    };
}

TEST(FeedProperty, directPropertiesAreReadWithTheirBasisWhateverTheCaseOfTheName) {
    struct Row {
        const char* name;
        const char* call10;
        const char* call11;
        std::vector<double> values;
        bool isVector;
    };
    const Row rows[] = {
        {"temperature",
         "GetProp(temperature, overall, empty, null, null)",
         "GetOverallProp(temperature, null)",
         {300},
         false},
        {"Temperature",
         "GetProp(temperature, overall, empty, null, null)",
         "GetOverallProp(temperature, null)",
         {300},
         false},
        {"pressure",
         "GetProp(pressure, overall, empty, null, null)",
         "GetOverallProp(pressure, null)",
         {101325},
         false},
        {"TOTALFLOW",
         "GetProp(totalFlow, overall, empty, null, mole)",
         "GetOverallProp(totalFlow, mole)",
         {10},
         false},
        {"flow",
         "GetProp(flow, overall, empty, null, mole)",
         "GetOverallProp(flow, mole)",
         {10.0 / 6, 10.0 / 3, 5},
         true},
        {"fraction",
         "GetProp(fraction, overall, empty, null, mole)",
         "GetOverallProp(fraction, mole)",
         {1.0 / 6, 1.0 / 3, 0.5},
         true},
    };
    for (const Generation generation : bothGenerations)
        for (const Row& row : rows) {
            SCOPED_TRACE(row.name);
            Rig rig;
            FakeMaterial& material = rig.addFeed(generation);
            rig.prepare(material);
            Reply reply = rig.send(feedProperty(1, row.name));
            EXPECT_EQ(reply.word(), 0u);
            EXPECT_EQ(reply.word(), row.isVector ? 1u : 0u);
            EXPECT_THAT(reply.reals(row.values.size()), testing::Pointwise(testing::DoubleEq(), row.values));
            EXPECT_THAT(material.record->calls,
                        ElementsAre(generation == Generation::v10 ? row.call10 : row.call11));
        }
}

TEST(FeedProperty, oddAnswersToADirectPropertyAreNamed) {
    for (const Generation generation : bothGenerations) {
        const std::string call = generation == Generation::v10 ? "GetProp" : "GetOverallProp";
        const std::string invalid = "Invalid value for temperature from feed 1: ";
        expectOddAnswers(
            {{call, Variant(), invalid + "Scalar expected"},
             {call, reals({1, 2}), invalid + "Scalar expected"},
             {call, Variant(300.0), invalid + "Expected an array of type double precision"},
             {call, listOfVariants(), invalid + "Expected an array of type double precision"},
             {call, twoDimensional(VT_R8), invalid + "unexpected dimension; 1-dimensional array expected"}},
            reading(generation, "temperature"));
        expectOddAnswers(
            {{call, reals({1, 2}), "Invalid value for fraction from feed 1: Unexpected number of values"}},
            reading(generation, "fraction"));
        expectRoad({{generation == Generation::v10 ? "GetProp(fraction, overall, empty, null, mole)"
                                                   : "GetOverallProp(fraction, mole)",
                     "Failed to get fraction from feed 1: "}},
                   reading(generation, "fraction"));
    }
}

TEST(FeedProperty, aListMayStartAtAnyLowerBound) {
    Rig rig;
    FakeMaterial& material = rig.addFeed(Generation::v11, makeFakeStream(2));
    rig.prepare(material);
    material.record->add({.call = "GetOverallProp(fraction", .text = {}, .value = realsFrom(7, 0.4, 0.6)});
    Reply reply = rig.send(feedProperty(1, "fraction"));
    EXPECT_EQ(reply.word(), 0u);
    EXPECT_EQ(reply.word(), 1u);
    EXPECT_THAT(reply.reals(2), ElementsAre(0.4, 0.6));
}

TEST(FeedProperty, aCalculatedPropertyGoesThroughTheCalculationMaterial10) {
    expectRoad(
        {{"Duplicate", "Failed to copy feed 1 to calculation material: "},
         {"copy.PhaseIds", "Failed to get list of present phases from material: "},
         {"copy.GetProp(phaseFraction, Vapor, empty, null, mole)",
          "Failed to get phase fraction for phase Vapor from material: "},
         {"copy.CalcProp(BSTR[enthalpy], BSTR[Vapor], mixture)",
          "Failed to calculate enthalpy for phase Vapor: "},
         {"copy.GetProp(enthalpy, Vapor, empty, mixture, mole)", "Failed to get enthalpy for phase Vapor: "},
         {"copy.GetProp(phaseFraction, Liquid, empty, null, mole)",
          "Failed to get phase fraction for phase Liquid from material: "},
         {"copy.CalcProp(BSTR[enthalpy], BSTR[Liquid], mixture)",
          "Failed to calculate enthalpy for phase Liquid: "},
         {"copy.GetProp(enthalpy, Liquid, empty, mixture, mole)",
          "Failed to get enthalpy for phase Liquid: "}},
        reading(Generation::v10, "enthalpy"));
}

TEST(FeedProperty, aCalculatedPropertyGoesThroughTheCalculationMaterial11) {
    expectRoad(
        {{"copy.CopyFromMaterial", "Failed to copy feed 1 to calculation material: "},
         {"copy.GetPresentPhases", "Failed to get list of present phases from material: "},
         {"copy.GetSinglePhaseProp(phaseFraction, Vapor, mole)",
          "Failed to get phase fraction for phase Vapor from material: "},
         {"copy.CalcSinglePhaseProp(BSTR[enthalpy], Vapor)",
          "Failed to calculate enthalpy for phase Vapor: "},
         {"copy.GetSinglePhaseProp(enthalpy, Vapor, mole)", "Failed to get enthalpy for phase Vapor: "},
         {"copy.GetSinglePhaseProp(phaseFraction, Liquid, mole)",
          "Failed to get phase fraction for phase Liquid from material: "},
         {"copy.CalcSinglePhaseProp(BSTR[enthalpy], Liquid)",
          "Failed to calculate enthalpy for phase Liquid: "},
         {"copy.GetSinglePhaseProp(enthalpy, Liquid, mole)", "Failed to get enthalpy for phase Liquid: "}},
        reading(Generation::v11, "enthalpy"));
}

TEST(FeedProperty, oddAnswersToACalculatedPropertyAreNamed) {
    const std::string phases = "Invalid list of present phases from material: ";
    const std::string fraction = "Invalid value for phase fraction for phase Liquid: ";
    const std::string value = "Invalid value for enthalpy for phase Vapor: ";
    for (const Generation generation : bothGenerations) {
        const bool is10 = generation == Generation::v10;
        const std::string phaseCall = is10 ? "copy.PhaseIds" : "copy.GetPresentPhases";
        const std::string propertyCall = is10 ? "copy.GetProp" : "copy.GetSinglePhaseProp";
        expectOddAnswers({{phaseCall, reals({1}), phases + "Expected an array of type string"},
                          {phaseCall, twoDimensional(VT_BSTR),
                           phases + "unexpected dimension; 1-dimensional array expected"},
                          {propertyCall + "(phaseFraction, Liquid", Variant(), fraction + "Scalar expected"},
                          {propertyCall + "(phaseFraction, Liquid", texts({L"1"}),
                           fraction + "Expected an array of type double precision"},
                          {propertyCall + "(enthalpy, Vapor", reals({1, 2, 3}), value + "Scalar expected"},
                          {propertyCall + "(enthalpy, Vapor", Variant(L"1"),
                           value + "Expected an array of type double precision"}},
                         reading(generation, "enthalpy"));
    }
}

TEST(FeedProperty, theSumOverThePhasesIsGivenAsAScalar) {
    for (const Generation generation : bothGenerations) {
        Rig rig;
        rig.prepare(rig.addFeed(generation));
        Reply reply = rig.send(feedProperty(1, "enthalpy"));
        EXPECT_EQ(reply.word(), 0u);
        EXPECT_EQ(reply.word(), 0u);
        EXPECT_DOUBLE_EQ(reply.real(), 0.25 * -100 + 0.75 * -1000);
    }
}

TEST(FeedProperty, aPhaseOfFractionZeroIsNeitherCalculatedNorRead) {
    for (const Generation generation : bothGenerations) {
        FakeStream stream = makeFakeStream();
        stream.phases[0].fraction = 1;
        stream.phases[1].fraction = 0;
        stream.phases[1].properties.clear();
        Rig rig;
        rig.prepare(rig.addFeed(generation, stream));
        Reply reply = rig.send(feedProperty(1, "enthalpy"));
        EXPECT_EQ(reply.word(), 0u);
        EXPECT_EQ(reply.word(), 0u);
        EXPECT_DOUBLE_EQ(reply.real(), -100);
    }
}

TEST(FeedProperty, aFractionThatIsNotANumberDoesNotHideAPhase) {
    FakeStream stream = makeFakeStream();
    stream.phases[1].fraction = std::numeric_limits<double>::quiet_NaN();
    stream.phases[1].properties.clear();
    Rig rig;
    rig.prepare(rig.addFeed(Generation::v11, stream));
    EXPECT_EQ(rig.failureOf(feedProperty(1, "enthalpy")),
              "Failed to calculate enthalpy for phase Liquid: can't calculate enthalpy");
}

TEST(FeedProperty, withoutAPresentPhaseACalculatedPropertyIsZero) {
    for (const Generation generation : bothGenerations) {
        FakeStream stream = makeFakeStream();
        for (FakePhase& phase : stream.phases)
            phase.isPresent = false;
        Rig rig;
        rig.prepare(rig.addFeed(generation, stream));
        Reply reply = rig.send(feedProperty(1, "entropyNF"));
        EXPECT_EQ(reply.word(), 0u);
        EXPECT_EQ(reply.word(), 0u);
        EXPECT_EQ(reply.real(), 0.0);
    }
}

TEST(FeedProperty, energyIsAskedForByThatName) {
    Rig rig;
    FakeStream stream = makeFakeStream();
    for (FakePhase& phase : stream.phases)
        phase.properties[L"energy"] = -7;
    FakeMaterial& material = rig.addFeed(Generation::v10, stream);
    rig.prepare(material);
    EXPECT_EQ(rig.failureOf(feedProperty(1, "energy")), "");
    EXPECT_EQ(material.record->callsOf("copy.CalcProp(BSTR[energy]").size(), 2u);
}

TEST(FeedProperty, theDuplicateOfA10FeedStaysTheCalculationMaterial) {
    Rig rig;
    FakeMaterial& first = rig.addFeed(Generation::v10);
    FakeMaterial& second = rig.addFeed(Generation::v10);
    rig.prepare(first);
    ASSERT_EQ(rig.failureOf(feedProperty(2, "enthalpy")), "");
    ASSERT_EQ(
        rig.failureOf(
            Request(16).reals({0.5, 0.3, 0.2}).real(300).real(1e5).text("temperature").text("pressure")),
        "");
    EXPECT_TRUE(first.record->calls.empty());
    EXPECT_EQ(second.record->callsOf("copy.CalcEquilibrium").size(), 1u);
}

TEST(FeedProperty, aCopyThatIsNoMaterialIsRefused) {
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

TEST(FeedProperty, aMaterialWithoutPropertyRoutineIsRefused) {
    Rig rig;
    FakeMaterial& material = rig.addFeed(Generation::v11);
    material.hiddenOnCopies.push_back(__uuidof(ICapeThermoPropertyRoutine));
    rig.prepare(material);
    EXPECT_EQ(rig.failureOf(feedProperty(1, "enthalpy")),
              "Material object does not expose ICapeThermoPropertyRoutine");
}

TEST(FeedProperty, feedsOfTwoGenerationsDoNotMixInOneCalculation) {
    Rig rig;
    rig.prepare(rig.addFeed(Generation::v10));
    rig.addFeed(Generation::v11);
    EXPECT_THAT(rig.failureOf(feedProperty(2, "enthalpy")),
                StartsWith("Failed to copy feed 2 to calculation material: "));
}

TEST(FeedProperty, portsAndNamesAreCheckedInThisOrder) {
    Rig rig;
    rig.prepare(rig.addFeed(Generation::v11));
    rig.addFeed();
    for (const std::int32_t number : {-1, 0, 3})
        EXPECT_EQ(rig.failureOf(feedProperty(number, "nonsense")),
                  "port number out of range for getFeedProp");
    EXPECT_EQ(rig.failureOf(feedProperty(2, "nonsense")), "getFeedProp: Port 2 is not connected");
    for (const char* name : {"nonsense", "vaporFraction", ""})
        EXPECT_EQ(rig.failureOf(feedProperty(1, name)),
                  std::string("Unknown/unsupported property \"") + name + "\" in getFeedProp");
}

TEST(FeedProperty, aVectorThatOverrunsTheBlockIsAFailure) {
    Rig rig;
    rig.prepare(rig.addFeed(Generation::v11, makeFakeStream(200)));
    EXPECT_EQ(rig.failureOf(feedProperty(1, "fraction")), "");
    rig.blockBytes = 8 + 8 * 200;
    EXPECT_EQ(rig.failureOf(feedProperty(1, "fraction")), "");
    rig.blockBytes -= 1;
    EXPECT_EQ(rig.failureOf(feedProperty(1, "fraction")), "memory overrun");
}

} // namespace

} // namespace solvane
