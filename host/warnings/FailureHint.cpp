#include "FailureHint.h"

#include "FlashHint.h"
#include "channel/Hints.h"

#include <algorithm>
#include <array>
#include <iterator>
#include <regex>

namespace solvane::host {

namespace {

/// By a part of the message.
struct Row {
    std::string_view message;
    std::string_view hint;
};

constexpr std::string_view notListed = "a script finds the files that the model lists: under \"files\" in a "
                                       "case, on the tab Files in the window";
constexpr std::string_view noTables =
    "Octave lacks it; csvread(file, rows, columns) or dlmread reads numbers here and in Matlab";
constexpr std::string_view notPresent =
    "strict simulators know no phase before a flash: call flashEquilibrium first, at a state with this phase";
constexpr std::string_view notANumber = "0/0 makes NaN: divide by no flow, and give the products of a feed "
                                        "without flow its composition";

constexpr std::array rows{
    Row{"Vapor phase not found for vapor phase flash constraint",
        "in setProduct, 'vaporFraction' must be the first condition, and the first phase a vapour; otherwise "
        "find the state by flashEquilibrium, and set its pressure and enthalpy"},
    Row{"unable to find file", notListed},
    Row{"unable to open file", notListed},
    Row{"'readtable' undefined", noTables},
    Row{"'readmatrix' undefined", noTables},
    Row{"; the unit has no such port", "the unit's feeds are those that the case lists under \"feeds\", its "
                                       "products those under \"products\""},
    Row{"; call SetPresentPhases first", notPresent},
    Row{"is NaN. Usage: ", notANumber},
    Row{", got nan. Usage: ", notANumber},
};

/// Of a file beside the script that the model does not list, or that it lists under nearly the same name.
std::string fileHint(std::string_view message, const FailedUnit& failed) {
    static const std::regex missing(R"(unable to (?:find|open) file '?([^';:]+)|^'(\w+)' undefined)");
    std::match_results<std::string_view::const_iterator> match;
    if (!failed.model || failed.model->script.path.empty() ||
        !std::regex_search(message.begin(), message.end(), match, missing))
        return {};
    const bool isData = match[1].matched;
    const std::string name = isData ? match[1].str() : match[2].str() + ".m";
    std::vector<std::string> listed;
    std::ranges::transform(failed.model->files, std::back_inserter(listed), &ModelFile::name);
    if (std::ranges::find(listed, name) != listed.end())
        return {};
    std::error_code error;
    const std::filesystem::path path = failed.model->script.path.parent_path() /
                                       std::filesystem::path(std::u8string(name.begin(), name.end()));
    if (std::filesystem::is_regular_file(path, error))
        return (isData ? "it" : name) +
               " lies beside the script, but the model does not list it: add it to \"files\"";
    const std::string meant = isData ? closestName(listed, name) : "";
    return meant.empty() ? "" : "did you mean '" + meant + "'?";
}

/// The numbers of ports whose names the script gives.
std::string portHint(std::string_view message, const UnitResult& unit) {
    constexpr std::string_view named = " must be one whole number, counted from 1, got text";
    const std::size_t at = message.find(named);
    if (at == message.npos)
        return {};
    const bool isProduct = message.substr(0, at).ends_with("product");
    std::string ports;
    const std::vector<std::string>& streams = isProduct ? unit.products : unit.feeds;
    for (std::size_t i = 0; i < streams.size(); ++i)
        ports += (i > 0 ? ", '" : " '") + streams[i] + "' is " + std::to_string(i + 1);
    return std::string(isProduct ? "products" : "feeds") + " are numbered:" + ports;
}

} // namespace

std::string failureHint(std::string_view message, const FailedUnit& failed) {
    constexpr std::size_t longest = 2000; // regular expressions recurse with each character
    message = message.substr(0, longest);
    for (const std::string& hint :
         {fileHint(message, failed), portHint(message, failed.unit), flashHint(message, failed)})
        if (!hint.empty())
            return hint;
    const auto row =
        std::ranges::find_if(rows, [&](const Row& one) { return message.find(one.message) != message.npos; });
    return row == rows.end() ? "" : std::string(row->hint);
}

} // namespace solvane::host
