#include "Numbers.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cstdlib>

namespace solvane {

namespace {

struct Text {
    const char* begin;
    const char* end;
};

/// Skips leading blanks and a plus sign, which from_chars does not accept.
Text numberText(const std::string& text) {
    std::size_t start = std::min(text.find_first_not_of(" \t\r\n\v\f"), text.size());
    if (start + 1 < text.size() && text[start] == '+' && text[start + 1] != '-')
        ++start;
    return {text.data() + start, text.data() + text.size()};
}

} // namespace

std::string printReal(double value) {
    std::array<char, 32> buffer;
    const auto result =
        std::to_chars(buffer.data(), buffer.data() + buffer.size(), value, std::chars_format::general, 6);
    return {buffer.data(), result.ptr};
}

bool scanReal(const std::string& text, _locale_t locale, double& value) {
    const auto [begin, end] = numberText(text);
    // from_chars reads hexadecimal digits, but not their prefix.
    const bool isNegative = begin != end && *begin == '-';
    const char* const digits = begin + (isNegative ? 1 : 0);
    if (end - digits > 2 && digits[0] == '0' && (digits[1] == 'x' || digits[1] == 'X') && digits[2] != '-' &&
        std::from_chars(digits + 2, end, value, std::chars_format::hex).ec == std::errc()) {
        value = isNegative ? -value : value;
        return true;
    }
    const std::errc fault = std::from_chars(begin, end, value).ec;
    // Beyond a double's range: the C library's infinity or zero.
    if (fault == std::errc::result_out_of_range)
        value = _strtod_l(begin, nullptr, locale);
    return fault != std::errc::invalid_argument;
}

bool scanInteger(const std::string& text, std::int32_t& value) {
    const auto [begin, end] = numberText(text);
    return std::from_chars(begin, end, value).ec == std::errc();
}

bool scanUnsigned(const std::string& text, std::uint32_t& value) {
    const auto [begin, end] = numberText(text);
    const bool isNegative = begin != end && *begin == '-';
    if (std::from_chars(begin + (isNegative ? 1 : 0), end, value).ec != std::errc())
        return false;
    value = isNegative ? 0 - value : value;
    return true;
}

} // namespace solvane
