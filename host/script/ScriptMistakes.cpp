#include "ScriptMistakes.h"

#include "ForeignWords.h"
#include "ScriptScopes.h"
#include "UnreadVariables.h"
#include "cases/ParameterRules.h"

#include <algorithm>
#include <iterator>
#include <regex>

namespace solvane::host {

namespace {

/// "split = 0,7" is an assignment and the number 7: no script states a number for nothing.
std::vector<ScriptFinding> decimalCommas(const std::vector<ScriptFile>& files) {
    static const std::regex before(R"(^(?:.*[^=~<>]=(?!=)|(if|elseif|while)\b).*?(?:^|[^\w.])(\d+)$)");
    static const std::regex after(R"(^,(\d+(?:[eE][-+]?\d+)?)(?![\w.]))");
    static const std::regex loop(R"(^(?:par)?for\b)");
    constexpr std::size_t longestNumber = 30, longestQuoted = 40;
    std::vector<ScriptFinding> findings;
    for (const ScriptScope& scope : scopesOf(files))
        for (const ScriptClause& clause : scope.clauses) {
            const std::string rest(clause.rest.substr(0, longestNumber));
            std::smatch whole, part;
            if (!std::regex_search(rest, part, after) || !std::regex_search(clause.code, whole, before))
                continue;
            const std::string remedy = std::regex_search(clause.code, loop)
                                           ? whole.str(2) + ":" + part.str(1)
                                           : whole.str(2) + "." + part.str(1);
            findings.push_back({placeOf(*scope.file, *clause.statement) + ": the comma in '" +
                                    (clause.code.size() > longestQuoted ? whole.str(2) : clause.code) +
                                    part.str() + "' ends the statement",
                                "write " + remedy});
        }
    return findings;
}

/// The calls of a function that begin with a name.
struct NamedCalls {
    std::vector<std::pair<std::string, std::string>> calls{}; ///< the name, and the place
    bool hasOthers = false;                                   ///< some calculate the name
};

NamedCalls callsOf(const char* function, const std::vector<ScriptFile>& files) {
    const std::regex call("(?:^|[^\\w.])" + std::string(function) + "\\s*\\(\\s*");
    NamedCalls found;
    for (const ScriptFile& file : files)
        for (const ScriptStatement& statement : file.statements)
            for (std::sregex_iterator match(statement.code.begin(), statement.code.end(), call), none;
                 match != none; ++match) {
                const auto at = static_cast<std::size_t>(match->position() + match->length());
                const auto text = std::ranges::find(statement.texts, at, &QuotedText::at);
                if (text == statement.texts.end())
                    found.hasOthers = true;
                else
                    found.calls.emplace_back(text->text, placeOf(file, *text));
            }
    return found;
}

/// An input that the script sets and never asks for is a result. One that it asks for may keep what the next
/// run begins with.
std::vector<ScriptFinding> setInputs(const UnitModel& model, const std::vector<ScriptFile>& files) {
    const NamedCalls got = callsOf("getParameter", files);
    std::vector<ScriptFinding> findings;
    if (got.hasOthers)
        return findings;
    for (const auto& [name, place] : callsOf("setParameter", files).calls)
        if (const auto parameter = std::ranges::find_if(
                model.parameters, [&](const ModelParameter& one) { return isSameName(one.name, name); });
            parameter != model.parameters.end() && parameter->isInput &&
            std::ranges::none_of(got.calls, [&](const auto& call) { return isSameName(call.first, name); }))
            findings.push_back({place + ": the script sets the input '" + name + "', and never gets it",
                                "give the parameter the mode output"});
    return findings;
}

/// The arguments of each call of the function in the code.
std::vector<std::vector<std::string>> argumentsOf(const std::string& function, const std::string& code) {
    const std::regex call("(?:^|[^\\w.@])" + function + "\\s*\\(([^()]*)\\)");
    std::vector<std::vector<std::string>> calls;
    for (std::sregex_iterator match(code.begin(), code.end(), call), none; match != none; ++match)
        calls.push_back(argumentsIn((*match)[1]));
    return calls;
}

/// The places of two inputs that a call passes the other way round; equal ones if it does not.
std::pair<std::size_t, std::size_t> exchanged(const std::vector<std::string>& inputs,
                                              const std::vector<std::string>& arguments) {
    const std::size_t count = std::min(inputs.size(), arguments.size());
    for (std::size_t i = 0; i < count; ++i)
        for (std::size_t j = i + 1; j < count; ++j)
            if (inputs[i] != inputs[j] && arguments[i] == inputs[j] && arguments[j] == inputs[i])
                return {i, j};
    return {};
}

/// A function that all calls give two variables the other way round than it names them, as ode45 does with
/// @(W, y) bed(W, y) and function dy = bed(y, W). What is symmetric is called both ways, or by itself.
std::vector<ScriptFinding> exchangedArguments(const std::vector<ScriptFile>& files) {
    std::vector<ScriptFinding> findings;
    const std::vector<ScriptScope> scopes = scopesOf(files);
    for (const ScriptFile& file : files)
        for (const FunctionHeader& function : functionsIn(file)) {
            std::vector<ScriptFinding> found;
            bool isMeant = false;
            for (const ScriptScope& scope : scopes)
                for (const ScriptClause& clause : scope.clauses) {
                    if (clause.code.find(function.name) == std::string::npos ||
                        clause.code.starts_with("function"))
                        continue;
                    for (const auto& arguments : argumentsOf(function.name, clause.code)) {
                        const auto [first, second] = exchanged(function.inputs, arguments);
                        if (first == second || scope.function == function.name) {
                            isMeant = true;
                            continue;
                        }
                        found.push_back(
                            {placeOf(*scope.file, *clause.statement) + ": the call passes '" +
                                 arguments[first] + "' and '" + arguments[second] + "' to " + function.name +
                                 ", which takes '" + function.inputs[first] + "' and '" +
                                 function.inputs[second] + "' in their places",
                             "exchange them in " + file.name + ":" + std::to_string(function.line) +
                                 "; solvers such as ode45 pass the variable of the integration first"});
                    }
                }
            if (!isMeant && !found.empty())
                findings.push_back(found.front());
        }
    return findings;
}

} // namespace

std::vector<ScriptFinding> scriptMistakes(const UnitModel& model) {
    const std::vector<ScriptFile> files = scriptFilesOf(model);
    std::vector<ScriptFinding> findings = foreignWords(files);
    for (std::vector<ScriptFinding> more :
         {decimalCommas(files), mistypedVariables(files), setInputs(model, files), exchangedArguments(files)})
        std::ranges::move(more, std::back_inserter(findings));
    return findings;
}

} // namespace solvane::host
