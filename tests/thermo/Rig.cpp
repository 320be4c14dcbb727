#include "Rig.h"

#include "channel/ChannelFrame.h"
#include "runtime/CommandChannel.h"
#include "runtime/CommandTable.h"
#include "thermo/CalculationMaterial.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstring>
#include <stdexcept>

namespace solvane {

namespace {

ComModule module;

} // namespace

template <class T>
Request& Request::add(const T& value) {
    const auto* bytes = reinterpret_cast<const std::byte*>(&value);
    bytes_.insert(bytes_.end(), bytes, bytes + sizeof value);
    return *this;
}

template Request& Request::add(const std::uint32_t&);
template Request& Request::add(const std::int32_t&);
template Request& Request::add(const double&);

Request& Request::reals(const std::vector<double>& values) {
    for (const double value : values)
        add(value);
    return *this;
}

Request& Request::text(const std::string& value) {
    const auto* bytes = reinterpret_cast<const std::byte*>(value.c_str());
    bytes_.insert(bytes_.end(), bytes, bytes + value.size() + 1);
    return *this;
}

template <class T>
T Reply::take() {
    if (position_ + sizeof(T) > block_.size())
        throw std::out_of_range("the reply is shorter");
    T value;
    std::memcpy(&value, block_.data() + position_, sizeof value);
    position_ += sizeof value;
    return value;
}

template std::uint32_t Reply::take();
template std::int32_t Reply::take();
template double Reply::take();

std::vector<double> Reply::reals(std::size_t count) {
    std::vector<double> values;
    while (values.size() < count)
        values.push_back(real());
    return values;
}

std::string Reply::text() {
    const std::string value(reinterpret_cast<const char*>(block_.data()) + position_);
    position_ += value.size() + 1;
    return value;
}

ComRef<CSolvaneUnitOp> Rig::makeUnit() {
    return ComRef<CSolvaneUnitOp>(new CComObject<CSolvaneUnitOp>());
}

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

Reply Rig::send(const Request& request) {
    std::vector<std::byte> block(blockBytes);
    std::ranges::copy(request.bytes(), block.begin());
    carryOutCommand(run, block);
    return Reply(std::move(block));
}

std::string Rig::failureOf(const Request& request) {
    Reply reply = send(request);
    return reply.word() == statusFailure ? reply.text() : std::string();
}

Scenario asking(Generation generation, const Request& request, const FakeStream& stream,
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
