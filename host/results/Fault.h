#pragma once

namespace solvane::host {

/// The cause of a failure: the calculation itself, a unit's model or a parameter's value, or the machine,
/// which lacks something that our own unit needs.
enum class Fault { calculation, model, machine };

} // namespace solvane::host
