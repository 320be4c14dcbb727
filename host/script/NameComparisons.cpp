#include "NameComparisons.h"

#include <algorithm>
#include <map>
#include <optional>
#include <regex>
#include <string_view>

namespace solvane::host {

namespace {

/// Each name in the code.
std::set<std::string> namesIn(const std::string& code) {
    static const std::regex name(R"([A-Za-z]\w*)");
    std::set<std::string> names;
    for (std::sregex_iterator match(code.begin(), code.end(), name), none; match != none; ++match)
        names.insert(match->str());
    return names;
}

bool haveCommon(const std::set<std::string>& left, const std::set<std::string>& right) {
    return std::ranges::any_of(left, [&](const std::string& name) { return right.contains(name); });
}

bool changesCase(const std::string& code) {
    static const std::set<std::string> functions{"lower", "upper", "tolower", "toupper"};
    return haveCommon(namesIn(code), functions);
}

/// Behind the bracket that closes the one at `open`.
std::size_t closeOf(const std::string& code, std::size_t open) {
    int depth = 0;
    for (std::size_t i = open; i < code.size(); ++i)
        if (code[i] == '(')
            ++depth;
        else if (code[i] == ')' && --depth == 0)
            return i + 1;
    return code.size();
}

/// Whether what stands at `at` is an argument of the call at `open`, also of one that only rewrites it: not
/// of one such as getParameter, which has names of its own.
bool isArgument(const std::string& code, std::size_t open, std::size_t at) {
    static const std::regex rewriting(R"((^|\W)(lower|upper|tolower|toupper|strtrim|char|cellstr)\s*$)");
    std::vector<std::size_t> brackets;
    for (std::size_t i = open; i < at; ++i)
        if (code[i] == '(')
            brackets.push_back(i);
        else if (code[i] == ')' && !brackets.empty())
            brackets.pop_back();
    return std::ranges::all_of(brackets, [&](std::size_t bracket) {
        return bracket == open || std::regex_search(code.substr(0, bracket), rewriting);
    });
}

/// The variable that the statement sets as a whole; empty if it sets none, or a part of one.
std::string variableSetBy(const std::string& code) {
    static const std::regex assignment(R"(^\s*(?:\[[^\]=]*?)?(\w+)\s*\]?\s*=[^=])");
    std::smatch match;
    return std::regex_search(code, match, assignment) ? match[1] : std::string();
}

class ComparisonReader {
public:
    ComparisonReader(const ScriptFile& file, const NameSource& source);
    std::vector<NameComparison> take() { return std::move(comparisons_); }

private:
    void noteAssignment(const ScriptStatement& statement, const NameSource& source);
    void noteTests(const ScriptStatement& statement);
    bool hasList(const std::string& code) const { return haveCommon(namesIn(code), lists_); }
    void addCalls(const ScriptStatement& statement);
    void addOperators(const ScriptStatement& statement);
    void addCase(const ScriptStatement& statement);
    void add(const ScriptStatement& statement, NameComparison comparison);
    void addTexts(const ScriptStatement& statement, std::size_t from, std::size_t to,
                  NameComparison& comparison) const;

    std::set<std::string> lists_;                                   ///< variables with the unit's names
    std::map<std::string, std::vector<const QuotedText*>> texts_{}; ///< variables with texts
    std::set<std::string> tested_{};                                ///< variables that may be empty
    std::vector<NameComparison> comparisons_{};
    std::map<std::string, std::size_t> results_{}; ///< the comparisons that set the tested variables
    std::optional<std::size_t> switch_{};          ///< the comparison to which a case belongs
};

ComparisonReader::ComparisonReader(const ScriptFile& file, const NameSource& source)
    : lists_(source.variables) {
    for (const ScriptStatement& statement : file.statements) {
        noteAssignment(statement, source);
        noteTests(statement);
    }
    for (const ScriptStatement& statement : file.statements) {
        addCalls(statement);
        addOperators(statement);
        addCase(statement);
    }
}

void ComparisonReader::noteAssignment(const ScriptStatement& statement, const NameSource& source) {
    // "[phases, parts] = flash(...)", "for phase = phases", "first = phases{1};", "wanted = {'Vapor'};"
    static const std::regex result(R"(^\s*(?:\[\s*)?(\w+)[^=]*=\s*(\w+)\s*\()");
    static const std::regex copy(
        R"(^\s*(?:for\s+)?(\w+)\s*=\s*(\w+)\s*(?:\{[^}]*\}|\([^)]*\))?\s*[;,]?\s*$)");
    static const std::regex texts(R"(^\s*(\w+)\s*=\s*(?:\{[^}]*\}|'\s*'|"\s*")\s*;?\s*$)");
    std::smatch match;
    if ((std::regex_search(statement.code, match, result) && source.functions.contains(match[2])) ||
        (std::regex_search(statement.code, match, copy) && lists_.contains(match[2])))
        lists_.insert(match[1]);
    else if (!statement.texts.empty() && std::regex_search(statement.code, match, texts)) {
        lists_.erase(match[1]); // the script's own names
        for (const QuotedText& text : statement.texts)
            texts_[match[1]].push_back(&text);
    }
}

/// "if isempty(key)", "while ~any(found)"
void ComparisonReader::noteTests(const ScriptStatement& statement) {
    static const std::regex test(
        R"(\b(?:isempty|any|all|nnz|numel|length|isscalar|if|elseif|while)\b(?=[\s(~!]*(\w+)))");
    const std::string& code = statement.code;
    for (std::sregex_iterator match(code.begin(), code.end(), test), none; match != none; ++match)
        tested_.insert((*match)[1]);
}

/// What sets a variable again that was found empty tries another name for the same.
void ComparisonReader::add(const ScriptStatement& statement, NameComparison comparison) {
    static const std::regex test(R"(^\s*(?:if|elseif|while)\b|\b(?:isempty|any|nnz|numel)\s*\()");
    if (comparison.texts.empty())
        return;
    const std::string variable = variableSetBy(statement.code);
    comparison.isTested = tested_.contains(variable) || std::regex_search(statement.code, test);
    const auto before = results_.find(variable);
    if (before == results_.end()) {
        if (tested_.contains(variable))
            results_[variable] = comparisons_.size();
        comparisons_.push_back(std::move(comparison));
        return;
    }
    NameComparison& first = comparisons_[before->second];
    first.texts.insert(first.texts.end(), comparison.texts.begin(), comparison.texts.end());
    first.ignoresCase |= comparison.ignoresCase;
}

void ComparisonReader::addTexts(const ScriptStatement& statement, std::size_t from, std::size_t to,
                                NameComparison& comparison) const {
    for (const QuotedText& text : statement.texts)
        if (text.at >= from && text.end <= to && isArgument(statement.code, from, text.at))
            comparison.texts.push_back(&text);
    for (const std::string& name : namesIn(statement.code.substr(from, to - from)))
        if (const auto texts = texts_.find(name); texts != texts_.end())
            comparison.texts.insert(comparison.texts.end(), texts->second.begin(), texts->second.end());
}

/// The calls in one statement may try several names for the same.
void ComparisonReader::addCalls(const ScriptStatement& statement) {
    static const std::regex call(R"(\b(strcmpi?|ismember|isequal|validatestring)\s*\()");
    const std::string& code = statement.code;
    NameComparison comparison;
    for (std::sregex_iterator match(code.begin(), code.end(), call), none; match != none; ++match) {
        const auto open = static_cast<std::size_t>(match->position() + match->length()) - 1;
        const std::size_t close = closeOf(code, open);
        const std::string arguments = code.substr(open, close - open);
        if (!hasList(arguments))
            continue;
        addTexts(statement, open, close, comparison);
        comparison.ignoresCase |=
            (*match)[1] == "strcmpi" || (*match)[1] == "validatestring" || changesCase(arguments);
    }
    add(statement, std::move(comparison));
}

void ComparisonReader::addOperators(const ScriptStatement& statement) {
    // An index in parentheses gives a part of a name.
    static const std::regex before(
        R"((\w+\s*(?:\{[^}]*\})?|(?:lower|upper|char|strtrim)\s*\([^)]*\))\s*[=~!]=\s*$)");
    static const std::regex after(R"(^\s*[=~!]=\s*(\w+))");
    NameComparison comparison{{}, changesCase(statement.code)};
    for (const QuotedText& text : statement.texts) {
        const std::string left = statement.code.substr(0, text.at);
        const std::string right = statement.code.substr(text.end);
        std::smatch match;
        if ((std::regex_search(left, match, before) || std::regex_search(right, match, after)) &&
            hasList(match[0]))
            comparison.texts.push_back(&text);
    }
    add(statement, std::move(comparison));
}

/// A switch is one comparison, to its end or the next switch.
void ComparisonReader::addCase(const ScriptStatement& statement) {
    static const std::regex begin(R"(^\s*switch\b(.*))");
    static const std::regex one(R"(^\s*case\b)");
    std::smatch match;
    if (std::regex_search(statement.code, match, begin)) {
        switch_.reset();
        if (hasList(match[1])) {
            switch_ = comparisons_.size();
            comparisons_.push_back({{}, changesCase(match[1]), true});
        }
    } else if (switch_ && std::regex_search(statement.code, one))
        addTexts(statement, 0, statement.code.size(), comparisons_[*switch_]);
}

} // namespace

std::vector<NameComparison> nameComparisons(const ScriptFile& file, const NameSource& source) {
    return ComparisonReader(file, source).take();
}

} // namespace solvane::host
