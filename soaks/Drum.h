/// A unit with the model of the example flash drum, on the materials of the sample host.
#pragma once

#include "HostedUnit.h"
#include "flowsheet/Streams.h"

#include <string>
#include <vector>

namespace solvane::soak {

class Drum {
public:
    /// Creates the unit, which takes the start of an engine, and gives it the model: the example's script,
    /// after `scriptBefore`. Drums with different numbers have different feeds.
    explicit Drum(const UnitModule& module, int number = 0, const std::string& scriptBefore = "");
    ~Drum();
    Drum(const Drum&) = delete;
    Drum& operator=(const Drum&) = delete;

    /// Why it is not ready; empty if it is.
    const std::string& startError() const { return startError_; }

    /// Calculates at that temperature, in K. False with the unit's text.
    bool calculate(double temperature, std::string& error);

    /// Every number of the feed and of both products, exact; or what is wrong with one of them.
    std::string products() const;

    const HostedUnit& unit() const { return unit_; }

private:
    bool prepare(int number, const std::string& scriptBefore);

    HostedUnit unit_;
    std::vector<host::Stream> streams_;
    std::string startError_;
};

} // namespace solvane::soak
