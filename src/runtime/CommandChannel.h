/// The shared block of one run, and the loop that serves what the gateway asks for through it.
#pragma once

#include "com/Handle.h"

#include <cstddef>
#include <cstdint>
#include <span>
#include <string>

namespace solvane {

struct CalculationRun;

/// Bytes that the block of a run needs, so that a matrix of all compounds and an equilibrium of all phases
/// fit.
std::uint32_t blockSize(const CalculationRun& run);

class CommandChannel {
public:
    /// Creates the block, named after the unit's id, and maps it.
    [[nodiscard]] bool open(const CalculationRun& run, std::wstring& error);

    /// Serves the gateway's commands, on the host's thread, until the worker thread says that the script has
    /// ended. Only paint messages are pumped: the host's windows stay drawn, and its input waits.
    /// `error` is set only where the wait was abandoned.
    void serve(CalculationRun& run, std::wstring& error);

private:
    std::span<std::byte> block() const;

    Handle mapping_;
    MappedView view_;
    std::uint32_t size_ = 0;
};

} // namespace solvane
