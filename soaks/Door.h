/// An entrance of the product that can receive damaged inputs.
#pragma once

#include "Effort.h"
#include "Figures.h"

#include <cstdint>
#include <string>

namespace solvane::soak {

struct Verdict {
    bool isAccepted = false; ///< else it was refused
    std::string fault = {};  ///< of the product; empty if it accepted or refused the input correctly
};

class Door {
public:
    virtual ~Door() = default;
    /// Makes the damaged input of that number and gives it to the product.
    virtual Verdict attempt(std::uint32_t seed, int number) = 0;
    /// Called when everything that is made only once exists: growth counts from now on.
    virtual void startCounting() {}
};

/// Tries `count` inputs and puts the figures that all doors share. Meanwhile the temporary folder is the
/// door's own, and also the current folder. Prints the seed and the number of the first faulty inputs, and of
/// an input that crashes or hangs, which ends the process.
void soakDoor(Door& door, const Effort& effort, int count, const Figures& figures);

} // namespace solvane::soak
