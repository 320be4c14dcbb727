#include "OddVariants.h"
#include "Rig.h"
#include "Road.h"

#include <gmock/gmock.h>

namespace solvane {

namespace {

using testing::ElementsAre;

const Request firstFeed = Request(15).integer(1);

Scenario readingEquilibrium(Generation generation) {
    return [=](const std::function<void(CallRecord&)>& sabotage) {
        Rig rig;
        FakeMaterial& material = rig.addFeed(generation);
        rig.prepare(material);
        sabotage(*material.record);
        return Outcome{rig.failureOf(firstFeed), material.record->calls};
    };
}

/// A stream of two compounds whose vapor is absent.
FakeStream makeLiquids() {
    FakeStream stream = makeFakeStream(2);
    stream.phases[0].isPresent = false;
    stream.phases[1].composition = {0.1, 0.9};
    stream.phases[2] = {L"Liquid2", L"Liquid", 0.25, {0.8, 0.2}, {}};
    return stream;
}

void expectLiquidState(Reply& reply) {
    EXPECT_THAT(reply.reals(2), ElementsAre(0.75, 0.25));
    EXPECT_THAT(reply.reals(4), ElementsAre(0.1, 0.8, 0.9, 0.2)); // compound by compound
    EXPECT_EQ(reply.real(), 300);
    EXPECT_EQ(reply.real(), 101325);
}

const std::string phases = "Failed to get list of present phases from material: ";
const std::string fractionOf = "Failed to get phase fraction for phase ";
const std::string compositionOf = "Failed to get composition for phase ";

TEST(FeedEquilibrium, a10FeedIsReadAsItStands) {
    expectRoad(
        {{"PhaseIds", phases},
         {"GetProp(phaseFraction, Vapor, empty, null, mole)", fractionOf + "Vapor from material: "},
         {"GetProp(fraction, Vapor, empty, null, mole)", compositionOf + "Vapor from material: "},
         {"GetProp(phaseFraction, Liquid, empty, null, mole)", fractionOf + "Liquid from material: "},
         {"GetProp(fraction, Liquid, empty, null, mole)", compositionOf + "Liquid from material: "},
         {"GetProp(pressure, overall, empty, null, null)", "Failed to get pressure from material: "},
         {"GetProp(temperature, overall, empty, null, null)", "Failed to get temperature from material: "}},
        readingEquilibrium(Generation::v10));
}

TEST(FeedEquilibrium, a11FeedIsReadAsItStands) {
    expectRoad({{"GetPresentPhases", phases},
                {"GetSinglePhaseProp(phaseFraction, Vapor, mole)", fractionOf + "Vapor from material: "},
                {"GetSinglePhaseProp(fraction, Vapor, mole)", compositionOf + "Vapor from material: "},
                {"GetSinglePhaseProp(phaseFraction, Liquid, mole)", fractionOf + "Liquid from material: "},
                {"GetSinglePhaseProp(fraction, Liquid, mole)", compositionOf + "Liquid from material: "},
                {"GetOverallProp(pressure, null)", "Failed to get pressure from material: "},
                {"GetOverallProp(temperature, null)", "Failed to get temperature from material: "}},
               readingEquilibrium(Generation::v11));
}

TEST(FeedEquilibrium, oddAnswersAreNamed) {
    const std::string noReals = "Expected an array of type double precision";
    for (const Generation generation : bothGenerations) {
        const bool is10 = generation == Generation::v10;
        const std::string list = is10 ? "PhaseIds" : "GetPresentPhases";
        const std::string ofPhase = is10 ? "GetProp" : "GetSinglePhaseProp";
        const std::string overall = is10 ? "GetProp" : "GetOverallProp";
        expectOddAnswers(
            {{list, listOfVariants(),
              "Invalid list of present phases from material: Expected an array of type string"},
             {list, texts({L"Vapor", nullptr}), "List of present phases on material contains empty string"},
             {ofPhase + "(phaseFraction, Liquid", listOfVariants(),
              "Invalid values for phase fraction for phase Liquid from material: " + noReals},
             {ofPhase + "(phaseFraction, Vapor", Variant(),
              "Invalid values for phase fraction for phase Vapor from material: scalar expected"},
             {ofPhase + "(fraction, Vapor", Variant(1.0),
              "Invalid values for composition for phase Vapor from material: " + noReals},
             {ofPhase + "(fraction, Liquid", reals({1, 0}),
              "Invalid values for composition for phase Liquid from material: unexpected number of values"},
             {overall + "(pressure", twoDimensional(VT_R8),
              "Invalid values for pressure from material: unexpected dimension; 1-dimensional array "
              "expected"},
             {overall + "(pressure", reals({1, 2}),
              "Invalid values for pressure from material: scalar expected"},
             {overall + "(temperature", texts({L"300"}),
              "Invalid values for temperature from material: " + noReals},
             {overall + "(temperature", Variant(),
              "Invalid values for temperature from material: scalar expected"}},
            readingEquilibrium(generation));
    }
}

TEST(FeedEquilibrium, onlyA11MaterialsPhasesMustBeKnownByTheirExactLabel) {
    expectOddAnswers({{"GetPresentPhases", texts({L"vapor"}),
                       "List of present phases on material returned unknown phase: vapor"},
                      {"GetPresentPhases", texts({L"Vapor", L""}),
                       "List of present phases on material contains empty string"}},
                     readingEquilibrium(Generation::v11));
    expectOddAnswers({{"PhaseIds", texts({L"vapor"}), ""}}, readingEquilibrium(Generation::v10));
}

TEST(FeedEquilibrium, a11ReplyGivesThePhasesByTheirPlace) {
    Rig rig;
    rig.prepare(rig.addFeed(Generation::v11, makeLiquids()));
    Reply reply = rig.send(firstFeed);
    EXPECT_EQ(reply.word(), 0u);
    EXPECT_EQ(reply.integer(), 2);
    EXPECT_EQ(reply.integer(), 2);
    EXPECT_EQ(reply.integer(), 3);
    expectLiquidState(reply);
    EXPECT_EQ(reply.position(), 8u + 12 * 2 + 8 * 2 * 2 + 16);
}

TEST(FeedEquilibrium, a10ReplyGivesThePhasesByName) {
    Rig rig;
    rig.prepare(rig.addFeed(Generation::v10, makeLiquids()));
    Reply reply = rig.send(firstFeed);
    EXPECT_EQ(reply.word(), 0u);
    EXPECT_EQ(reply.integer(), -2);
    EXPECT_EQ(reply.text(), "Liquid");
    EXPECT_EQ(reply.text(), "Liquid2");
    expectLiquidState(reply);
}

TEST(FeedEquilibrium, aFeedWithoutPresentPhasesHasBothFormsInOne) {
    for (const Generation generation : bothGenerations) {
        FakeStream stream = makeFakeStream();
        for (FakePhase& phase : stream.phases)
            phase.isPresent = false;
        Rig rig;
        rig.prepare(rig.addFeed(generation, stream));
        Reply reply = rig.send(firstFeed);
        EXPECT_EQ(reply.word(), 0u);
        EXPECT_EQ(reply.integer(), 0);
        EXPECT_EQ(reply.real(), 300);
        EXPECT_EQ(reply.real(), 101325);
    }
}

TEST(FeedEquilibrium, theBlockOfARunHoldsIt) {
    for (const std::size_t compounds : {1u, 20u, 200u})
        for (const Generation generation : bothGenerations) {
            Rig rig;
            rig.prepare(rig.addFeed(generation, makeFakeStream(compounds)));
            EXPECT_EQ(rig.failureOf(firstFeed), "") << compounds;
        }
}

TEST(FeedEquilibrium, aReplyThatOverrunsTheBlockIsAFailure) {
    Rig rig;
    rig.prepare(rig.addFeed(Generation::v11, makeLiquids()));
    rig.blockBytes = 8 + 12 * 2 + 8 * 2 * 2 + 16;
    EXPECT_EQ(rig.failureOf(firstFeed), "");
    --rig.blockBytes;
    EXPECT_EQ(rig.failureOf(firstFeed), "memory overrun");
}

TEST(FeedEquilibrium, portNumbersAreChecked) {
    Rig rig;
    rig.prepare(rig.addFeed(Generation::v11));
    rig.addFeed();
    for (const std::int32_t number : {-1, 0, 3})
        EXPECT_EQ(rig.failureOf(Request(15).integer(number)),
                  "port number out of range for getFeedEquilibrium");
    EXPECT_EQ(rig.failureOf(Request(15).integer(2)), "getFeedEquilibrium: Port 2 is not connected");
}

} // namespace

} // namespace solvane
