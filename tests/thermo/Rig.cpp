#include "Rig.h"

#include "channel/ChannelFrame.h"
#include "runtime/CommandChannel.h"
#include "runtime/CommandTable.h"
#include "thermo/CalculationMaterial.h"

#include <gtest/gtest.h>

#include <span>

namespace solvane {

namespace {

ComModule module;

} // namespace

CPort& Rig::addPort(std::vector<ComRef<CPort>>& ports, bool isFeed) {
    ports.push_back(unit->CreatePort(isFeed, L"a port"));
    return *ports.back().get();
}

FakeMaterial& Rig::connect(CPort& port, Generation generation, FakeStream stream) {
    if (generation == Generation::v10) {
        const auto material = FakeMaterial10::create(std::move(stream));
        port.Connect(material->dispatch());
        return *material.get();
    }
    const auto material = FakeMaterial11::create(std::move(stream));
    port.Connect(material->dispatch());
    return *material.get();
}

bool Rig::prepare(std::wstring& error) {
    return createCalculationMaterial(run, error) && readCompoundsAndPhases(run, error);
}

void Rig::prepare(FakeMaterial& material) {
    std::wstring error;
    ASSERT_TRUE(prepare(error));
    blockBytes = blockSize(run);
    material.record->calls.clear();
}

Reply Rig::send(const Wire& request) {
    std::string block = request.bytes();
    block.resize(blockBytes);
    carryOutCommand(run, std::as_writable_bytes(std::span(block)));
    return Reply(std::move(block));
}

std::string Rig::failureOf(const Wire& request) {
    Reply reply = send(request);
    return reply.word() == statusFailure ? reply.text() : std::string();
}

Scenario asking(Generation generation, const Wire& request, const FakeStream& stream,
                const std::function<void(FakeStream&)>& onFlash) {
    return [=](const std::function<void(CallRecord&)>& sabotage) {
        Rig rig;
        FakeMaterial& material = rig.addFeed(generation, stream);
        material.onFlash = onFlash;
        rig.prepare(material);
        sabotage(*material.record);
        const std::string error = rig.failureOf(request);
        const std::vector<std::string> calls = material.record->calls;
        return Outcome{error, calls, rig.failureOf(request)};
    };
}

} // namespace solvane
