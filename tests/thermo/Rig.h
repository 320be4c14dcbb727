/// A unit with materials on its ports in the middle of a run, which a test talks to as the script does: a
/// request in the block, a reply in the block.
#pragma once

#include "FakeMaterial10.h"
#include "FakeMaterial11.h"
#include "Road.h"
#include "thermo/CalculationRun.h"
#include "unit/CSolvaneUnitOp.h"

#include <cstddef>
#include <string>
#include <vector>

namespace solvane {

enum class Generation { v10, v11 };

inline constexpr Generation bothGenerations[] = {Generation::v10, Generation::v11};

/// The bytes of a request, field by field.
class Request {
public:
    explicit Request(std::uint32_t code) { add(code); }
    Request& integer(std::int32_t value) { return add(value); }
    Request& real(double value) { return add(value); }
    Request& reals(const std::vector<double>& values);
    Request& text(const std::string& value);

    const std::vector<std::byte>& bytes() const { return bytes_; }

private:
    template <class T>
    Request& add(const T& value);

    std::vector<std::byte> bytes_;
};

/// The block after a command, read field by field.
class Reply {
public:
    explicit Reply(std::vector<std::byte> block) : block_(std::move(block)) {}
    std::uint32_t word() { return take<std::uint32_t>(); }
    std::int32_t integer() { return take<std::int32_t>(); }
    double real() { return take<double>(); }
    std::vector<double> reals(std::size_t count);
    std::string text();
    /// Bytes read so far.
    std::size_t position() const { return position_; }

private:
    template <class T>
    T take();

    std::vector<std::byte> block_;
    std::size_t position_ = 0;
};

class Rig {
public:
    Rig() : unit(makeUnit()), run(*unit.get()) {}

    ComRef<CSolvaneUnitOp> unit;
    CalculationRun run;
    std::size_t blockBytes = 2048;

    CPort& addFeed() { return addPort(unit->feedPorts, true); }
    CPort& addProduct() { return addPort(unit->productPorts, false); }
    /// A port with a new material. The port keeps it alive.
    FakeMaterial& addFeed(Generation generation, FakeStream stream = makeFakeStream()) {
        return connect(addFeed(), generation, std::move(stream));
    }
    FakeMaterial& addProduct(Generation generation, FakeStream stream = makeFakeStream()) {
        return connect(addProduct(), generation, std::move(stream));
    }
    static FakeMaterial& connect(CPort& port, Generation generation, FakeStream stream);

    /// The run's prelude. `error` stays empty on success.
    bool prepare(std::wstring& error);
    /// The same where it can't fail; the block gets its proper size, and `material` a new record.
    void prepare(FakeMaterial& material);

    Reply send(const Request& request);
    /// The failure's text; empty on success.
    std::string failureOf(const Request& request);

private:
    static ComRef<CSolvaneUnitOp> makeUnit();
    CPort& addPort(std::vector<ComRef<CPort>>& ports, bool isFeed);
};

/// A request in a run whose one feed has this stream.
Scenario asking(Generation generation, const Request& request, const FakeStream& stream = makeFakeStream(),
                const std::function<void(FakeStream&)>& onFlash = nullptr);

} // namespace solvane
