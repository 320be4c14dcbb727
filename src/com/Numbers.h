/// Numbers as text, with a decimal point whatever the machine's settings. Prints like "%lg". Scanning skips
/// leading blanks and reads the longest number; a real may also be hexadecimal, "inf" or "nan".
#pragma once

#include <clocale>
#include <cstdint>
#include <string>

namespace solvane {

/// Six significant digits.
std::string printReal(double value);

/// False if the text does not begin with a number. A number beyond a double's range becomes an infinity or 0,
/// as in the C library with `locale`, whose decimal separator is a point.
[[nodiscard]] bool scanReal(const std::string& text, _locale_t locale, double& value);
// False if the text does not begin with a number, or if the number is too large. An unsigned number with a
// minus sign wraps around at 2^32, as in the C library.
[[nodiscard]] bool scanInteger(const std::string& text, std::int32_t& value);
[[nodiscard]] bool scanUnsigned(const std::string& text, std::uint32_t& value);

} // namespace solvane
