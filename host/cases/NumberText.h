/// Numbers in messages and tables.
#pragma once

#include <string>

namespace solvane::host {

/// At most that many significant digits, without trailing zeros.
std::string shortNumber(double value, int digits);

/// Exactly that many decimals.
std::string fixedNumber(double value, int decimals);

/// The shortest text that is read as the same number.
std::string exactNumber(double value);

} // namespace solvane::host
