// The common behaviour of the commands on materials.

#include "OddVariants.h"
#include "Rig.h"
#include "thermo/CalculationMaterial.h"
#include "thermo/MaterialFlash.h"

#include <gmock/gmock.h>

namespace solvane {

namespace {

const Wire flash = wireOf(17u, Reals{0.5, 0.3, 0.2}, 300., 1e5, "temperature", "pressure", "volume");
const Wire onePhase = wireOf(9u, Reals{300, 1e5, 0.5, 0.3, 0.2}, "volume", "Vapor");
const Wire twoPhases =
    wireOf(10u, Reals{300, 1e5, 0.5, 0.3, 0.2, 0.5, 0.3, 0.2}, "kvalue", "Vapor", "Liquid");

TEST(Commands, nameMissingRoutinesAndQueryOthersOnce) {
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

// The host disconnects a material from inside any of its calls: the material must live until the call ends.
TEST(Commands, keepAMaterialThatIsDisconnectedDuringItsCall) {
    const struct {
        std::function<void(Rig& rig, CPort& port)> work;
        bool isProduct = false;
    } rows[] = {
        {[](Rig& rig, CPort&) { rig.send(wireOf(1u, 1, "temperature")); }},
        {[](Rig& rig, CPort&) { rig.send(wireOf(1u, 1, "enthalpy")); }},
        {[](Rig& rig, CPort&) { rig.send(wireOf(15u, 1)); }},
        {[](Rig&, CPort& port) {
            std::vector<std::wstring> compounds;
            std::wstring error;
            std::ignore = readCompoundList(port, compounds, error);
        }},
        {[](Rig& rig, CPort&) {
            std::wstring error;
            std::ignore = createCalculationMaterial(rig.run, error);
        }},
        {[](Rig& rig, CPort& port) {
             std::string error;
             EXPECT_EQ(rig.failureOf(
                           wireOf(2u, 1, 12.5, Reals{0.5, 0.3, 0.2}, 0.4, 1e5, "vaporFraction", "pressure")),
                       "");
             EXPECT_TRUE(flashProductPort(port, error)) << error;
         },
         true},
    };
    for (const Generation generation : bothGenerations)
        for (const auto& row : rows)
            for (std::size_t number = 1, calls = number; number <= calls; ++number) {
                Rig rig;
                FakeMaterial& material = row.isProduct ? rig.addProduct(generation) : rig.addFeed(generation);
                rig.prepare(material);
                CPort& port = row.isProduct ? *rig.unit->productPorts[0] : *rig.unit->feedPorts[0];
                const ComRef<IUnknown> kept(static_cast<ECapeUser*>(&material)); // or it may be destroyed
                material.record->onCall = [&](const std::string& call) {
                    if (material.record->calls.size() != number || call.starts_with("copy."))
                        return;
                    port.Disconnect();
                    kept->AddRef();
                    EXPECT_GT(kept->Release(), 1u) << call;
                };
                row.work(rig, port);
                calls = material.record->calls.size();
                material.record->onCall = nullptr;
            }
}

TEST(Commands, checkPortNumbers) {
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

TEST(Commands, failForRepliesThatExceedTheBlock) {
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
