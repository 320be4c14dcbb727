/// Memory that Windows allocates for its caller to free with LocalFree.
#pragma once

#include "Handle.h"

namespace solvane {

struct LocalMemoryPolicy {
    using Type = HLOCAL;
    static Type empty() { return nullptr; }
    static void close(Type memory) { LocalFree(memory); }
};
using LocalMemory = Unique<LocalMemoryPolicy>;

} // namespace solvane
