#include "Tolerances.h"

#include <algorithm>
#include <array>
#include <regex>
#include <string_view>

namespace solvane::host {

namespace {

struct Row {
    std::string_view option;
    double loosest;
};
/// TolX and TolFun are absolute, in units that are not known here.
constexpr std::array rows{Row{"TolX", 1e-4}, Row{"TolFun", 1e-4}, Row{"RelTol", 1e-4}};

void addLoose(const std::string& file, std::string_view text, std::vector<std::string>& found) {
    static const std::regex option(R"(['"](\w+)['"]\s*,\s*([0-9.]+(?:[eE][-+]?[0-9]+)?))");
    long number = 1;
    for (; !text.empty(); ++number) {
        const std::size_t end = std::min(text.find('\n'), text.size());
        const std::string line(text.substr(0, std::min(end, text.find('%'))));
        text.remove_prefix(std::min(end + 1, text.size()));
        for (std::sregex_iterator match(line.begin(), line.end(), option), none; match != none; ++match)
            if (const auto row = std::ranges::find(rows, match->str(1), &Row::option);
                row != rows.end() && std::stod(match->str(2)) > row->loosest)
                found.push_back(file + ":" + std::to_string(number) + ": " + match->str(1) + " is " +
                                match->str(2));
    }
}

} // namespace

std::vector<std::string> looseTolerances(const UnitModel& model) {
    std::vector<std::string> found;
    addLoose(model.script.name.empty() ? "script" : model.script.name, model.script.bytes, found);
    for (const ModelFile& file : model.files)
        if (file.name.ends_with(".m"))
            addLoose(file.name, file.bytes, found);
    return found;
}

} // namespace solvane::host
