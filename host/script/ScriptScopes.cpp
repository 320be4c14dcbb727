#include "ScriptScopes.h"

#include <algorithm>
#include <optional>
#include <regex>
#include <sstream>

namespace solvane::host {

namespace {

std::string withoutBlanks(std::string_view code) {
    const std::size_t begin = std::min(code.find_first_not_of(" \t\r"), code.size());
    return std::string(code.substr(begin, code.find_last_not_of(" \t\r") + 1 - begin));
}

void addClauses(const ScriptStatement& statement, std::vector<ScriptClause>& clauses) {
    const std::string_view code = statement.code;
    std::size_t begin = 0;
    int depth = 0;
    for (std::size_t i = 0; i <= code.size(); ++i) {
        const char c = i < code.size() ? code[i] : ';';
        depth += (c == '(' || c == '[' || c == '{') - (c == ')' || c == ']' || c == '}');
        if (i < code.size() && (depth > 0 || (c != ',' && c != ';')))
            continue;
        if (std::string clause = withoutBlanks(code.substr(begin, i - begin)); !clause.empty())
            clauses.push_back({&statement, std::move(clause), code.substr(i)});
        begin = i + 1;
    }
}

std::optional<FunctionHeader> headerIn(const ScriptStatement& statement) {
    static const std::regex header(R"(^\s*function\b\s*(?:[^=(]*=)?\s*([\w.]+)\s*(?:\(([^)]*)\))?)");
    std::smatch match;
    return std::regex_search(statement.code, match, header)
               ? std::optional<FunctionHeader>({match[1], argumentsIn(match[2]), statement.line})
               : std::nullopt;
}

} // namespace

std::vector<std::string> argumentsIn(const std::string& list) {
    std::vector<std::string> arguments;
    std::istringstream parts(list);
    for (std::string part; std::getline(parts, part, ',');)
        arguments.push_back(withoutBlanks(part));
    return arguments;
}

std::vector<FunctionHeader> functionsIn(const ScriptFile& file) {
    std::vector<FunctionHeader> functions;
    for (const ScriptStatement& statement : file.statements)
        if (auto header = headerIn(statement))
            functions.push_back(std::move(*header));
    return functions;
}

std::vector<ScriptScope> scopesOf(const std::vector<ScriptFile>& files) {
    std::vector<ScriptScope> scopes;
    for (const ScriptFile& file : files) {
        const bool isScript = &file == &files.front();
        scopes.push_back({&file});
        for (const ScriptStatement& statement : file.statements) {
            if (const auto header = isScript ? headerIn(statement) : std::nullopt)
                scopes.push_back({&file, header->name, {}});
            addClauses(statement, scopes.back().clauses);
        }
    }
    return scopes;
}

Assignment assignmentIn(const std::string& code) {
    // An index may have one call in it.
    static const std::regex assignment(
        R"(^([A-Za-z]\w*)((?:\((?:[^()]|\([^()]*\))*\)|\{[^{}]*\}|\.\w+)*)\s*=(?!=)\s*([^]*)$)");
    std::smatch match;
    return std::regex_search(code, match, assignment) ? Assignment{match[1], match[2], match[3]}
                                                      : Assignment{};
}

std::vector<std::string> namesIn(const std::string& code) {
    static const std::regex name(R"((^|[^\w.])([A-Za-z]\w*))");
    std::vector<std::string> names;
    for (std::sregex_iterator match(code.begin(), code.end(), name), none; match != none; ++match)
        names.push_back((*match)[2]);
    return names;
}

bool hasName(const std::string& code, const std::string& name) {
    const std::vector<std::string> names = namesIn(code);
    return std::ranges::find(names, name) != names.end();
}

bool defines(const ScriptFile& file, std::string_view name) {
    const std::string word = "\\b" + std::string(name) + "\\b";
    const std::regex definition("^\\s*function\\b.*" + word + "|(^|[;,])\\s*" + word +
                                "\\s*(\\([^)]*\\)\\s*)?=[^=]|^\\s*\\[[^\\]]*" + word + "[^\\]]*\\]\\s*=");
    return std::ranges::any_of(file.statements, [&](const ScriptStatement& statement) {
        return std::regex_search(statement.code, definition);
    });
}

} // namespace solvane::host
