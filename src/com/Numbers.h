/// Numbers as text, with a decimal point whatever the machine's settings. Printing is that of "%lg". Scanning
/// skips leading blanks and takes as much as is a number; a real one may also be hexadecimal, "inf" or "nan".
#pragma once

#include <clocale>
#include <cstdint>
#include <string>

namespace solvane {

/// Six significant digits.
std::string printReal(double value);

/// False where no number begins. One beyond what a double holds becomes an infinity or 0, as the C library
/// has it in `locale`, whose decimal point is a point.
[[nodiscard]] bool scanReal(const std::string& text, _locale_t locale, double& value);
// False where no number begins, or one that is too large. An unsigned number with a minus sign is taken from
// 2^32, as the C library does.
[[nodiscard]] bool scanInteger(const std::string& text, std::int32_t& value);
[[nodiscard]] bool scanUnsigned(const std::string& text, std::uint32_t& value);

} // namespace solvane
