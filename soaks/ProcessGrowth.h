#pragma once

#include "Figures.h"
#include "ProcessUsage.h"

#include <string>

namespace solvane::soak {

/// What a process gained since it was warm. Puts the figures "<who>: handles gained", "threads gained" and
/// "memory gained", the last in KiB.
class Growth {
public:
    Growth(std::string who, DWORD process)
        : who_(std::move(who)), process_(process), before_(ProcessUsage::of(process)) {}

    void put(const Figures& figures) const {
        put(figures, double(ProcessUsage::of(process_).memory) - double(before_.memory));
    }

    /// With a number of bytes that was measured in another way.
    void put(const Figures& figures, double memoryGained) const {
        const ProcessUsage after = ProcessUsage::of(process_);
        figures.put(who_ + ": handles gained", double(after.handles) - double(before_.handles));
        figures.put(who_ + ": threads gained", double(after.threads) - double(before_.threads));
        figures.put(who_ + ": memory gained", memoryGained / 1024);
    }

private:
    std::string who_;
    DWORD process_;
    ProcessUsage before_;
};

} // namespace solvane::soak
