#include "FailureCause.h"

#include "ScriptScopes.h"

#include <algorithm>
#include <array>
#include <regex>
#include <string_view>

namespace solvane::host {

namespace {

struct Solver {
    std::string_view name;
    std::size_t arguments; ///< that it passes to its function
};

constexpr std::array solvers{Solver{"ode45", 2},      Solver{"ode23", 2},    Solver{"ode23s", 2},
                             Solver{"ode15s", 2},     Solver{"fzero", 1},    Solver{"fsolve", 1},
                             Solver{"fminsearch", 1}, Solver{"fminbnd", 1},  Solver{"fminunc", 1},
                             Solver{"lsqnonlin", 1},  Solver{"integral", 1}, Solver{"quad", 1},
                             Solver{"quadgk", 1},     Solver{"quadl", 1}};

/// The failure in the script's text.
struct Context {
    const std::vector<ScriptScope>& scopes;
    const ScriptFailure& failure;
    const ScriptScope* scope = nullptr;         ///< null if the place is not known
    const FunctionHeader* function = nullptr;   ///< null outside of functions
    std::vector<const ScriptClause*> clauses{}; ///< of the failed statement

    /// What Octave does not know; empty if it is something else.
    std::string undefinedName() const {
        static const std::regex undefined(R"(^'(\w+)' undefined$)");
        std::smatch match;
        return std::regex_search(failure.message, match, undefined) ? match[1] : std::string();
    }
};

bool isUnitsGlobal(const std::string& name) {
    return std::ranges::find(unitsGlobals, name) != unitsGlobals.end();
}

/// Whether a clause gives the variable a value, alone or among the results of a call.
bool sets(const ScriptClause& clause, const std::string& name) {
    const std::size_t sign = clause.code.find('=');
    return assignmentIn(clause.code).variable == name ||
           (clause.code.starts_with('[') && sign != clause.code.npos &&
            hasName(clause.code.substr(0, sign), name));
}

bool sets(const ScriptScope& scope, const std::string& name) {
    return std::ranges::any_of(scope.clauses, [&](const ScriptClause& clause) { return sets(clause, name); });
}

std::string clearedName(const Context& context) {
    static const std::regex clear(R"(^clear(?:vars)?\b\s*(.*)$)");
    static const std::regex all(R"(-?(?:all|a|variables|v|global|g|x)?)");
    const std::string name = context.undefinedName();
    if (name.empty() || context.function || (!isUnitsGlobal(name) && !sets(*context.scope, name)))
        return {};
    for (const ScriptClause& clause : context.scope->clauses) {
        std::smatch match;
        if (clause.statement->line <= context.failure.line && std::regex_search(clause.code, match, clear) &&
            (std::regex_match(match.str(1), all) || hasName(match[1], name)))
            return "'" + clause.code + "' in " + placeOf(*context.scope->file, *clause.statement) +
                   " has removed it; a run begins without variables but those of the unit: leave it out";
    }
    return {};
}

/// "@(W, y) bed(W, y, n1)"
std::string handleFor(const FunctionHeader& function, std::size_t arguments) {
    std::string first, all;
    for (std::size_t i = 0; i < function.inputs.size(); ++i) {
        all += (i == 0 ? "" : ", ") + function.inputs[i];
        if (i + 1 == arguments)
            first = all;
    }
    return "@(" + first + ") " + function.name + "(" + all + ")";
}

/// A solver calls a function that needs more than the solver passes.
std::string missingArgument(const Context& context) {
    const FunctionHeader* function = context.function;
    const std::string name = context.undefinedName();
    if (name.empty() || !function || std::ranges::find(function->inputs, name) == function->inputs.end())
        return {};
    for (const ScriptScope& scope : context.scopes)
        for (const ScriptClause& clause : scope.clauses)
            for (const Solver& solver : solvers)
                if (clause.code.find(function->name) != std::string::npos &&
                    function->inputs.size() > solver.arguments &&
                    std::regex_search(clause.code, std::regex("\\b" + std::string(solver.name) +
                                                              "\\s*\\(\\s*@\\s*" + function->name + "\\s*,")))
                    return std::string(solver.name) + " calls " + function->name + " with " +
                           std::to_string(solver.arguments) + " of its " +
                           std::to_string(function->inputs.size()) + " arguments; write " +
                           handleFor(*function, solver.arguments) + " in " +
                           placeOf(*scope.file, *clause.statement);
    return "it is an argument of " + function->name + ", which a call leaves out";
}

std::string unseenVariable(const Context& context) {
    const std::string name = context.undefinedName();
    if (name.empty() || !context.function)
        return {};
    if (isUnitsGlobal(name))
        return "functions see what the unit gives the script after a line 'global " + name + "'";
    return sets(context.scopes.front(), name)
               ? "it is a variable of the script, which functions do not see: pass it as an argument"
               : std::string();
}

/// "load catalyst.mat", and then "cat.len"
std::string loadedPart(const Context& context) {
    static const std::regex load(R"(^load\b\s*\(?\s*([\w./\\-]*))"),
        part(R"((?:^|[^\w.])([A-Za-z]\w*)\.[A-Za-z])");
    if (!context.scope)
        return {};
    for (const ScriptClause* failed : context.clauses)
        for (std::sregex_iterator used(failed->code.begin(), failed->code.end(), part), none; used != none;
             ++used) {
            const std::string name = (*used)[1];
            if (sets(*context.scope, name))
                continue;
            for (const ScriptClause& clause : context.scope->clauses) {
                std::smatch match;
                if (clause.statement->line >= context.failure.line ||
                    !std::regex_search(clause.code, match, load))
                    continue;
                const std::string file =
                    clause.statement->texts.empty() ? match.str(1) : clause.statement->texts.front().text;
                return "load without a result makes a variable of each name in the file; write " + name +
                       " = load('" + file + "') in " + placeOf(*context.scope->file, *clause.statement);
            }
        }
    return {};
}

/// Calls `find` with the code of the failed statement, or of all that call the function that the message
/// names, until it returns a text, and adds the place.
template <class Find>
std::string firstIn(const Context& context, Find find) {
    static const std::regex caller(R"((\w+) is called in )");
    std::smatch match;
    const std::string function =
        std::regex_search(context.failure.message, match, caller) ? match.str(1) : std::string();
    for (const ScriptScope& scope : context.scopes)
        for (const ScriptClause& clause : scope.clauses)
            if (context.clauses.empty()
                    ? hasName(clause.code, function)
                    : std::ranges::find(context.clauses, &clause) != context.clauses.end())
                if (const std::string found = find(clause.code); !found.empty())
                    return found + " in " + placeOf(*scope.file, *clause.statement);
    return {};
}

std::string cellForText(const Context& context) {
    static const std::regex cell(R"(\bcell\b)"), index(R"(\b(compNames|phaseNames)\s*\(([^()]*)\))");
    if (!std::regex_search(context.failure.message, cell) ||
        context.failure.message.find("strcmp") != std::string::npos)
        return {};
    return firstIn(context, [](const std::string& code) {
        std::smatch match;
        return std::regex_search(code, match, index)
                   ? match.str() + " is a cell: write " + match.str(1) + "{" + match.str(2) + "}"
                   : std::string();
    });
}

/// "T = flashEquilibrium(...)", and then T as a number.
std::string phasesForNumber(const Context& context) {
    static const std::regex cell(R"(\bcell\b|'cell')"), flash(R"(^(\w+Equilibrium)\s*\()");
    if (!context.scope || !std::regex_search(context.failure.message, cell))
        return {};
    for (const ScriptClause* failed : context.clauses)
        for (const ScriptClause& clause : context.scope->clauses) {
            const Assignment assignment = assignmentIn(clause.code);
            std::smatch match;
            if (!assignment.variable.empty() && hasName(failed->code, assignment.variable) &&
                std::regex_search(assignment.value, match, flash))
                return assignment.variable + " is the first result of " + match.str(1) + " in " +
                       placeOf(*context.scope->file, *clause.statement) +
                       ", the phases; write [phases, fractions, compositions, T, P] = " + match.str(1) +
                       "(...)";
        }
    return {};
}

/// "setProduct(1, 0,7 * F, ...)": no port, row or column is 0.
std::string commaInNumber(const Context& context) {
    static const std::regex message(
        R"(expected .*arguments, got|called with too many inputs|^Invalid call to)");
    static const std::regex number(R"((?:^|[^\w.])0,(\d*[1-9])(?![\w.]))");
    if (!context.scope || !std::regex_search(context.failure.message, message))
        return {};
    return firstIn(context, [](const std::string& code) {
        std::smatch match;
        return std::regex_search(code, match, number)
                   ? "0," + match.str(1) + " is two arguments: write 0." + match.str(1)
                   : std::string();
    });
}

std::string notDouble(const Context& context) {
    static const std::regex message(R"(\bnot doubles|\bu?int(?:8|16|32|64)\b|\bfloat\b)");
    static const std::regex conversion(R"((?:^|[^\w.])(u?int(?:8|16|32|64)|single)\s*\()");
    if (!std::regex_search(context.failure.message, message))
        return {};
    for (const ScriptScope& scope : context.scopes)
        for (const ScriptClause& clause : scope.clauses) {
            std::smatch match;
            if (std::regex_search(clause.code, match, conversion))
                return "what is calculated with the result of " + match.str(1) + " in " +
                       placeOf(*scope.file, *clause.statement) +
                       " is no double; write round for whole numbers";
        }
    return {};
}

constexpr std::array causes{clearedName, missingArgument, unseenVariable, loadedPart,
                            cellForText, phasesForNumber, commaInNumber,  notDouble};

} // namespace

std::string failureCause(const UnitModel& model, const ScriptFailure& failure) {
    const std::vector<ScriptFile> files = scriptFilesOf(model);
    const std::vector<ScriptScope> scopes = scopesOf(files);
    Context context{scopes, failure};
    std::vector<FunctionHeader> functions;
    for (const ScriptScope& scope : scopes)
        for (const ScriptClause& clause : scope.clauses)
            if (const ScriptStatement& statement = *clause.statement;
                scope.file->name == failure.file && statement.line <= failure.line) {
                if (!context.clauses.empty() && context.clauses.back()->statement != &statement)
                    context.clauses.clear();
                context.clauses.push_back(&clause);
                context.scope = &scope;
            }
    if (context.scope) {
        functions = functionsIn(*context.scope->file);
        for (const FunctionHeader& function : functions)
            if (function.line <= failure.line)
                context.function = &function;
    }
    for (const auto& cause : causes)
        if (std::string text = cause(context); !text.empty())
            return text;
    return {};
}

} // namespace solvane::host
