#include "OddVariants.h"
#include "Rig.h"

#include <gmock/gmock.h>

namespace solvane {

namespace {

using testing::ElementsAre;

const Wire firstFeed = wireOf(15u, 1);

/// A stream of two compounds whose vapor is absent.
FakeStream makeLiquids() {
    FakeStream stream = makeFakeStream(2);
    stream.phases[0].isPresent = false;
    stream.phases[1].composition = {0.1, 0.9};
    stream.phases[2] = {L"Liquid2", L"Liquid", 0.25, {0.8, 0.2}, {}};
    return stream;
}

TEST(FeedEquilibrium, readsAFeedWithoutCalculating) {
    for (const Generation generation : bothGenerations) {
        const bool is10 = generation == Generation::v10;
        const std::string invalid = "Invalid values for ";
        const std::string fromMaterial = " from material: ";
        const Scenario scenario = asking(generation, firstFeed);
        std::vector<Step> steps{
            {is10 ? "PhaseIds" : "GetPresentPhases", "Failed to get list of present phases from material: "}};
        expectOddLists(steps[0].call, VT_BSTR, "Invalid list of present phases from material: ", scenario);
        expectOddAnswers({{steps[0].call, texts({L"Vapor", nullptr}),
                           "List of present phases on material contains empty string"}},
                         scenario);
        const auto expectRead = [&](const std::string& call, const std::string& what,
                                    const char* wrongCount) {
            steps.push_back({call, "Failed to get " + what + fromMaterial});
            expectOddLists(call, VT_R8, invalid + what + fromMaterial, scenario);
            expectOddAnswers({{call, Variant(), invalid + what + fromMaterial + wrongCount},
                              {call, reals({1, 0}), invalid + what + fromMaterial + wrongCount}},
                             scenario);
        };
        for (const std::string phase : {"Vapor", "Liquid"}) {
            const auto call = [&](const std::string& property) {
                return is10 ? "GetProp(" + property + ", " + phase + ", empty, null, mole)"
                            : "GetSinglePhaseProp(" + property + ", " + phase + ", mole)";
            };
            expectRead(call("phaseFraction"), "phase fraction for phase " + phase, "scalar expected");
            expectRead(call("fraction"), "composition for phase " + phase, "unexpected number of values");
        }
        for (const std::string property : {"pressure", "temperature"})
            expectRead(is10 ? "GetProp(" + property + ", overall, empty, null, null)"
                            : "GetOverallProp(" + property + ", null)",
                       property, "scalar expected");
        expectRoad(steps, scenario);
    }
}

TEST(FeedEquilibrium, rejectsUnknownLabelsOf11MaterialsOnly) {
    expectOddAnswers({{"GetPresentPhases", texts({L"vapor"}),
                       "List of present phases on material returned unknown phase: vapor"},
                      {"GetPresentPhases", texts({L"Vapor", L""}),
                       "List of present phases on material contains empty string"}},
                     asking(Generation::v11, firstFeed));
    expectOddAnswers({{"PhaseIds", texts({L"vapor"}), ""}}, asking(Generation::v10, firstFeed));
}

TEST(FeedEquilibrium, writesPhasesByIndexOrName) {
    for (const Generation generation : bothGenerations) {
        Rig rig;
        rig.prepare(rig.addFeed(generation, makeLiquids()));
        Reply reply = rig.send(firstFeed);
        EXPECT_EQ(reply.word(), 0u);
        if (generation == Generation::v10) {
            EXPECT_EQ(reply.integer(), -2);
            EXPECT_EQ(reply.text(), "Liquid");
            EXPECT_EQ(reply.text(), "Liquid2");
        } else {
            EXPECT_EQ(reply.integer(), 2);
            EXPECT_EQ(reply.integer(), 2);
            EXPECT_EQ(reply.integer(), 3);
        }
        EXPECT_THAT(reply.reals(8), ElementsAre(0.75, 0.25, 0.1, 0.8, 0.9, 0.2, 300, 101325));
    }
}

TEST(FeedEquilibrium, writesNoPhasesInEitherForm) {
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

} // namespace

} // namespace solvane
