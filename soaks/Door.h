/// A way into the product by which damaged inputs can come.
#pragma once

#include "Effort.h"
#include "Figures.h"

#include <cstdint>
#include <string>

namespace solvane::soak {

struct Verdict {
    bool isAccepted = false; ///< else it was refused
    std::string fault = {};  ///< of the product; empty where accepting or refusing was well done
};

class Door {
public:
    virtual ~Door() = default;
    /// Makes the damaged input of that number and gives it to the product.
    virtual Verdict attempt(std::uint32_t seed, int number) = 0;
    /// What is made only once has been made, and growth counts from now on.
    virtual void startCounting() {}
};

/// Tries `count` inputs and puts the figures of every door. The temporary folder, which is the door's own
/// while it lives, is the current one meanwhile. Tells the seed and the number of the first faults, and of an
/// input that crashes or hangs, on which the process ends.
void soakDoor(Door& door, const Effort& effort, int count, const Figures& figures);

} // namespace solvane::soak
