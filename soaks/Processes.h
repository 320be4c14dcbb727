/// The processes that a soak starts itself, under Wine beside a Linux Octave. Nothing else is looked for, or
/// ended.
#pragma once

#include "com/Handle.h"

#include <string>
#include <vector>

namespace solvane::soak {

/// Marks this process's descendants from now on: a variable of their environment, which Octave gets too.
void markDescendants(const std::wstring& mark);

/// The automation servers that the client started. On Wine COM starts them as the client's children.
std::vector<DWORD> engineServersOf(DWORD client);
/// The Octave processes with that mark, by their Linux ids.
std::vector<unsigned> octavesWith(const std::wstring& mark);

/// Whether a process has not run a single step: whoever created it died before it let go its first thread.
/// The system keeps such a process for ever; nothing in it could end it.
bool hasNeverRun(DWORD process);

/// Ends a process at once, as a crash would, and waits for its end, ten seconds at most.
void killProcess(DWORD process);
void killOctave(unsigned process);

/// How much memory an Octave has of its own, in bytes; 0 where that cannot be read.
double memoryOf(unsigned octave);

/// Starts a program of this one's folder, or this one, with these arguments, none of which ends in a
/// backslash. Null where that fails.
Handle startBeside(const std::wstring& file, const std::vector<std::wstring>& arguments);
Handle startSelf(const std::vector<std::wstring>& arguments);

} // namespace solvane::soak
