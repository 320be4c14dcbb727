#pragma once

#include <span>

// A deliberate fault, what the build of its kind ("undefined", "heap", or both for "") reports of it.
struct Fault {
    const char* build;
    const char* name;
    const char* report;
    void (*commit)();
};

std::span<const Fault> faults();
