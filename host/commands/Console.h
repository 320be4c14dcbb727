/// Printing that all commands share.
#pragma once

#include "flowsheet/RunWatch.h"
#include "results/Fault.h"

#include <cstdio>
#include <string>
#include <string_view>

namespace solvane::host {

/// A bad case or model file counts as bad usage. An interrupted program returns what shells expect.
enum ExitCode { ok = 0, calculationFailed = 1, badUsage = 2, interrupted = 130 };

/// The same for users.
inline constexpr char exitCodesText[] =
    "Exit codes:\n"
    "  0    success\n"
    "  1    the calculation or the unit's window failed, or the doctor found something wrong\n"
    "  2    a bad command line, case or model file\n"
    "  130  interrupted: Ctrl-C, Ctrl-Break or the closing of the console stopped the run";

/// Texts are UTF-8.
void print(std::FILE* stream, std::string_view text);

/// The text with its control characters as escapes, except line ends and tabs: a terminal would carry them
/// out.
std::string visible(std::string_view text);

/// The text with blanks up to the width of its column.
std::string padded(std::string text, std::size_t width);

/// Prints an error to stderr and returns `code`.
ExitCode complain(ExitCode code, const std::string& error);

/// Returns the exit code for that fault; for one of the machine it also prints what to do next.
ExitCode complain(Fault fault, const std::string& error);

/// Of a run that was stopped.
ExitCode stopCode(StopReason reason);

/// Prints a unit's log line to stderr.
void printUnitLine(std::string_view unit, std::string_view line);

} // namespace solvane::host
