#include "NumberText.h"

#include <array>
#include <charconv>
#include <cstdio>

namespace solvane::host {

namespace {

/// Long enough for the largest number without an exponent.
using Buffer = std::array<char, 400>;

} // namespace

std::string shortNumber(double value, int digits) {
    Buffer text;
    std::snprintf(text.data(), text.size(), "%.*g", digits, value);
    return text.data();
}

std::string fixedNumber(double value, int decimals) {
    Buffer text;
    std::snprintf(text.data(), text.size(), "%.*f", decimals, value);
    return text.data();
}

std::string exactNumber(double value) {
    Buffer text;
    return {text.data(), std::to_chars(text.data(), text.data() + text.size(), value).ptr};
}

} // namespace solvane::host
