/// Text on its way between the interpreter and the block.
///
/// The block holds bytes in the unit's ANSI code page. Matlab's characters are UTF-16; Octave's are the bytes
/// of UTF-8. The Windows builds meet both.
#pragma once

#include "mex/MexFunctions.h"

#include <string>
#include <string_view>

namespace solvane::gateway {

/// The characters of a char array, row or empty, as code page bytes. False with what is wrong with it, worded
/// to follow the argument's name ("must be ...").
bool readText(const mxArray* array, std::string& bytes, std::string& error);

/// The end of a message about an argument of a wrong kind or size, such as ", got 3 by 1 values".
std::string gotText(const mxArray* array);

/// A char row (0 by 0 if empty) of code page bytes.
mxArray* makeText(std::string_view bytes);

/// A message in code page bytes as the interpreter takes it.
std::string messageText(const std::string& bytes);

} // namespace solvane::gateway
