// The frame of the channel: codes, sizes and failure records, seen by a client in place of the gateway.

#include "FakeMaterial10.h"
#include "FakeMaterial11.h"
#include "RuntimeTest.h"

namespace solvane {

namespace {

using Channel = RuntimeTest;

TEST_F(Channel, rejectsUnknownCodes) {
    calculate([](GatewayClient& script) {
        for (const std::uint32_t code : {0u, commandCount + 1, 0x80000001u, 0xffffffffu})
            script.expect(request(CommandCode{code}),
                          refused("Internal error: unknonw/undefined function call"));
    });
}

TEST_F(Channel, truncatesMessagesToTheBlock) {
    calculate([](GatewayClient& script) {
        const std::string refusal = "Invalid report name: ";
        // The last name that fits, and the first that does not.
        const std::string name(2048 - 5 - refusal.size(), 'n');
        script.expect(request(CommandCode::setReport) << name, refused(refusal + name));
        const std::string cut = (refusal + name).substr(0, 2048 - 8) + "...";
        script.expect(request(CommandCode::setReport) << name + 'n', refused(cut));
        script.expect(request(CommandCode::setReport) << name + "and much more than that", refused(cut));
    });
}

TEST_F(Channel, sizesTheBlockByCompoundsAndPhases) {
    FakeStream manyPhases = makeFakeStream(20);
    while (manyPhases.phases.size() < 25)
        manyPhases.phases.push_back({L"L", L"Liquid", 0, {}, {}, false});
    const struct {
        bool is10;
        FakeStream stream;
        std::size_t size;
    } cases[] = {
        {false, makeFakeStream(3), 2048},  {false, makeFakeStream(16), 2056},
        {false, makeFakeStream(20), 3208}, {false, makeFakeStream(200), 320008},
        {false, manyPhases, 4308},         {true, makeFakeStream(3), 2048},
        {true, makeFakeStream(12), 2112},  {true, makeFakeStream(20), 3208},
    };
    for (const auto& row : cases) {
        ModelBag bag;
        const HostedUnit unit = createUnit(bag.script("").feeds({L"Feed"}));
        ASSERT_EQ(unit.connect(L"Feed", row.is10 ? FakeMaterial10::create(row.stream)->dispatch()
                                                 : FakeMaterial11::create(row.stream)->dispatch()),
                  S_OK);
        std::size_t size = 0;
        matlab.onRun = [&](const std::wstring& folder) {
            size = GatewayClient(folder).blockSize();
            return MatlabAnswer();
        };
        EXPECT_EQ(unit.calculate(), S_OK) << testing::PrintToString(unit.error());
        EXPECT_EQ(size, row.size) << (row.is10 ? "1.0, " : "1.1, ") << row.stream.compounds.size();
    }
}

// The unit does not trust the gateway: it reads a request without an end only up to the block's end.
TEST_F(Channel, endsUnterminatedNamesAtTheBlocksEnd) {
    calculate([](GatewayClient& script) {
        const std::string block = script.call(request(CommandCode::getParameter) << std::string(4000, 'p'));
        const std::string message = "Invalid parameter name: ";
        EXPECT_EQ(block.substr(4, 2044),
                  message + std::string(2048 - 8 - message.size(), 'p') + "..." + '\0');
    });
}

TEST_F(Channel, failsBeforeMatlabWithoutABlock) {
    const HostedUnit unit = createUnit();
    const std::wstring id =
        workingFolder().substr(temporary.path().size(), workingFolder().size() - temporary.path().size() - 1);
    matlab.forgetCalls();
    {
        const Handle ofTheSameName(CreateMutexW(nullptr, FALSE, id.c_str()));
        EXPECT_EQ(unit.calculate(), capeFailure);
        EXPECT_EQ(unit.errorDescription(),
                  L"Failed to create shared memory mapping for inter-process communication");
        EXPECT_EQ(matlab.calls(), std::vector<std::wstring>());
    }
    EXPECT_EQ(unit.calculate(), S_OK);
}

TEST_F(Channel, removesTheBlockAfterTheRun) {
    const HostedUnit unit = createUnit();
    std::string id;
    matlab.onRun = [&](const std::wstring& folder) {
        id = unitIdOf(folder);
        return failed(E_FAIL);
    };
    EXPECT_EQ(unit.calculate(), capeFailure);
    EXPECT_FALSE(Handle(OpenFileMappingA(FILE_MAP_READ, FALSE, id.c_str())));
    // The events serve the next run.
    EXPECT_TRUE(Handle(OpenEventA(SYNCHRONIZE, FALSE, (id + "_out").c_str())));
    unit.terminate();
    EXPECT_FALSE(Handle(OpenEventA(SYNCHRONIZE, FALSE, (id + "_out").c_str())));
}

} // namespace

} // namespace solvane
