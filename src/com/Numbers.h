/// Numbers as text, by the rules of the C library's "%lg", "%d" and "%u" with a decimal point, whatever the
/// machine's settings. Scanning skips leading blanks and takes as much as is a number.
#pragma once

#include <clocale>
#include <cstdint>
#include <string>

namespace solvane {

/// Six significant digits.
std::string printReal(double value);

// False where no number begins. `locale` is that of the decimal point.
bool scanReal(const std::string& text, _locale_t locale, double& value);
bool scanInteger(const std::string& text, std::int32_t& value);
bool scanUnsigned(const std::string& text, std::uint32_t& value);

} // namespace solvane
