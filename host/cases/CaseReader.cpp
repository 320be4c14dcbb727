#include "CaseReader.h"

#include "CaseDocument.h"
#include "CaseParts.h"
#include "FilePath.h"
#include "NameList.h"

#include <vector>

namespace solvane::host {

namespace {

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
