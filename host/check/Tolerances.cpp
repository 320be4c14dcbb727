#include "Tolerances.h"

#include "script/ScriptStatements.h"

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

} // namespace

std::vector<std::string> looseTolerances(const UnitModel& model) {
    static const std::regex value(R"(^\s*,\s*([0-9.]+(?:[eE][-+]?[0-9]+)?))");
    std::vector<std::string> found;
    for (const ScriptFile& file : scriptFilesOf(model))
        for (const ScriptStatement& statement : file.statements)
            for (const QuotedText& option : statement.texts) {
                const auto row = std::ranges::find(rows, option.text, &Row::option);
                std::smatch match;
                const std::string rest = statement.code.substr(option.end);
                if (row != rows.end() && std::regex_search(rest, match, value) &&
                    std::stod(match[1]) > row->loosest)
                    found.push_back(placeOf(file, option) + ": " + option.text + " is " + match.str(1));
            }
    return found;
}

} // namespace solvane::host
