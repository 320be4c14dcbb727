#include "CaseReader.h"

#include "CaseParts.h"
#include "FilePath.h"

#include <algorithm>
#include <iomanip>
#include <sstream>

namespace solvane::host {

namespace {

/// How far a composition may be from a sum of 1.
constexpr double compositionTolerance = 1e-6;

/// nlohmann's text for what is wrong, without its own words for the place.
std::string parseFault(const nlohmann::json::parse_error& fault) {
    std::string text = fault.what();
    const auto placeEnd = text.find(": ");
    return placeEnd == std::string::npos ? text : text.substr(placeEnd + 2);
}

/// "line:column" of a byte, counted from 1.
std::string lineAndColumn(std::string_view text, std::size_t byte) {
    const std::string_view before = text.substr(0, std::min(byte > 0 ? byte - 1 : 0, text.size()));
    const auto line = std::ranges::count(before, '\n') + 1;
    const auto lineStart = before.rfind('\n') + 1; // 0 where there is no line end before
    return std::to_string(line) + ":" + std::to_string(before.size() - lineStart + 1);
}

std::string numberText(double number) {
    std::ostringstream text;
    text << std::setprecision(10) << number;
    return text.str();
}

bool readComposition(const CasePlace& place, const std::vector<const Compound*>& compounds,
                     std::vector<double>& fractions) {
    if (!place.value().is_object())
        return place.fail("an object of mole fractions by compound is expected");
    fractions.assign(compounds.size(), 0.0);
    double sum = 0;
    for (const auto& [name, value] : place.value().items()) {
        const CasePlace fraction = place.member(name);
        const Compound* compound = findCompound(name);
        const auto found = std::ranges::find(compounds, compound);
        if (!compound || found == compounds.end())
            return fraction.fail("the compound is not in the case's list of compounds");
        double& number = fractions[static_cast<std::size_t>(found - compounds.begin())];
        if (number != 0)
            return fraction.fail("the compound is given twice");
        if (!read(fraction, number))
            return false;
        if (number < 0)
            return fraction.fail("a mole fraction cannot be negative");
        sum += number;
    }
    return std::abs(sum - 1) <= compositionTolerance ||
           place.fail("the mole fractions sum to " + numberText(sum) + ", not to 1");
}

bool isAbove(const CasePlace& place, const char* key, std::optional<double> number, double limit) {
    return !number || *number > limit || place.member(key).fail("a positive number is expected");
}

bool readFeed(const CasePlace& place, const std::vector<const Compound*>& compounds, FeedStream& feed) {
    if (!place.isObject({"name", "temperature", "pressure", "vaporFraction", "flow", "composition"}) ||
        !place.required("name", feed.name) || !place.optional("temperature", feed.temperature) ||
        !place.optional("pressure", feed.pressure) || !place.optional("vaporFraction", feed.vaporFraction) ||
        !place.required("flow", feed.flow) || !isAbove(place, "temperature", feed.temperature, 0) ||
        !isAbove(place, "pressure", feed.pressure, 0))
        return false;
    if (feed.temperature.has_value() + feed.pressure.has_value() + feed.vaporFraction.has_value() != 2)
        return place.fail("two of \"temperature\", \"pressure\" and \"vaporFraction\" are expected");
    if (feed.vaporFraction && !(*feed.vaporFraction >= 0 && *feed.vaporFraction <= 1))
        return place.member("vaporFraction").fail("a number from 0 to 1 is expected");
    if (feed.flow < 0)
        return place.member("flow").fail("a flow cannot be negative");
    if (!place.value().contains("composition"))
        return place.fail("the key \"composition\" is missing");
    return readComposition(place.member("composition"), compounds, feed.composition);
}

bool readStreams(const CasePlace& root, Case& result) {
    if (!root.value().contains("feeds"))
        return root.fail("the key \"feeds\" is missing");
    const CasePlace feeds = root.member("feeds");
    if (!feeds.value().is_array())
        return feeds.fail("a list is expected");
    std::vector<std::string> names;
    for (std::size_t i = 0; i < feeds.value().size(); ++i) {
        const CasePlace feed = feeds.element(i);
        if (!readFeed(feed, result.compounds, result.feeds.emplace_back()) ||
            !isNewName(feed, result.feeds.back().name, names))
            return false;
    }
    if (!root.required("products", result.products))
        return false;
    for (std::size_t i = 0; i < result.products.size(); ++i)
        if (!isNewName(root.member("products").element(i), result.products[i], names))
            return false;
    return true;
}

bool readUnit(const CasePlace& place, Case& result) {
    return place.isObject({"progId", "name"}) && place.optional("progId", result.unitProgId) &&
           place.optional("name", result.unitName);
}

bool readCompounds(const CasePlace& root, Case& result) {
    if (!root.required("compounds", result.compounds))
        return false;
    const CasePlace place = root.member("compounds");
    if (result.compounds.empty())
        return place.fail("at least one compound is expected");
    std::vector<std::string> names;
    for (std::size_t i = 0; i < result.compounds.size(); ++i)
        if (!isNewName(place.element(i), std::string(result.compounds[i]->name), names))
            return false;
    return true;
}

bool readRoot(const CasePlace& root, const std::filesystem::path& folder, Case& result) {
    if (!root.isObject({"unit", "generation", "profile", "compounds", "feeds", "products", "model"}) ||
        !root.optional("generation", result.generation) || !root.optional("profile", result.profile) ||
        (root.value().contains("unit") && !readUnit(root.member("unit"), result)) ||
        !readCompounds(root, result) || !readStreams(root, result))
        return false;
    return !root.value().contains("model") || readModel(root.member("model"), folder, result.model.emplace());
}

} // namespace

bool read(const CasePlace& place, Generation& result) {
    for (const Generation generation : {Generation::v10, Generation::v11})
        if (place.value() == generationName(generation)) {
            result = generation;
            return true;
        }
    return place.fail("\"1.0\" or \"1.1\" is expected");
}

bool read(const CasePlace& place, Profile& result) {
    std::string name;
    if (!read(place, name))
        return false;
    const Profile* profile = findProfile(name);
    if (!profile) {
        std::string known;
        for (const Profile& one : profiles)
            known.append(known.empty() ? "" : ", ").append(one.name);
        return place.fail("the profile \"" + name + "\" is unknown; profiles: " + known);
    }
    result = *profile;
    return true;
}

bool read(const CasePlace& place, const Compound*& result) {
    std::string name;
    if (!read(place, name))
        return false;
    result = findCompound(name);
    if (result)
        return true;
    std::string known;
    for (const Compound& compound : allCompounds())
        known.append(known.empty() ? "" : ", ").append(compound.name);
    return place.fail("the compound \"" + name + "\" is unknown; compounds: " + known);
}

bool readCase(std::string_view path, Case& result, std::string& error) {
    const std::filesystem::path file = filePath(path);
    std::string text;
    if (!readFile(file, text, error))
        return false;
    result = {};
    try {
        const auto json = nlohmann::json::parse(text);
        if (readRoot({json, {}, error}, file.parent_path(), result))
            return true;
        error = pathText(file) + ": " + error;
    } catch (const nlohmann::json::parse_error& fault) {
        error = pathText(file) + ":" + lineAndColumn(text, fault.byte) + ": " + parseFault(fault);
    }
    return false;
}

} // namespace solvane::host
