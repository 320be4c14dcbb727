/// The shared block of one run, and the loop that serves the gateway's requests.
#pragma once

#include "com/Handle.h"

#include <cstddef>
#include <cstdint>
#include <span>
#include <string>

namespace solvane {

struct CalculationRun;

/// The size in bytes of a run's block, which must hold a matrix of all compounds and an equilibrium of all
/// phases.
std::uint32_t blockSize(const CalculationRun& run);

class CommandChannel {
public:
    /// Creates the block, named after the unit's id, and maps it.
    [[nodiscard]] bool open(const CalculationRun& run, std::wstring& error);

    /// Serves the gateway's commands, on the host's thread, until the worker thread signals the end of the
    /// script. Pumps only paint messages: the host's windows stay drawn, and its input stays queued. Sets
    /// `error` only if it abandons the wait.
    void serve(CalculationRun& run, std::wstring& error);

private:
    std::span<std::byte> block() const;

    Handle mapping_;
    MappedView view_;
    std::uint32_t size_ = 0;
};

} // namespace solvane
