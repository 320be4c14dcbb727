#include "FeedLines.h"

#include "CaseParts.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <string_view>

namespace solvane::host {

namespace {

std::string trimmed(std::string_view text) {
    text.remove_prefix(std::min(text.find_first_not_of(' '), text.size()));
    return std::string(text.substr(0, text.find_last_not_of(' ') + 1));
}

/// A number, or the text.
CaseJson valueJson(const std::string& text) {
    double number = 0;
    const char* const end = text.data() + text.size();
    const auto [stop, code] = std::from_chars(text.data(), end, number);
    return code == std::errc() && stop == end && std::isfinite(number) ? CaseJson(number) : CaseJson(text);
}

/// "a=1, b=2" as an object; `read` makes the value of a key.
template <class Read>
bool readPairs(std::string_view text, char separator, char sign, const Read& read, CaseJson& json,
               std::string& error) {
    json = CaseJson::object();
    while (true) {
        const std::string pair(text.substr(0, text.find(separator)));
        const std::size_t middle = pair.find(sign);
        const std::string key = trimmed(pair.substr(0, middle));
        if (middle == pair.npos || json.contains(key)) {
            error = middle == pair.npos ? "\"" + trimmed(pair) + "\" is not of the form KEY" + sign + "VALUE"
                                        : "\"" + key + "\" is given twice";
            return false;
        }
        if (!read(key, trimmed(pair.substr(middle + 1)), json[key]))
            return false;
        if (pair.size() == text.size())
            return true;
        text.remove_prefix(pair.size() + 1);
    }
}

bool readLine(const std::string& line, CaseJson& json, std::string& error) {
    const auto readFraction = [](const std::string&, const std::string& text, CaseJson& value) {
        value = valueJson(text);
        return true;
    };
    const auto readKey = [&](const std::string& key, const std::string& text, CaseJson& value) {
        if (key == "composition")
            return readPairs(text, ';', ':', readFraction, value, error);
        value = key == "name" ? CaseJson(text) : valueJson(text);
        return true;
    };
    return readPairs(line, ',', '=', readKey, json, error);
}

/// Adds the compounds of a feed that the case does not have yet. Unknown names stay for the feed's reader.
void addCompounds(const CaseJson& feed, std::vector<const Compound*>& compounds) {
    if (feed.contains("composition"))
        for (const auto& [name, fraction] : feed.at("composition").items())
            if (const Compound* compound = findCompound(name);
                compound && std::ranges::find(compounds, compound) == compounds.end())
                compounds.push_back(compound);
}

} // namespace

bool readFeedLines(const std::vector<std::string>& lines, Case& result, std::string& error) {
    std::vector<CaseJson> feeds(lines.size());
    for (std::size_t i = 0; i < lines.size(); ++i) {
        if (!readLine(lines[i], feeds[i], error)) {
            error.insert(0, "--feed \"" + lines[i] + "\": ");
            return false;
        }
        addCompounds(feeds[i], result.compounds);
    }
    std::vector<std::string> names;
    for (const CaseJson& json : feeds) {
        const CasePlace place(json, "--feed", error);
        FeedStream& feed = result.feeds.emplace_back();
        if (!readFeed(place, result.compounds, feed) || !isNewName(place, feed.name, names))
            return false;
        result.units.front().feeds.push_back({feed.name, feed.name});
    }
    return true;
}

} // namespace solvane::host
