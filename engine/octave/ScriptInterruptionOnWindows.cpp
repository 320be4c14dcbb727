#include "ScriptInterruption.h"

namespace solvane::engine {

// Not tried with the libraries of Octave for Windows.
bool interruptScript() {
    return false;
}

void forgetInterruption() {}

} // namespace solvane::engine
