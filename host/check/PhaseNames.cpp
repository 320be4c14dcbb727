#include "PhaseNames.h"

#include "ScriptStatements.h"
#include "channel/Hints.h"

#include <algorithm>
#include <array>
#include <cctype>
#include <map>
#include <optional>
#include <regex>
#include <set>

namespace solvane::host {

namespace {

std::string lower(std::string text) {
    std::ranges::transform(text, text.begin(),
                           [](unsigned char c) { return static_cast<char>(std::tolower(c)); });
    return text;
}

/// Names that are none of the package's, but that other packages give to a phase.
struct OtherName {
    std::string_view name;
    std::string_view phase;
};
constexpr std::array otherNames{OtherName{"gas", "vapor"}, OtherName{"g", "vapor"},
                                OtherName{"gaseous", "vapor"}, OtherName{"vapour", "vapor"}};

/// The package's phase that a name probably means; empty if it means none.
std::string meantPhase(const std::string& name, std::span<const std::string> phases) {
    const std::size_t begin = std::min(name.find_first_not_of(" \t"), name.size());
    const std::string word = lower(name.substr(begin, name.find_last_not_of(" \t") + 1 - begin));
    // Packages with several liquids number them.
    if (word.empty() || std::isdigit(static_cast<unsigned char>(word.back())))
        return {};
    const auto other = std::ranges::find(otherNames, word, &OtherName::name);
    for (const std::string& phase : phases)
        if (lower(phase).starts_with(word) || (other != otherNames.end() && lower(phase) == other->phase))
            return phase;
    return closestName(phases, word);
}

/// The texts that one comparison tries.
struct Comparison {
    std::vector<const QuotedText*> names{};
    bool ignoresCase = false;
};

/// What a file says of phases.
class PhaseComparisons {
public:
    explicit PhaseComparisons(const ScriptFile& file);
    const std::vector<Comparison>& comparisons() const { return comparisons_; }

private:
    void noteAssignment(const ScriptStatement& statement);
    bool hasList(const std::string& code) const;
    void addCalls(const ScriptStatement& statement);
    void addOperators(const ScriptStatement& statement);
    void addCase(const ScriptStatement& statement);
    void addTexts(const ScriptStatement& statement, std::size_t from, std::size_t to,
                  Comparison& comparison) const;

    std::set<std::string> lists_{"phaseNames", "phases"};           ///< variables with phases
    std::map<std::string, std::vector<const QuotedText*>> texts_{}; ///< variables with texts
    std::vector<Comparison> comparisons_{};
    std::optional<std::size_t> switch_{}; ///< the comparison to which a case belongs
};

/// Each name in the code.
std::vector<std::string> namesIn(const std::string& code) {
    static const std::regex name(R"([A-Za-z]\w*)");
    std::vector<std::string> names;
    for (std::sregex_iterator match(code.begin(), code.end(), name), none; match != none; ++match)
        names.push_back(match->str());
    return names;
}

bool changesCase(const std::string& code) {
    return std::ranges::any_of(namesIn(code), [](const std::string& name) {
        return name == "lower" || name == "upper" || name == "tolower" || name == "toupper";
    });
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

PhaseComparisons::PhaseComparisons(const ScriptFile& file) {
    for (const ScriptStatement& statement : file.statements)
        noteAssignment(statement);
    for (const ScriptStatement& statement : file.statements) {
        addCalls(statement);
        addOperators(statement);
        addCase(statement);
    }
}

void PhaseComparisons::noteAssignment(const ScriptStatement& statement) {
    // "[phases, parts] = flash(...)", "for phase = phases", "first = phases{1};", "wanted = {'Vapor'};"
    static const std::regex equilibrium(
        R"(^\s*(?:\[\s*)?(\w+)[^=]*=\s*(?:getFeedEquilibrium|flashEquilibrium)\s*\()");
    static const std::regex copy(
        R"(^\s*(?:for\s+)?(\w+)\s*=\s*(\w+)\s*(?:\{[^}]*\}|\([^)]*\))?\s*[;,]?\s*$)");
    static const std::regex texts(R"(^\s*(\w+)\s*=\s*(?:\{[^}]*\}|'\s*'|"\s*")\s*;?\s*$)");
    std::smatch match;
    if (std::regex_search(statement.code, match, equilibrium) ||
        (std::regex_search(statement.code, match, copy) && lists_.contains(match[2])))
        lists_.insert(match[1]);
    else if (!statement.texts.empty() && std::regex_search(statement.code, match, texts)) {
        lists_.erase(match[1]); // the script's own names
        for (const QuotedText& text : statement.texts)
            texts_[match[1]].push_back(&text);
    }
}

bool PhaseComparisons::hasList(const std::string& code) const {
    return std::ranges::any_of(namesIn(code), [&](const std::string& name) { return lists_.contains(name); });
}

void PhaseComparisons::addTexts(const ScriptStatement& statement, std::size_t from, std::size_t to,
                                Comparison& comparison) const {
    for (const QuotedText& text : statement.texts)
        if (text.at >= from && text.end <= to)
            comparison.names.push_back(&text);
    for (const std::string& name : namesIn(statement.code.substr(from, to - from)))
        if (const auto texts = texts_.find(name); texts != texts_.end())
            comparison.names.insert(comparison.names.end(), texts->second.begin(), texts->second.end());
}

/// The calls in one statement may try several names for one phase.
void PhaseComparisons::addCalls(const ScriptStatement& statement) {
    static const std::regex call(R"(\b(strcmpi?|ismember|isequal)\s*\()");
    const std::string& code = statement.code;
    Comparison comparison;
    for (std::sregex_iterator match(code.begin(), code.end(), call), none; match != none; ++match) {
        const auto open = static_cast<std::size_t>(match->position() + match->length()) - 1;
        const std::size_t close = closeOf(code, open);
        const std::string arguments = code.substr(open, close - open);
        if (!hasList(arguments))
            continue;
        addTexts(statement, open, close, comparison);
        comparison.ignoresCase |= (*match)[1] == "strcmpi" || changesCase(arguments);
    }
    comparisons_.push_back(std::move(comparison));
}

void PhaseComparisons::addOperators(const ScriptStatement& statement) {
    // An index in parentheses gives a part of a name.
    static const std::regex before(
        R"((\w+\s*(?:\{[^}]*\})?|(?:lower|upper|char|strtrim)\s*\([^)]*\))\s*[=~!]=\s*$)");
    static const std::regex after(R"(^\s*[=~!]=\s*(\w+))");
    Comparison comparison{{}, changesCase(statement.code)};
    for (const QuotedText& text : statement.texts) {
        const std::string left = statement.code.substr(0, text.at);
        const std::string right = statement.code.substr(text.end);
        std::smatch match;
        if ((std::regex_search(left, match, before) || std::regex_search(right, match, after)) &&
            hasList(match[0]))
            comparison.names.push_back(&text);
    }
    comparisons_.push_back(std::move(comparison));
}

/// A switch is one comparison, to its end or the next switch.
void PhaseComparisons::addCase(const ScriptStatement& statement) {
    static const std::regex begin(R"(^\s*switch\b(.*))");
    static const std::regex one(R"(^\s*case\b)");
    std::smatch match;
    if (std::regex_search(statement.code, match, begin)) {
        switch_.reset();
        if (hasList(match[1])) {
            switch_ = comparisons_.size();
            comparisons_.push_back({{}, changesCase(match[1])});
        }
    } else if (switch_ && std::regex_search(statement.code, one))
        addTexts(statement, 0, statement.code.size(), comparisons_[*switch_]);
}

bool areSame(const std::string& name, const std::string& phase, bool ignoresCase) {
    return ignoresCase ? lower(name) == lower(phase) : name == phase;
}

/// "'Vapor' and 'Liquid'"
std::string listed(std::span<const std::string> phases) {
    std::string text;
    for (std::size_t i = 0; i < phases.size(); ++i)
        text += (i == 0 ? "'" : i + 1 < phases.size() ? ", '" : " and '") + phases[i] + "'";
    return text;
}

} // namespace

std::vector<CheckFinding> wrongPhaseNames(const UnitModel& model, std::span<const std::string> phases) {
    std::vector<CheckFinding> findings;
    for (const ScriptFile& file : scriptFilesOf(model)) {
        const PhaseComparisons read(file);
        for (const Comparison& comparison : read.comparisons()) {
            const auto tries = [&](const std::string& phase) {
                return std::ranges::any_of(comparison.names, [&](const QuotedText* name) {
                    return areSame(name->text, phase, comparison.ignoresCase);
                });
            };
            for (const QuotedText* name : comparison.names) {
                const std::string meant = meantPhase(name->text, phases);
                if (meant.empty() || tries(meant))
                    continue;
                CheckFinding finding{placeOf(file, *name) + ": '" + name->text +
                                         "' is not the name of a phase",
                                     "write '" + meant + "': the phases are " + listed(phases) +
                                         ", and only strcmpi ignores capital letters"};
                if (std::ranges::find(findings, finding.text, &CheckFinding::text) == findings.end())
                    findings.push_back(std::move(finding));
            }
        }
    }
    return findings;
}

} // namespace solvane::host
