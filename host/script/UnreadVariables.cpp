#include "UnreadVariables.h"

#include "channel/Hints.h"

#include <algorithm>
#include <array>
#include <cctype>
#include <map>
#include <regex>
#include <set>

namespace solvane::host {

namespace {

/// The assignments to a variable.
struct Settings {
    std::vector<const ScriptClause*> clauses{};
    bool keepsFirstValue = true; ///< all of them set the whole to that with which sums and the like begin
};

struct Variables {
    std::map<std::string, Settings> set{};
    std::set<std::string> read{};
};

/// Functions that see variables by names in texts, or all of them.
constexpr std::array namesInTexts{"eval", "evalc", "evalin",   "assignin",  "save",   "who",
                                  "whos", "exist", "keyboard", "inputname", "inline", "dbstop"};

bool isFirstValue(const std::string& value) {
    static const std::regex first(R"(-?[01]|-?Inf|(?:zeros|ones)\s*\([^()]*\)|\[\s*\]|\{\s*\}|'\s*')");
    return std::regex_match(value, first);
}

void addNames(const std::string& code, std::set<std::string>& names) {
    for (std::string& name : namesIn(code))
        names.insert(std::move(name));
}

/// Of "[x(i), y] = f(z)", only what stands in parentheses and behind the sign is read.
std::string readByResults(const std::string& code) {
    static const std::regex results(R"(^\[([^\]]*)\]\s*=(?!=)([^]*)$)"), index(R"(\([^()]*\))");
    std::smatch match;
    if (!std::regex_search(code, match, results))
        return code;
    std::string read = match[2];
    const std::string list = match[1];
    for (std::sregex_iterator one(list.begin(), list.end(), index), none; one != none; ++one)
        read.append(1, ' ').append(one->str());
    return read;
}

/// What a clause without a semicolon sets is printed, and counts as read.
bool isPrinted(const ScriptClause& clause) {
    return !clause.rest.starts_with(';');
}

Variables variablesOf(const ScriptScope& scope) {
    Variables variables;
    for (const ScriptClause& clause : scope.clauses) {
        const Assignment assignment = assignmentIn(clause.code);
        if (assignment.variable.empty()) {
            addNames(readByResults(clause.code), variables.read);
            continue;
        }
        addNames(assignment.index, variables.read);
        addNames(assignment.value, variables.read);
        if (isPrinted(clause))
            variables.read.insert(assignment.variable);
        Settings& settings = variables.set[assignment.variable];
        settings.clauses.push_back(&clause);
        settings.keepsFirstValue &= assignment.index.empty() && isFirstValue(assignment.value);
    }
    return variables;
}

/// The additional files that are scripts see the variables of what runs them.
std::set<std::string> namesInScriptFiles(const std::vector<ScriptFile>& files) {
    std::set<std::string> names;
    for (std::size_t i = 1; i < files.size(); ++i) {
        const auto first = std::ranges::find_if(files[i].statements, [](const ScriptStatement& statement) {
            return statement.code.find_first_not_of(" \t\r") != std::string::npos;
        });
        if (first == files[i].statements.end() || namesIn(first->code).empty() ||
            namesIn(first->code).front() == "function")
            continue;
        for (const ScriptStatement& statement : files[i].statements)
            addNames(statement.code, names);
    }
    return names;
}

/// Names with the same letters in another case, or long ones with one wrong letter inside. A digit, a first
/// or a last letter makes another quantity.
bool isSlipOf(const std::string& name, const std::string& other) {
    constexpr std::size_t shortest = 4;
    const auto lower = [](char c) { return std::tolower(static_cast<unsigned char>(c)); };
    const auto digits = [](const std::string& text) {
        return std::ranges::count_if(text, [](unsigned char c) { return std::isdigit(c) != 0; });
    };
    if (std::ranges::equal(name, other, {}, lower, lower))
        return true;
    return std::min(name.size(), other.size()) >= shortest && lower(name.front()) == lower(other.front()) &&
           lower(name.back()) == lower(other.back()) && digits(name) + digits(other) == 0 &&
           !closestName(std::span(&other, 1), name, 1).empty();
}

/// The variable that the script keeps at its first value, and whose sum or minimum the unread one gets, as in
/// "total = 0; for ..., totel = total + x". What is derived from any other, as T - 273.15, may be left over.
std::string meantVariable(const std::string& name, const Settings& settings, const Variables& variables) {
    for (const auto& [other, others] : variables.set)
        if (other != name && others.keepsFirstValue && isSlipOf(name, other) &&
            std::ranges::all_of(settings.clauses, [&](const ScriptClause* clause) {
                const Assignment assignment = assignmentIn(clause->code);
                return assignment.index.empty() && hasName(assignment.value, other);
            }))
            return other;
    return {};
}

/// Calls `visit` with the file, the name, its settings and all variables of its scope.
template <class Visit>
void forEachUnread(const std::vector<ScriptFile>& files, Visit visit) {
    const std::set<std::string> readElsewhere = namesInScriptFiles(files);
    for (const ScriptScope& scope : scopesOf(files)) {
        const Variables variables = variablesOf(scope);
        if (std::ranges::any_of(namesInTexts,
                                [&](const char* name) { return variables.read.contains(name); }))
            continue;
        for (const auto& [name, settings] : variables.set)
            if (!variables.read.contains(name) && !readElsewhere.contains(name))
                visit(*scope.file, name, settings, variables);
    }
}

} // namespace

std::vector<ScriptFinding> mistypedVariables(const std::vector<ScriptFile>& files) {
    std::vector<ScriptFinding> findings;
    forEachUnread(files, [&](const ScriptFile& file, const std::string& name, const Settings& settings,
                             const Variables& variables) {
        if (const std::string meant = meantVariable(name, settings, variables); !meant.empty())
            findings.push_back({placeOf(file, *settings.clauses.front()->statement) + ": nothing reads '" +
                                    name + "', and '" + meant + "' keeps its first value",
                                "write '" + meant + "' for '" + name + "'"});
    });
    return findings;
}

std::vector<ScriptFinding> unreadVariables(const UnitModel& model) {
    std::vector<ScriptFinding> findings;
    forEachUnread(scriptFilesOf(model), [&](const ScriptFile& file, const std::string& name,
                                            const Settings& settings, const Variables& variables) {
        if (meantVariable(name, settings, variables).empty())
            findings.push_back(
                {placeOf(file, *settings.clauses.front()->statement) + ": nothing reads '" + name + "'",
                 "look for another name that is meant, or remove it"});
    });
    return findings;
}

} // namespace solvane::host
