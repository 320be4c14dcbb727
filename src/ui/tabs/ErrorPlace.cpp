#include "ErrorPlace.h"

#include "com/Text.h"
#include "runtime/RunScripts.h"
#include "ui/controls/TextView.h"

#include <algorithm>
#include <array>
#include <optional>

namespace solvane {

namespace {

/// How an engine names a line of the generated function: the words before the line's number, and after it the
/// words before the column's number, or what else has to follow.
struct Pattern {
    const wchar_t* beforeLine;
    const wchar_t* afterLine;
    bool hasColumn;
};
// The first match counts. Call stacks come first: they hold for an error in a called function too.
constexpr std::array<Pattern, 6> patterns{{
    {L"unitCalc at line ", L" column ", true},
    {L"unitCalc at line ", L", column ", true},
    {L"unitCalc.m Line: ", L" Column: ", true},
    {L"in unitCalc (line ", L")", false},
    {L"using unitCalc (line ", L")", false},
    {L"==> unitCalc at ", L"", false},
}};

std::optional<long> takeNumber(std::wstring_view& rest) {
    const std::size_t length = std::min(rest.find_first_not_of(L"0123456789"), rest.size());
    if (length == 0 || length > 8)
        return std::nullopt;
    const long number = std::stol(std::wstring(rest.substr(0, length)));
    rest.remove_prefix(length);
    return number;
}

bool takeWords(std::wstring_view& rest, std::wstring_view words) {
    if (!rest.starts_with(words))
        return false;
    rest.remove_prefix(words.size());
    return true;
}

/// The place behind the pattern's first words, in the generated function.
std::optional<TextPlace> readPlace(std::wstring_view rest, const Pattern& pattern) {
    const auto line = takeNumber(rest);
    if (!line || !takeWords(rest, pattern.afterLine))
        return std::nullopt;
    const auto column = pattern.hasColumn ? takeNumber(rest) : std::optional<long>(1);
    // Engines report an unknown column as 0 or -1.
    return TextPlace{*line, std::max(column.value_or(1), 1L)};
}

std::optional<TextPlace> matchPatterns(std::wstring_view error) {
    for (const Pattern& pattern : patterns) {
        const std::wstring_view words = pattern.beforeLine;
        for (auto at = error.find(words); at != error.npos; at = error.find(words, at + 1))
            if (const auto place = readPlace(error.substr(at + words.size()), pattern))
                return place;
    }
    return std::nullopt;
}

std::wstring_view lineOf(std::wstring_view script, long line) {
    for (; line > 1; --line) {
        const std::size_t end = script.find(L'\n');
        if (end == script.npos)
            return {};
        script.remove_prefix(end + 1);
    }
    return script.substr(0, script.find_first_of(L"\r\n"));
}

TextPlace inScript(TextPlace place) {
    place.line -= unitScriptHeaderLines;
    return place;
}

constexpr std::wstring_view nearLine = L" near line ";

/// "parse error near line 5 of file C:\folder\unitCalc.m"
std::optional<TextPlace> matchParseError(std::wstring_view error) {
    const std::size_t at = error.find(nearLine);
    if (at == error.npos)
        return std::nullopt;
    std::wstring_view rest = error.substr(at + nearLine.size());
    const auto line = takeNumber(rest);
    if (!line || !takeWords(rest, L" of file "))
        return std::nullopt;
    constexpr std::wstring_view file = L"unitCalc.m";
    const std::size_t name = rest.find(file);
    if (name == rest.npos || rest.find(L".m") + 2 != name + file.size()) // another file is named first
        return std::nullopt;
    return TextPlace{*line, 1};
}

/// "'x' undefined near line 5, column 3" does not name the function. It is the script only if the name stands
/// at that place.
std::optional<TextPlace> matchName(std::wstring_view error, std::wstring_view script) {
    const std::size_t at = error.find(nearLine);
    if (at == error.npos)
        return std::nullopt;
    const std::wstring_view before = error.substr(0, at);
    const std::size_t end = before.rfind(L'\'');
    const std::size_t begin = end == before.npos || end == 0 ? end : before.find_last_of(L"'`", end - 1);
    auto place = readPlace(error.substr(at + nearLine.size()), {L"", L", column ", true});
    if (!place)
        place = readPlace(error.substr(at + nearLine.size()), {L"", L" column ", true});
    if (!place || place->line <= unitScriptHeaderLines)
        return std::nullopt;
    if (begin == before.npos || begin == end)
        return place;
    const std::wstring_view name = before.substr(begin + 1, end - begin - 1);
    const std::wstring_view line = lineOf(script, inScript(*place).line);
    const auto column = static_cast<std::size_t>(place->column - 1);
    return column < line.size() && line.substr(column).starts_with(name) ? place : std::nullopt;
}

} // namespace

std::vector<ErrorPlace> findErrorPlaces(const std::wstring& output, const std::wstring& error,
                                        const std::wstring& script) {
    if (std::vector<ErrorPlace> stack = readErrorStack(narrow(output, CP_UTF8)); !stack.empty())
        return stack;
    auto place = matchPatterns(error);
    if (!place)
        place = matchParseError(error);
    if (!place)
        place = matchName(error, script);
    if (!place || place->line <= unitScriptHeaderLines)
        return {};
    const TextPlace found = inScript(*place);
    return {{{}, found.line, found.column}};
}

} // namespace solvane
