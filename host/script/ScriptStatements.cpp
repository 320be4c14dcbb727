#include "ScriptStatements.h"

#include <algorithm>
#include <cctype>

namespace solvane::host {

namespace {

/// A quote after one of these transposes it.
bool canBeTransposed(char c) {
    return std::isalnum(static_cast<unsigned char>(c)) ||
           std::string_view("_)]}'.").find(c) != std::string_view::npos;
}

/// Whether the line has only this mark of a block comment.
bool isMark(std::string_view line, char bracket) {
    const std::size_t begin = line.find_first_not_of(" \t");
    return begin != line.npos && begin + 1 < line.size() && (line[begin] == '%' || line[begin] == '#') &&
           line[begin + 1] == bracket && line.find_first_not_of(" \t\r", begin + 2) == line.npos;
}

/// Appends the line to the statement. True if the next line continues it.
bool append(ScriptStatement& statement, std::string_view line, long number) {
    std::string& code = statement.code;
    const std::size_t begin = code.size();
    for (std::size_t i = 0; i < line.size(); ++i) {
        const char c = line[i];
        if (c == '%' || c == '#') {
            statement.hasNumberSign |= c == '#';
            return false;
        }
        if (line.substr(i).starts_with("..."))
            return true;
        const bool isText =
            c == '"' || (c == '\'' && (code.size() == begin || !canBeTransposed(code.back())));
        if (!isText) {
            code += c;
            continue;
        }
        QuotedText text{number, code.size(), 0, {}};
        for (++i; i < line.size() && (line[i] != c || line.substr(i + 1).starts_with(c)); ++i) {
            if (line[i] == c)
                ++i; // a doubled quote
            text.text += line[i];
        }
        code.append(1, c).append(text.text.size(), ' ').append(1, c);
        text.end = code.size();
        statement.texts.push_back(std::move(text));
    }
    return false;
}

/// Longer ones hold data, and regular expressions recurse with each of their characters.
constexpr std::size_t longestStatement = 2000;

std::vector<ScriptStatement> statementsOf(std::string_view script) {
    std::vector<ScriptStatement> statements;
    bool continues = false;
    long comments = 0;
    for (long number = 1; !script.empty(); ++number) {
        const std::size_t end = std::min(script.find('\n'), script.size());
        const std::string_view line = script.substr(0, end);
        script.remove_prefix(std::min(end + 1, script.size()));
        if (isMark(line, '{'))
            ++comments;
        else if (comments > 0)
            comments -= isMark(line, '}');
        else {
            if (!continues)
                statements.emplace_back().line = number;
            continues = append(statements.back(), line, number);
        }
    }
    std::erase_if(statements, [](const ScriptStatement& one) { return one.code.size() > longestStatement; });
    return statements;
}

} // namespace

std::vector<ScriptFile> scriptFilesOf(const UnitModel& model) {
    std::vector<ScriptFile> files{
        {model.script.name.empty() ? "script" : model.script.name, statementsOf(model.script.bytes)}};
    for (const ModelFile& file : model.files)
        if (file.name.ends_with(".m"))
            files.push_back({file.name, statementsOf(file.bytes)});
    return files;
}

bool hasStatement(const UnitModel& model) {
    return std::ranges::any_of(statementsOf(model.script.bytes), [](const ScriptStatement& statement) {
        return statement.code.find_first_not_of(" \t\r;,") != std::string::npos;
    });
}

std::string placeOf(const ScriptFile& file, const ScriptStatement& statement) {
    return file.name + ":" + std::to_string(statement.line);
}

std::string placeOf(const ScriptFile& file, const QuotedText& text) {
    return file.name + ":" + std::to_string(text.line);
}

} // namespace solvane::host
