#pragma once

#include <string>
#include <string_view>

namespace solvane::host {

/// The text with its special characters escaped, for an element or a quoted attribute.
inline std::string htmlText(std::string_view text) {
    std::string result;
    for (const char c : text)
        switch (c) {
        case '&':
            result += "&amp;";
            break;
        case '<':
            result += "&lt;";
            break;
        case '>':
            result += "&gt;";
            break;
        case '"':
            result += "&quot;";
            break;
        default:
            result += c;
        }
    return result;
}

} // namespace solvane::host
