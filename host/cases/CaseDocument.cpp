#include "CaseDocument.h"

#include "FilePath.h"

#include <algorithm>
#include <set>
#include <vector>

namespace solvane::host {

namespace {

/// nlohmann's description of a fault, without its prefix for the kind or the place, which ends with `end`.
std::string faultText(const nlohmann::json::exception& fault, std::string_view end) {
    std::string text = fault.what();
    const auto ownWords = text.find(end);
    return ownWords == std::string::npos ? text : text.substr(ownWords + end.size());
}

/// Some editors save in this encoding, which the JSON parser cannot read.
bool isUtf16(std::string_view text) {
    return text.starts_with("\xFF\xFE") || text.starts_with("\xFE\xFF");
}

/// "line:column" of a byte, counted from 1.
std::string lineAndColumn(std::string_view text, std::size_t byte) {
    const std::string_view before = text.substr(0, std::min(byte > 0 ? byte - 1 : 0, text.size()));
    const auto line = std::ranges::count(before, '\n') + 1;
    const auto lineStart = before.rfind('\n') + 1; // 0 on the first line
    return std::to_string(line) + ":" + std::to_string(before.size() - lineStart + 1);
}

/// Finds a key that an object has twice: the parser would keep its last value without a word.
class RepeatedKeys {
public:
    void see(nlohmann::json::parse_event_t event, const CaseJson& parsed) {
        using Event = nlohmann::json::parse_event_t;
        if (event == Event::object_start)
            open_.emplace_back();
        else if (event == Event::object_end)
            open_.pop_back();
        else if (event == Event::key && !open_.back().insert(parsed.get<std::string>()).second &&
                 first_.empty())
            first_ = parsed.get<std::string>();
    }
    /// Empty if there is none.
    const std::string& first() const { return first_; }

private:
    std::vector<std::set<std::string>> open_; ///< the keys of the objects around the current place
    std::string first_;
};

/// A mistake of those who write JSON by hand. Empty texts stand for any.
struct SyntaxMistake {
    std::string_view words;  ///< in the parser's description
    std::string_view at;     ///< one of these bytes stands at the place
    std::string_view behind; ///< the last byte before it that is no blank
    std::string_view remedy;
};

constexpr SyntaxMistake syntaxMistakes[] = {
    {"", "}]", ",", "remove the comma before the closing bracket"},
    {"invalid literal", "/#", "", "JSON has no comments; remove this one"},
    // The first bytes of typographic quotes.
    {"invalid literal", "'\xE2\xC2", "", "write names and texts between straight double quotes"},
    {"invalid literal", ".", "", "write a digit before the decimal point"},
    {"invalid literal", "=", "", "write a colon between a name and its value"},
    {"invalid literal", ";", "", "write a comma here"},
    {"invalid literal", "T", "", "write true in small letters"},
    {"invalid literal", "F", "", "write false in small letters"},
    {"invalid literal", "", "", "write names and texts between double quotes"},
    {"forbidden character after backslash", "", "", "write / or \\\\ in place of the backslash"},
    {"control character U+000A", "", "", "the text has no closing quote in its line"},
    {"object key - unexpected number", "", "",
     "write decimals after a point, and names between double quotes"},
    {"; expected end of input", "", "", "remove what follows the last closing bracket"},
    {"object - unexpected end of input", "", "", "a closing } is missing"},
    {"array - unexpected end of input", "", "", "a closing ] is missing"},
    {"object - unexpected", "\"{[", "", "a comma is missing before this"},
    {"array - unexpected", "\"{[", "", "a comma is missing before this"},
};

/// What to do about what the parser does not understand at `byte`, counted from 1. Empty if that is not
/// known.
std::string_view syntaxRemedy(std::string_view words, std::string_view text, std::size_t byte) {
    const std::size_t place = byte > 0 ? byte - 1 : 0;
    const std::string_view at = text.substr(std::min(place, text.size()), 1);
    const std::string_view before = text.substr(0, std::min(place, text.size()));
    const std::size_t last = before.find_last_not_of(" \t\r\n");
    const std::string_view behind = last == std::string_view::npos ? "" : before.substr(last, 1);
    const auto isOneOf = [](std::string_view byteThere, std::string_view bytes) {
        return bytes.empty() || (!byteThere.empty() && bytes.find(byteThere) != std::string_view::npos);
    };
    const auto mistake = std::ranges::find_if(syntaxMistakes, [&](const SyntaxMistake& row) {
        return words.find(row.words) != std::string_view::npos && isOneOf(at, row.at) &&
               isOneOf(behind, row.behind);
    });
    return mistake == std::end(syntaxMistakes) ? "" : mistake->remedy;
}

} // namespace

bool parseDocument(const std::filesystem::path& file, const std::string& text, CaseJson& json,
                   std::string& error) {
    if (isUtf16(text)) {
        error = pathText(file) + ": the file is in UTF-16; save it in UTF-8";
        return false;
    }
    try {
        RepeatedKeys repeated;
        json = CaseJson::parse(text, [&](int, nlohmann::json::parse_event_t event, const CaseJson& parsed) {
            repeated.see(event, parsed);
            return true;
        });
        if (repeated.first().empty())
            return true;
        error = pathText(file) + ": an object has the key \"" + repeated.first() + "\" twice";
    } catch (const nlohmann::json::parse_error& fault) {
        const std::string words = faultText(fault, ": ");
        const std::string_view remedy = syntaxRemedy(words, text, fault.byte);
        error = pathText(file) + ":" + lineAndColumn(text, fault.byte) + ": " +
                (remedy.empty() ? words : "syntax error: " + std::string(remedy));
    } catch (const nlohmann::json::out_of_range& fault) { // a number beyond the range of a double
        error = pathText(file) + ": " + faultText(fault, "] ");
    }
    return false;
}

} // namespace solvane::host
