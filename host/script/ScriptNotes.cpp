#include "ScriptNotes.h"

#include "ScriptScopes.h"

#include <algorithm>
#include <array>
#include <optional>
#include <regex>
#include <set>
#include <string_view>

namespace solvane::host {

namespace {

/// The first group of the pattern is what Matlab does not know.
struct Syntax {
    const char* pattern;
    const char* remedy;
};

constexpr std::array syntaxes{
    Syntax{R"(\w[)\]}]?\s*([-+*/^|&]=)(?!=))", "write x = x + 1 for x += 1"},
    Syntax{R"(\w(\+\+|--)\s*[;,]?\s*$)", "write i = i + 1 for i++"},
    Syntax{R"((!=?))", "write ~= for !=, and ~x for !x"},
    Syntax{R"((\*\*))", "write ^"},
    Syntax{R"((?:^|[^\w.])(endif|endfor|endparfor|endwhile|endswitch|endfunction|end_try_catch)(?!\w))",
           "write end"},
    Syntax{R"((?:^|[;,])\s*(unwind_protect|unwind_protect_cleanup|end_unwind_protect)(?!\w))",
           "write onCleanup, or try and catch"},
    Syntax{R"(^\s*(do|until)(?!\w))", "write while true, with an if and a break"},
};

struct OctaveFunction {
    std::string_view name;
    const char* remedy;
};

constexpr std::array octaveFunctions{
    OctaveFunction{"printf", "write fprintf"},
    OctaveFunction{"puts", "write fprintf('%s', text)"},
    OctaveFunction{"fputs", "write fprintf(file, '%s', text)"},
    OctaveFunction{"fdisp", "write disp"},
    OctaveFunction{"tolower", "write lower"},
    OctaveFunction{"toupper", "write upper"},
    OctaveFunction{"rows", "write size(x, 1)"},
    OctaveFunction{"columns", "write size(x, 2)"},
    OctaveFunction{"ostrsplit", "write strsplit"},
    OctaveFunction{"merge", "write if and else"},
    OctaveFunction{"ifelse", "write if and else"},
    OctaveFunction{"lookup", "write discretize"},
    OctaveFunction{"lsode", "write ode45 or ode15s"},
};

class NoteCollector {
public:
    explicit NoteCollector(const ScriptFile& file) : file_(file) {}
    std::vector<ScriptFinding> take() { return std::move(notes_); }

    void add(const ScriptStatement& statement, const std::string& what, const char* remedy) {
        if (seen_.insert(what).second)
            notes_.push_back({placeOf(file_, statement) + ": Matlab does not know " + what, remedy});
    }

private:
    const ScriptFile& file_;
    std::set<std::string> seen_{};
    std::vector<ScriptFinding> notes_{};
};

/// Whether an index or a call is indexed again, as in "size(x)(1)"; the parameters of an anonymous function
/// are none.
bool indexesResult(const std::string& code) {
    for (std::size_t at = code.find(")("); at != code.npos; at = code.find(")(", at + 1)) {
        std::size_t open = at + 1;
        for (int depth = 0; open > 0; --open) {
            depth += code[open - 1] == ')' ? 1 : code[open - 1] == '(' ? -1 : 0;
            if (depth == 0)
                break;
        }
        const std::size_t before = open > 1 ? code.find_last_not_of(' ', open - 2) : code.npos;
        if (before != code.npos && code[before] != '@')
            return true;
    }
    return false;
}

/// In Matlab, a backslash in double quotes stays one.
bool hasEscape(const ScriptStatement& statement) {
    return std::ranges::any_of(statement.texts, [&](const QuotedText& text) {
        return statement.code[text.at] == '"' && text.text.find('\\') != std::string::npos;
    });
}

/// The unit's functions take characters, which a text in double quotes is in Octave only.
bool passesString(const ScriptStatement& statement) {
    static const std::regex call(
        R"(\b(?:[gs]etParameter|getFeedProp|setProduct|setReport|flashEquilibrium|flashProperty|)"
        R"(getCompoundConstant|get\w+Property|logMessage)\s*\()");
    return std::regex_search(statement.code, call) &&
           std::ranges::any_of(statement.texts,
                               [&](const QuotedText& text) { return statement.code[text.at] == '"'; });
}

/// The functions that the script passes to solvers of differential equations.
std::set<std::string> derivativesIn(const ScriptFile& file) {
    static const std::regex call(R"(\bode(?:45|23|23s|15s)\s*\(\s*@\s*(?:\([^)]*\)\s*)?(\w+)\s*[(,])");
    std::set<std::string> names;
    for (const ScriptStatement& statement : file.statements)
        if (std::smatch match; std::regex_search(statement.code, match, call))
            names.insert(match[1]);
    return names;
}

/// The clauses by which such a function returns a row, which only Octave takes: "dy = [a, b]"
std::vector<const ScriptStatement*> rowsOf(const ScriptFile& file, const std::set<std::string>& derivatives) {
    static const std::regex header(R"(^function\s+\[?\s*(\w+)\s*\]?\s*=\s*(\w+))");
    static const std::regex row(R"(^\[[^;'\[\]]*,[^;'\[\]]*\]$)");
    std::vector<const ScriptStatement*> rows;
    std::string result;
    for (const ScriptStatement& statement : file.statements) {
        std::smatch match;
        if (std::regex_search(statement.code, match, header))
            result = derivatives.contains(match[2]) ? match.str(1) : "";
        std::string code = statement.code.substr(0, statement.code.find_last_not_of(" \t\r;") + 1);
        const Assignment assignment =
            assignmentIn(code.substr(std::min(code.find_first_not_of(" \t"), code.size())));
        if (!result.empty() && assignment.variable == result && assignment.index.empty() &&
            std::regex_match(assignment.value, row))
            rows.push_back(&statement);
    }
    return rows;
}

std::vector<ScriptFinding> octaveOnlyIn(const ScriptFile& file, const std::set<std::string>& own,
                                        const std::set<std::string>& derivatives) {
    NoteCollector notes(file);
    for (const ScriptStatement* row : rowsOf(file, derivatives))
        notes.add(*row, "a row from the function that a solver such as ode45 calls",
                  "write [a; b] for [a, b]");
    std::vector<std::pair<std::regex, const char*>> patterns;
    for (const Syntax& syntax : syntaxes)
        patterns.emplace_back(syntax.pattern, syntax.remedy);
    for (const OctaveFunction& function : octaveFunctions)
        if (!own.contains(std::string(function.name) + ".m") && !defines(file, function.name))
            patterns.emplace_back("(?:^|[^\\w.@])(" + std::string(function.name) + ")\\s*\\(",
                                  function.remedy);
    for (const ScriptStatement& statement : file.statements) {
        std::smatch match;
        for (const auto& [pattern, remedy] : patterns)
            if (std::regex_search(statement.code, match, pattern))
                notes.add(statement, "'" + match.str(1) + "'", remedy);
        if (statement.hasNumberSign)
            notes.add(statement, "'#' as the begin of a comment", "write %");
        if (hasEscape(statement))
            notes.add(statement, "a text in double quotes with a backslash for another character",
                      "write sprintf('...\\n')");
        if (passesString(statement))
            notes.add(statement, "a text in double quotes as an argument of the unit's functions",
                      "write it in single quotes");
        if (indexesResult(statement.code))
            notes.add(statement, "an index of an index or of a call, as in size(x)(1)",
                      "give the result a name, and index that");
    }
    return notes.take();
}

using Rule = std::optional<ScriptFinding> (*)(const std::vector<ScriptFile>& files, const ScriptFile& file,
                                              const ScriptStatement& statement, const std::string& name);

bool anyStatement(const ScriptFile& file, const std::string& pattern) {
    const std::regex one(pattern);
    return std::ranges::any_of(file.statements, [&](const ScriptStatement& statement) {
        return std::regex_search(statement.code, one);
    });
}

/// The pattern of an assignment to the variable, whose group is the value.
std::string assignmentTo(const std::string& name) {
    return "(?:^|[;,])\\s*" + name + "\\s*=([^=;][^;]*)";
}

/// Whether a statement gives the variable a value that does not come from it.
bool setsAnew(const ScriptFile& file, const std::string& name) {
    const std::regex assignment(assignmentTo(name));
    const std::regex itself("\\b" + name + "\\b");
    return std::ranges::any_of(file.statements, [&](const ScriptStatement& statement) {
        std::smatch match;
        return std::regex_search(statement.code, match, assignment) &&
               !std::regex_search(match.str(1), itself);
    });
}

std::optional<ScriptFinding> keptGlobal(const std::vector<ScriptFile>& files, const ScriptFile& file,
                                        const ScriptStatement& statement, const std::string& name) {
    const auto isTested = [&](const ScriptFile& one) {
        return anyStatement(one, "\\b(?:isempty|exist)\\s*\\(\\s*'?\\s*" + name + "\\b");
    };
    if (std::ranges::none_of(files, isTested) &&
        std::ranges::any_of(files, [&](const ScriptFile& one) { return setsAnew(one, name); }))
        return std::nullopt;
    return ScriptFinding{
        placeOf(file, statement) + ": Octave keeps the global '" + name + "' from run to run",
        "set it in each run before its first use, unless the results do not depend on what it held"};
}

/// One that is set once, from data that do not change, is no fault.
std::optional<ScriptFinding> countingPersistent(const std::vector<ScriptFile>&, const ScriptFile& file,
                                                const ScriptStatement& statement, const std::string& name) {
    if (!anyStatement(file, "(?:^|[;,])\\s*" + name + "\\s*(?:\\([^)]*\\)\\s*)?(?:[-+*/]=|=[^=;][^;]*\\b" +
                                name + "\\b)"))
        return std::nullopt;
    return ScriptFinding{
        placeOf(file, statement) + ": the persistent '" + name + "' changes from call to call",
        "a function that a solver calls must give the same result for the same arguments; each run "
        "begins anew"};
}

} // namespace

std::vector<ScriptFinding> octaveOnly(const UnitModel& model) {
    std::set<std::string> own;
    for (const ModelFile& file : model.files)
        own.insert(file.name);
    const std::vector<ScriptFile> files = scriptFilesOf(model);
    std::set<std::string> derivatives;
    for (const ScriptFile& file : files)
        derivatives.merge(derivativesIn(file));
    std::vector<ScriptFinding> found;
    for (const ScriptFile& file : files)
        std::ranges::move(octaveOnlyIn(file, own, derivatives), std::back_inserter(found));
    return found;
}

std::vector<ScriptFinding> keptVariables(const UnitModel& model) {
    static const std::regex declaration(R"((?:^|[;,])\s*(global|persistent)\s+([^;,=]*))");
    static const std::regex name(R"([A-Za-z]\w*)");
    const std::vector<ScriptFile> files = scriptFilesOf(model);
    std::set<std::string> globals(unitsGlobals.begin(), unitsGlobals.end());
    std::vector<ScriptFinding> kept;
    for (const ScriptFile& file : files)
        for (const ScriptStatement& statement : file.statements) {
            std::smatch match;
            if (!std::regex_search(statement.code, match, declaration))
                continue;
            const bool isGlobal = match[1] == "global";
            const Rule rule = isGlobal ? keptGlobal : countingPersistent;
            const std::string names = match[2];
            for (std::sregex_iterator one(names.begin(), names.end(), name), none; one != none; ++one)
                if (!isGlobal || globals.insert(one->str()).second)
                    if (auto finding = rule(files, file, statement, one->str()))
                        kept.push_back(std::move(*finding));
        }
    return kept;
}

} // namespace solvane::host
