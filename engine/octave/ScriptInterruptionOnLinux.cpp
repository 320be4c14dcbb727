#include "ScriptInterruption.h"

#include "channel/StopEvent.h"

#include <dlfcn.h>
#include <sys/wait.h>

#include <atomic>
#include <csignal>

namespace solvane::engine {

namespace {

template <typename Symbol>
Symbol* octaves(const char* name) {
    return reinterpret_cast<Symbol*>(dlsym(RTLD_DEFAULT, name));
}

/// What Octave's own modules use of each other, beyond the MEX interface (quit.h and error.h of Octave 7 to
/// 9). Octave calls the hook on its own thread, between two statements, once a signal is marked as caught.
struct Octave {
    using Hook = void (*)();

    Hook* hook = octaves<Hook>("octave_signal_hook");
    volatile std::sig_atomic_t* isCaught = octaves<volatile std::sig_atomic_t>("octave_signal_caught");
    void (*raise)(const char* format, ...) = octaves<void(const char*, ...)>("_Z5errorPKcz");
    Hook usual = hook ? *hook : nullptr;

    explicit operator bool() const { return hook && isCaught && raise; }

    void setHook(Hook value) const { std::atomic_ref(*hook).store(value); }

    static const Octave& current() {
        static const Octave octave;
        return octave;
    }
};

void failHere() {
    forgetInterruption();
    Octave::current().raise("%s", runStopped);
}

bool hasChildren() {
    siginfo_t ignored;
    return waitid(P_ALL, 0, &ignored, WEXITED | WNOHANG | WNOWAIT) == 0;
}

} // namespace

bool interruptScript() {
    const Octave& octave = Octave::current();
    if (!octave || hasChildren())
        return false;
    octave.setHook(failHere);
    *octave.isCaught = 1;
    return true;
}

void forgetInterruption() {
    const Octave& octave = Octave::current();
    if (octave)
        octave.setHook(octave.usual);
}

} // namespace solvane::engine
