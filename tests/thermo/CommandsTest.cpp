// What the commands on materials have in common.

#include "OddVariants.h"
#include "Rig.h"

#include <gmock/gmock.h>

namespace solvane {

namespace {

const Wire flash = wireOf(17u, Reals{0.5, 0.3, 0.2}, 300., 1e5, "temperature", "pressure", "volume");
const Wire onePhase = wireOf(9u, Reals{300, 1e5, 0.5, 0.3, 0.2}, "volume", "Vapor");
const Wire twoPhases =
    wireOf(10u, Reals{300, 1e5, 0.5, 0.3, 0.2, 0.5, 0.3, 0.2}, "kvalue", "Vapor", "Liquid");

TEST(Commands, routinesThatA11MaterialLacksAreNamedAndThoseItHasAreAskedForOnce) {
    const std::string ofMaterial = "Material object does not expose ICapeThermoPropertyRoutine";
    const std::string ofCalculation = "Failed to get ICapeThermoPropertyRoutine from calculation material";
    const struct {
        Wire request;
        IID routine;
        std::string failure;
    } rows[] = {
        {wireOf(1u, 1, "enthalpy"), __uuidof(ICapeThermoPropertyRoutine), ofMaterial},
        {flash, __uuidof(ICapeThermoPropertyRoutine), ofMaterial},
        {flash, __uuidof(ICapeThermoEquilibriumRoutine),
         "Failed to get ICapeThermoEquilibriumRoutine from calculation material"},
        {onePhase, __uuidof(ICapeThermoPropertyRoutine), ofCalculation},
        {twoPhases, __uuidof(ICapeThermoPropertyRoutine), ofCalculation},
    };
    for (const auto& row : rows) {
        FakeStream stream = makeFakeStream();
        stream.results = {{L"volume", {1}}, {L"kvalue", {1, 2, 3}}};
        Rig rig;
        FakeMaterial& material = rig.addFeed(Generation::v11, stream);
        rig.prepare(material);
        auto& calculation = dynamic_cast<FakeMaterial11&>(*rig.run.material11.get());
        calculation.hidden = {row.routine};
        EXPECT_EQ(rig.failureOf(row.request), row.failure);
        calculation.hidden.clear();
        EXPECT_EQ(rig.failureOf(row.request), "");
        calculation.hidden = {row.routine};
        EXPECT_EQ(rig.failureOf(row.request), "");
    }
}

TEST(Commands, portNumbersAreChecked) {
    Rig rig;
    rig.prepare(rig.addFeed(Generation::v11));
    rig.addFeed();
    rig.addProduct();
    rig.addProduct();
    const struct {
        std::uint32_t code;
        std::string name;
    } rows[] = {{1, "getFeedProp"}, {2, "setProduct"}, {15, "getFeedEquilibrium"}};
    for (const auto& row : rows) {
        for (const std::int32_t number : {-1, 0, 3})
            EXPECT_EQ(rig.failureOf(wireOf(row.code, number, "nonsense")),
                      "port number out of range for " + row.name);
        if (row.code != 2) {
            EXPECT_EQ(rig.failureOf(wireOf(row.code, 2, "nonsense")), row.name + ": Port 2 is not connected");
        }
    }
}

TEST(Commands, repliesThatJustFitTheBlockAndThatDoNot) {
    const std::wstring word(40, L'x');
    FakeStream stream = makeFakeStream(3);
    stream.constants = {{L"weight", variants({Variant(1.0), Variant(), Variant(2.0)})},
                        {L"name", variants({Variant(word), Variant(word), Variant(word)})}};
    stream.results = {{L"vaporPressure", {1, 2, 3}}, {L"volume", std::vector<double>(9, 1)}};
    const struct {
        Wire request;
        std::size_t bytes; ///< of the smallest block
        std::string failure = "memory overrun";
    } rows[] = {
        {wireOf(1u, 1, "fraction"), 8 + 3 * 8},
        {wireOf(15u, 1), 8 + 12 * 2 + 8 * 3 * 2 + 16},
        {wireOf(7u, 350., "vaporPressure"), 4 + 3 * 8},
        {onePhase, 8 + 9 * 8},
        {wireOf(6u, "weight"), 8 + 3 * 8},
        {wireOf(6u, "name"), 8 + 3 * 41 + 1,
         "Values too large to transfer (insufficient memory on data transfer memory block)"},
    };
    for (const auto& row : rows) {
        Rig rig;
        rig.prepare(rig.addFeed(Generation::v11, stream));
        rig.blockBytes = row.bytes;
        EXPECT_EQ(rig.failureOf(row.request), "");
        --rig.blockBytes;
        EXPECT_EQ(rig.failureOf(row.request), row.failure);
    }
}

} // namespace

} // namespace solvane
