#pragma once

#include "flowsheet/RunWatch.h"

namespace solvane::host {

/// While it exists, the first Ctrl-C, Ctrl-Break or closing of the console asks for a stop of the run, and
/// the second ends the program at once. One object at a time.
class Interrupts {
public:
    explicit Interrupts(RunWatch& watch);
    ~Interrupts();
    Interrupts(const Interrupts&) = delete;
    Interrupts& operator=(const Interrupts&) = delete;
};

} // namespace solvane::host
