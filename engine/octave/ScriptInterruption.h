/// The end of a script in which no function of the unit is called, such as an endless loop.
#pragma once

namespace solvane::engine {

/// Lets the running script fail at its next statement, with `runStopped`, which gives it the line of an
/// error. The script may catch that. False if this Octave cannot do that, or if programs that the script has
/// started would go on. For any thread except Octave's own.
bool interruptScript();

/// Takes the last interruption back if it has not happened.
void forgetInterruption();

} // namespace solvane::engine
