#include "ProcessGroup.h"

#include <signal.h>
#include <unistd.h>

#include <cstdlib>

namespace solvane::engine {

void formProcessGroup() {
    static_cast<void>(setpgid(0, 0)); // fails for the leader of a session, which has a group of its own
}

void endProcessGroup() {
    if (getpgrp() == getpid())
        kill(0, SIGKILL);
    std::_Exit(1);
}

} // namespace solvane::engine
