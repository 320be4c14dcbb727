#include "CaseReader.h"

#include "CaseParts.h"
#include "FilePath.h"
#include "NameList.h"

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

/// Reads the list of given streams under `key`.
bool readFeeds(const CasePlace& root, const char* key, Case& result) {
    if (!root.value().contains(key))
        return root.fail(std::string("the key \"") + key + "\" is missing");
    const CasePlace feeds = root.member(key);
    if (!feeds.value().is_array())
        return feeds.fail("expected a list");
    std::vector<std::string> names;
    for (std::size_t i = 0; i < feeds.value().size(); ++i) {
        const CasePlace feed = feeds.element(i);
        if (!readFeed(feed, result.compounds, result.feeds.emplace_back()) ||
            !isNewName(feed, result.feeds.back().name, names))
            return false;
    }
    return true;
}

bool readCompounds(const CasePlace& root, Case& result) {
    if (!root.required("compounds", result.compounds))
        return false;
    const CasePlace place = root.member("compounds");
    if (result.compounds.empty())
        return place.fail("expected at least one compound");
    std::vector<std::string> names;
    for (std::size_t i = 0; i < result.compounds.size(); ++i)
        if (!isNewName(place.element(i), std::string(result.compounds[i]->name), names))
            return false;
    return true;
}

bool readRoot(const CasePlace& root, const std::filesystem::path& folder, Case& result) {
    result.isFlowsheet = root.value().is_object() && root.value().contains("units");
    const bool hasKnownKeys =
        result.isFlowsheet
            ? root.isObject({"generation", "profile", "compounds", "streams", "units", "tear", "convergence"})
            : root.isObject(
                  {"unit", "generation", "profile", "compounds", "feeds", "products", "model", "parameters"});
    if (!hasKnownKeys || !root.optional("generation", result.generation) ||
        !root.optional("profile", result.profile) || !readCompounds(root, result) ||
        !readFeeds(root, result.isFlowsheet ? "streams" : "feeds", result))
        return false;
    if (!result.isFlowsheet)
        return readOnlyUnit(root, folder, result);
    return readUnits(root.member("units"), folder, result) && readRecycles(root, result) &&
           checkStreams(root, result);
}

} // namespace

bool read(const CasePlace& place, Generation& result) {
    for (const Generation generation : {Generation::v10, Generation::v11})
        if (place.value() == generationName(generation)) {
            result = generation;
            return true;
        }
    return place.fail("expected \"1.0\" or \"1.1\"");
}

bool read(const CasePlace& place, Profile& result) {
    std::string name;
    if (!read(place, name))
        return false;
    const Profile* profile = findProfile(name);
    if (!profile)
        return place.fail("the profile \"" + name +
                          "\" is unknown; profiles: " + nameList(profiles, &Profile::name));
    result = *profile;
    return true;
}

bool read(const CasePlace& place, const Compound*& result) {
    std::string name;
    if (!read(place, name))
        return false;
    result = findCompound(name);
    return result || place.fail("the compound \"" + name +
                                "\" is unknown; compounds: " + nameList(allCompounds(), &Compound::name));
}

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
        error = pathText(file) + ":" + lineAndColumn(text, fault.byte) + ": " + faultText(fault, ": ");
    } catch (const nlohmann::json::out_of_range& fault) { // a number beyond the range of a double
        error = pathText(file) + ": " + faultText(fault, "] ");
    }
    return false;
}

bool readCase(std::string_view path, Case& result, std::string& error) {
    const std::filesystem::path file = filePath(path);
    std::string text;
    CaseJson json;
    if (!readFile(file, text, error) || !parseDocument(file, text, json, error))
        return false;
    result = {};
    if (readRoot({json, {}, error}, file.parent_path(), result))
        return true;
    error = pathText(file) + ": " + error;
    return false;
}

} // namespace solvane::host
