/// Checks step by step what the unit needs on a machine.
#pragma once

#include "com/ComRef.h"
#include "flowsheet/UnitSession.h"

#include <filesystem>
#include <memory>
#include <span>
#include <string>
#include <vector>

namespace solvane::host {

/// What the steps find, for later steps. A step may read what the steps that it needs have set.
struct Machine {
    CLSID unitClass{};
    std::filesystem::path unitFolder{};
    std::wstring temporaryFolder{}; ///< as the unit reads it, with a trailing backslash
    CLSID engineClass{};
    std::filesystem::path engineProgram{};
    ComRef<IDispatch> engine{};
    bool isOctave = false;
    UnitCase unitCase{};
    std::unique_ptr<UnitSession> session{};
};

/// What a step saw. Texts are UTF-8.
struct Finding {
    std::string text;
    std::string remedy; ///< what to do; empty if all is right

    bool isRight() const { return remedy.empty(); }
};

struct Check {
    const char* name;
    Finding (*look)(Machine& machine);
    std::vector<const char*> needs; ///< names of earlier steps that must be right before this one
};

/// In the order of their execution.
std::span<const Check> checks();

} // namespace solvane::host
