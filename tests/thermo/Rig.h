/// A unit with materials on its ports in the middle of a run. A test uses it as the script does: with a
/// request in the block and a reply in the block.
#pragma once

#include "BareUnit.h"
#include "FakeMaterial10.h"
#include "FakeMaterial11.h"
#include "NoMaterialLeft.h"
#include "Road.h"
#include "Wire.h"
#include "thermo/CalculationRun.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

namespace solvane {

enum class Generation { v10, v11 };

inline constexpr Generation bothGenerations[] = {Generation::v10, Generation::v11};

using Reals = std::vector<double>;

/// The block after a command, read field by field.
class Reply {
public:
    explicit Reply(std::string block) : block_(std::move(block)) {}
    std::uint32_t word() { return take<std::uint32_t>(); }
    std::int32_t integer() { return take<std::int32_t>(); }
    double real() { return take<double>(); }
    std::vector<double> reals(std::size_t count) {
        std::vector<double> values(count);
        std::ranges::generate(values, [&] { return real(); });
        return values;
    }
    std::string text() {
        const std::string value(block_.c_str() + position_);
        position_ += value.size() + 1;
        return value;
    }

private:
    template <class T>
    T take() {
        T value{};
        block_.substr(position_).copy(reinterpret_cast<char*>(&value), sizeof value);
        position_ += sizeof value;
        return value;
    }

    std::string block_;
    std::size_t position_ = 0;
};

class Rig {
public:
    ComRef<BareUnit> unit = BareUnit::create();
    CalculationRun run{*unit.get()};
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
    /// The same where it cannot fail; sizes the block properly and clears the record of `material`.
    void prepare(FakeMaterial& material);

    Reply send(const Wire& request);
    /// The failure's text; empty on success.
    std::string failureOf(const Wire& request);

private:
    CPort& addPort(std::vector<ComRef<CPort>>& ports, bool isFeed);
};

/// A request in a run whose one feed has this stream.
Scenario asking(Generation generation, const Wire& request, const FakeStream& stream = makeFakeStream(),
                const std::function<void(FakeStream&)>& onFlash = nullptr);

} // namespace solvane
