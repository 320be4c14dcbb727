#pragma once

namespace solvane::host {

/// What a failure has its cause in: the calculation itself, a unit's model or the value of a parameter, or
/// the machine, which lacks something that our own unit needs.
enum class Fault { calculation, model, machine };

} // namespace solvane::host
