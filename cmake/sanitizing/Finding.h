#pragma once

#include <windows.h>

// Writes what was found, and the calls that led there as module+offset, to the error output and to the file
// of findings, and ends the process with findingExitCode. The environment's SOLVANE_FINDINGS names another
// file. where: the registers at the fault, null for those of the caller. Allocates nothing.
[[noreturn]] void reportFinding(const char* what, const CONTEXT* where = nullptr);

constexpr unsigned findingExitCode = 86;
