#include "ErrorStack.h"

#include <charconv>
#include <optional>

namespace solvane {

namespace {

/// The run script's last line.
constexpr std::string_view endMarker = "MATLAB done\n";
constexpr std::string_view scriptName = "script";

/// Takes the number at the end of `text` and the words before it. 0 and the whole text if they are not there.
long takeLastNumber(std::string_view& text, std::string_view words) {
    const std::size_t at = text.rfind(words);
    if (at == text.npos)
        return 0;
    long number = 0;
    const char* const end = text.data() + text.size();
    const auto [rest, fault] = std::from_chars(text.data() + at + words.size(), end, number);
    if (fault != std::errc() || rest != end || number < 1)
        return 0;
    text.remove_suffix(text.size() - at);
    return number;
}

std::optional<ErrorPlace> readPlace(std::string_view line) {
    constexpr std::string_view at = "at ";
    if (!line.starts_with(at))
        return std::nullopt;
    line.remove_prefix(at.size());
    ErrorPlace place;
    place.column = takeLastNumber(line, ", column ");
    place.line = takeLastNumber(line, " line ");
    if (place.line == 0)
        return std::nullopt;
    if (line != scriptName)
        place.file = line;
    return place;
}

} // namespace

std::vector<ErrorPlace> readErrorStack(std::string_view output) {
    std::vector<ErrorPlace> stack;
    const std::size_t marker = output.rfind(endMarker);
    if (marker == output.npos)
        return stack;
    output.remove_prefix(marker + endMarker.size());
    for (std::size_t end; (end = output.find('\n')) != output.npos; output.remove_prefix(end + 1)) {
        const auto place = readPlace(output.substr(0, end));
        if (!place)
            break;
        stack.push_back(*place);
    }
    return stack;
}

} // namespace solvane
