/// The processes that a soak starts itself, under Wine beside a Linux Octave. It looks for no others, and
/// ends no others.
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

/// Whether a process has never run, because its creator died before it resumed the first thread. The system
/// keeps such a process forever; nothing in it could end it.
bool hasNeverRun(DWORD process);

/// Ends a process at once, as a crash would, and waits for its end, ten seconds at most.
void killProcess(DWORD process);
void killOctave(unsigned process);

/// How much memory an Octave has of its own, in bytes; 0 where that cannot be read.
double memoryOf(unsigned octave);

/// Starts a program in this program's folder, or this program, with arguments that do not end in a backslash.
/// Null on failure.
Handle startBeside(const std::wstring& file, const std::vector<std::wstring>& arguments);
Handle startSelf(const std::vector<std::wstring>& arguments);

} // namespace solvane::soak
