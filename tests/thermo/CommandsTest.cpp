// What the commands on materials have in common.

#include "OddVariants.h"
#include "Rig.h"

#include <gmock/gmock.h>

namespace solvane {

namespace {

const Request flash = Request(17)
                          .reals({0.5, 0.3, 0.2})
                          .real(300)
                          .real(1e5)
                          .text("temperature")
                          .text("pressure")
                          .text("volume");
const Request onePhase = Request(9).reals({300, 1e5, 0.5, 0.3, 0.2}).text("volume").text("Vapor");
const Request twoPhases =
    Request(10).reals({300, 1e5, 0.5, 0.3, 0.2, 0.5, 0.3, 0.2}).text("kvalue").text("Vapor").text("Liquid");

TEST(Commands, routinesThatA11MaterialLacksAreNamedAndThoseItHasAreAskedForOnce) {
    const std::string ofMaterial = "Material object does not expose ICapeThermoPropertyRoutine";
    const std::string ofCalculation = "Failed to get ICapeThermoPropertyRoutine from calculation material";
    const struct {
        Request request;
        IID routine;
        std::string failure;
    } rows[] = {
        {Request(1).integer(1).text("enthalpy"), __uuidof(ICapeThermoPropertyRoutine), ofMaterial},
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
            EXPECT_EQ(rig.failureOf(Request(row.code).integer(number).text("nonsense")),
                      "port number out of range for " + row.name);
        if (row.code != 2) {
            EXPECT_EQ(rig.failureOf(Request(row.code).integer(2).text("nonsense")),
                      row.name + ": Port 2 is not connected");
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
        Request request;
        std::size_t bytes; ///< of the smallest block
        std::string failure = "memory overrun";
    } rows[] = {
        {Request(1).integer(1).text("fraction"), 8 + 3 * 8},
        {Request(15).integer(1), 8 + 12 * 2 + 8 * 3 * 2 + 16},
        {Request(7).real(350).text("vaporPressure"), 4 + 3 * 8},
        {onePhase, 8 + 9 * 8},
        {Request(6).text("weight"), 8 + 3 * 8},
        {Request(6).text("name"), 8 + 3 * 41 + 1,
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
