#include "ForeignWords.h"

#include <algorithm>
#include <array>
#include <regex>

namespace solvane::host {

namespace {

/// The first group of the pattern is the word, in a clause.
struct ForeignWord {
    const char* pattern;
    const char* remedy;
};

constexpr std::array words{
    ForeignWord{R"(^(If|IF)\b)", "write if, without Then"},
    ForeignWord{R"(^if\b.*[^\w.](then|Then|THEN)$)", "leave it out"},
    ForeignWord{R"(^(Else ?[Ii]f|ELSE ?IF|elif|elsif)\b)", "write elseif"},
    ForeignWord{R"(^(Else|ELSE)\b)", "write else"},
    ForeignWord{
        R"(^(End|END|[Ee]nd\s*(?:If|Sub|Function|Select|While)|END\s*(?:IF|DO)|end\s+(?:if|do)|enddo|)"
        R"(Next|NEXT|Loop|LOOP|Wend|wend|fi|done|esac)\b)",
        "write end"},
    ForeignWord{R"(^(For|FOR|foreach)\b)", "write for i = 1:10"},
    ForeignWord{R"(^(Do|DO)\b)", "write for i = 1:10, or while"},
    ForeignWord{R"(^(While|WHILE)\b)", "write while"},
    ForeignWord{R"(^(Sub|SUB|SUBROUTINE|subroutine|Function|FUNCTION|def)\s+\w)",
                "write function, as in function y = f(x)"},
    ForeignWord{
        R"(^(Dim|Const|var|let|const|int|float|integer|real|INTEGER|REAL|DOUBLE|IMPLICIT|implicit)\s+)"
        R"((?:[A-Za-z]\w*\s*(?:$|=|\()|\w+\s+(?:As|as|AS|none|NONE)\b))",
        "a variable needs no declaration: x = 0 makes it"},
    ForeignWord{R"(^(import\s+(?:numpy|math|scipy|pandas)|from\s+\w+\s+import)\b)",
                "remove it: all functions are known"},
    ForeignWord{R"((?:^|[^\w.])(True|TRUE)\b)", "write true"},
    ForeignWord{R"((?:^|[^\w.])(False|FALSE)\b)", "write false"},
    ForeignWord{R"((?:^|[\s(=)\d])(\.(?:true|TRUE)\.))", "write true"},
    ForeignWord{R"((?:^|[\s(=)\d])(\.(?:false|FALSE)\.))", "write false"},
    ForeignWord{R"((?:^|[\s(=)\d])(\.(?:and|AND)\.))", "write &&"},
    ForeignWord{R"((?:^|[\s(=)\d])(\.(?:or|OR)\.))", "write ||"},
    ForeignWord{R"((?:^|[\s(=)\d])(\.(?:not|NOT)\.))", "write ~"},
    ForeignWord{R"((?:^|[\s(=)\d])(\.(?:eq|EQ|ne|NE|gt|GT|ge|GE|lt|LT|le|LE)\.))",
                "write ==, ~=, >, >=, < or <="},
    ForeignWord{R"((?:^|[^\w.])(None|NULL|Nothing)\b)", "write []"},
    ForeignWord{R"((?:^|[^\w.])(Math|math|np|numpy)\.\w)", "write the function alone, as in exp(x)"},
    ForeignWord{R"(^(?:if|elseif|while)\b.*[^\w.](not)\s+\w)", "write ~x for not x"},
    ForeignWord{R"(^(?:if|elseif|while)\b.*\)\s*(\{)$)", "a block needs no bracket: it ends with end"},
    ForeignWord{R"(^else\s*(\{)$)", "a block needs no bracket: it ends with end"},
    ForeignWord{R"(^(?:if|elseif|else|while|otherwise|try)\b.*(:)$)", "remove it: a block needs none"},
    ForeignWord{R"((:=))", "write ="},
    ForeignWord{R"(^(/\*))", "write % to begin a comment"},
    ForeignWord{R"(^(!)\s*[A-Za-z]\w*\s+[A-Za-z])", "write % to begin a comment"},
};

bool isDefined(const std::string& word, const std::vector<ScriptFile>& files) {
    const std::regex local("\\bfor\\s*\\(?\\s*" + word + "\\b|@\\([^)]*\\b" + word + "\\b");
    return std::ranges::any_of(files, [&](const ScriptFile& file) {
        return file.name == word + ".m" || defines(file, word) ||
               std::ranges::any_of(file.statements, [&](const ScriptStatement& statement) {
                   return std::regex_search(statement.code, local);
               });
    });
}

bool isName(const std::string& word) {
    static const std::regex name(R"([A-Za-z]\w*)");
    return std::regex_match(word, name);
}

} // namespace

std::vector<ScriptFinding> foreignWords(const std::vector<ScriptFile>& files) {
    static const std::vector<std::regex> patterns = [] {
        std::vector<std::regex> all;
        for (const ForeignWord& word : words)
            all.emplace_back(word.pattern);
        return all;
    }();
    std::vector<ScriptFinding> findings;
    std::vector<const char*> seen;
    const ScriptFile* file = nullptr;
    for (const ScriptScope& scope : scopesOf(files)) {
        if (scope.file != file)
            seen.clear();
        file = scope.file;
        for (const ScriptClause& clause : scope.clauses)
            for (std::size_t i = 0; i < words.size(); ++i) {
                std::smatch match;
                if (std::ranges::find(seen, words[i].pattern) != seen.end() ||
                    !std::regex_search(clause.code, match, patterns[i]) ||
                    (isName(match[1]) && isDefined(match[1], files)))
                    continue;
                seen.push_back(words[i].pattern);
                findings.push_back(
                    {placeOf(*file, *clause.statement) + ": Matlab does not know '" + match.str(1) + "'",
                     words[i].remedy});
            }
    }
    return findings;
}

} // namespace solvane::host
