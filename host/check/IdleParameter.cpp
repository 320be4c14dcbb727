#include "IdleParameter.h"

#include "cases/ParameterRules.h"
#include "script/ScriptStatements.h"

#include <algorithm>
#include <regex>

namespace solvane::host {

std::string remedyOfIdleParameter(const UnitCase& unit, const std::string& parameter) {
    std::string lost =
        "look for the term that it is in: it may be lost, set anew by the script, at its limit, or 0";
    const auto* model = std::get_if<UnitModel>(&unit.model);
    if (!model)
        return lost;
    static const std::regex rateConstant(R"(\bexp\s*\([^;]*/)");
    bool isNamed = false, hasRates = false;
    for (const ScriptFile& file : scriptFilesOf(*model))
        for (const ScriptStatement& statement : file.statements) {
            hasRates = hasRates || std::regex_search(statement.code, rateConstant);
            isNamed = isNamed || std::ranges::any_of(statement.texts, [&](const QuotedText& text) {
                          return isSameName(text.text, parameter);
                      });
        }
    if (!isNamed)
        return "no line of the script has its name: read it by getParameter, or remove it";
    return lost + (hasRates ? ", as a rate is by an activation energy in other units than R" : "");
}

} // namespace solvane::host
