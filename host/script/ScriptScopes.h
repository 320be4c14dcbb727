/// The clauses of a script and the scopes of its variables, for the checks that look at them.
#pragma once

#include "ScriptStatements.h"

#include <array>
#include <string>
#include <string_view>
#include <vector>

namespace solvane::host {

/// What stands between commas and semicolons that no bracket encloses.
struct ScriptClause {
    const ScriptStatement* statement;
    std::string code;      ///< as that of the statement, without blanks around it
    std::string_view rest; ///< of the statement's code, from the comma or semicolon that ends it
};

/// The line "function [a, b] = name(inputs)"
struct FunctionHeader {
    std::string name;
    std::vector<std::string> inputs;
    long line; ///< in the file, counted from 1
};
std::vector<FunctionHeader> functionsIn(const ScriptFile& file);

/// Of "W, y, n1"
std::vector<std::string> argumentsIn(const std::string& list);

/// What sees the same variables: the statements of the script or a function; an additional file with
/// functions is one as a whole, since they may be nested.
struct ScriptScope {
    const ScriptFile* file;
    std::string function{}; ///< its name; empty for statements outside of functions, and for whole files
    std::vector<ScriptClause> clauses{};
};

/// The scopes of the script and the additional files. They point into `files`.
std::vector<ScriptScope> scopesOf(const std::vector<ScriptFile>& files);

/// The globals that the unit sets for each run. The script sees them, its functions only after `global`.
inline constexpr std::array<std::string_view, 10> unitsGlobals{"nComp",
                                                               "nPhase",
                                                               "compNames",
                                                               "phaseNames",
                                                               "phaseAggregationStates",
                                                               "AGGSTATE_UNKNOWN",
                                                               "AGGSTATE_VAPOR",
                                                               "AGGSTATE_LIQUID",
                                                               "AGGSTATE_SOLID",
                                                               "unit_ID"};

/// What a clause gives a value, "x = y", "x(2) = y" or "x.part = y".
struct Assignment {
    std::string variable; ///< empty if the clause is no such assignment
    std::string index;    ///< of a part of it; empty for the whole variable
    std::string value;
};
Assignment assignmentIn(const std::string& code);

/// Each name in the code but those of fields.
std::vector<std::string> namesIn(const std::string& code);

bool hasName(const std::string& code, const std::string& name);

/// Whether a file sets a variable, or has a function, of that name.
bool defines(const ScriptFile& file, std::string_view name);

} // namespace solvane::host
