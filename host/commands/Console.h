/// What all commands print alike.
#pragma once

#include "results/Fault.h"

#include <cstdio>
#include <string>
#include <string_view>

namespace solvane::host {

/// A bad case or model file is bad usage too.
enum ExitCode { ok = 0, calculationFailed = 1, badUsage = 2 };

/// Texts are UTF-8.
void print(std::FILE* stream, std::string_view text);

/// Prints an error to stderr; the result is `code`.
ExitCode complain(ExitCode code, const std::string& error);

/// With the exit code for that fault, and for the machine's with where to look further.
ExitCode complain(Fault fault, const std::string& error);

/// Prints to stderr what a unit has to say.
void printUnitLine(std::string_view unit, std::string_view line);

} // namespace solvane::host
