#include "WrongNames.h"

#include "NameComparisons.h"
#include "channel/Hints.h"
#include "com/Text.h"
#include "materials/StreamState.h"
#include "thermo/Compound.h"

#include <algorithm>
#include <array>
#include <cctype>
#include <functional>
#include <string_view>

namespace solvane::host {

namespace {

using Names = std::vector<std::string>;

/// A name, and what it means.
struct OtherName {
    std::string_view name;
    std::string_view meant;
};

/// Names that are none of the package's, but that other packages give to a phase.
constexpr std::array otherPhaseNames{OtherName{"gas", "vapor"}, OtherName{"g", "vapor"},
                                     OtherName{"gaseous", "vapor"}, OtherName{"vapour", "vapor"}};

/// The same for compounds, as `spelled` writes them, beside formulas, CAS numbers and IUPAC names.
constexpr std::array otherCompoundNames{OtherName{"c1", "methane"},     OtherName{"c2", "ethane"},
                                        OtherName{"c3", "propane"},     OtherName{"c4", "n-butane"},
                                        OtherName{"nc4", "n-butane"},   OtherName{"c5", "n-pentane"},
                                        OtherName{"nc5", "n-pentane"},  OtherName{"steam", "water"},
                                        OtherName{"benzol", "benzene"}, OtherName{"methylbenzene", "toluene"},
                                        OtherName{"toluol", "toluene"}};

/// Compounds that the package lacks, with names one letter from its own.
constexpr std::array<std::string_view, 13> otherCompounds{
    "ethene", "ethyne",   "propene", "propyne",  "ibutane", "butene", "nbutene",
    "butyne", "ipentane", "pentene", "npentene", "pentyne", "benzyne"};

std::string lower(std::string text) {
    std::ranges::transform(text, text.begin(),
                           [](unsigned char c) { return static_cast<char>(std::tolower(c)); });
    return text;
}

/// Without what names are written with or without.
std::string spelled(std::string_view name) {
    std::string text = lower(std::string(name));
    std::erase_if(text, [](char c) { return c == ' ' || c == '-' || c == '_'; });
    return text;
}

/// The package's phase that a name probably means; empty if it means none.
std::string meantPhase(const std::string& name, const Names& phases) {
    const std::size_t begin = std::min(name.find_first_not_of(" \t"), name.size());
    const std::string word = lower(name.substr(begin, name.find_last_not_of(" \t") + 1 - begin));
    // Packages with several liquids number them.
    if (word.empty() || std::isdigit(static_cast<unsigned char>(word.back())))
        return {};
    const auto* const other = std::ranges::find(otherPhaseNames, word, &OtherName::name);
    for (const std::string& phase : phases)
        if (lower(phase).starts_with(word) ||
            (other != otherPhaseNames.end() && lower(phase) == other->meant))
            return phase;
    return closestName(phases, word);
}

/// The one of these compounds that a name probably means; empty if it means none, or another one.
std::string meantCompound(std::string_view name, std::span<const Compound* const> compounds) {
    const std::string word = spelled(name);
    Names names, spellings;
    for (const Compound* one : compounds) {
        const auto isMeant = [&](const OtherName& other) {
            return other.name == word && other.meant == one->name;
        };
        if (word == spelled(one->formula) || name == one->casNumber ||
            std::ranges::any_of(otherCompoundNames, isMeant))
            return std::string(one->name);
        for (const std::string_view known : {one->name, one->iupacName}) {
            names.emplace_back(one->name);
            spellings.push_back(spelled(known));
        }
    }
    if (const auto same = std::ranges::find(spellings, word); same != spellings.end())
        return names[static_cast<std::size_t>(same - spellings.begin())];
    const auto hasName = [&](const Compound& one) { return spelled(one.name) == word; };
    if (std::ranges::any_of(allCompounds(), hasName) ||
        std::ranges::find(otherCompounds, word) != otherCompounds.end())
        return {};
    // With two other letters, methane is methanol.
    const auto closest = std::ranges::find(spellings, closestName(spellings, word, 1));
    return closest == spellings.end() ? std::string()
                                      : names[static_cast<std::size_t>(closest - spellings.begin())];
}

bool tries(const NameComparison& comparison, const std::string& name) {
    return std::ranges::any_of(comparison.texts, [&](const QuotedText* text) {
        return comparison.ignoresCase ? lower(text->text) == lower(name) : text->text == name;
    });
}

/// "'Vapor' and 'Liquid'"
std::string listed(const Names& names) {
    std::string text;
    for (std::size_t i = 0; i < names.size(); ++i)
        text += (i == 0 ? "'" : i + 1 < names.size() ? ", '" : " and '") + names[i] + "'";
    return text;
}

/// Calls `visit` with the file and each comparison in it.
template <class Visit>
void forEachComparison(const UnitModel& model, const NameSource& source, Visit visit) {
    for (const ScriptFile& file : scriptFilesOf(model))
        for (const NameComparison& comparison : nameComparisons(file, source))
            visit(file, comparison);
}

/// Two comparisons may use one text.
void addOnce(std::vector<ScriptFinding>& findings, ScriptFinding finding) {
    if (std::ranges::find(findings, finding.text, &ScriptFinding::text) == findings.end())
        findings.push_back(std::move(finding));
}

/// What is compared with the names of the kind, "phase" or "compound", and means one that the comparison does
/// not try.
std::vector<ScriptFinding> wrongNames(const UnitModel& model, const NameSource& source,
                                      const std::string& kind, const Names& known,
                                      const std::function<std::string(const std::string&)>& meantBy) {
    std::vector<ScriptFinding> findings;
    forEachComparison(model, source, [&](const ScriptFile& file, const NameComparison& comparison) {
        for (const QuotedText* name : comparison.texts)
            if (const std::string meant = meantBy(name->text); !meant.empty() && !tries(comparison, meant))
                addOnce(findings,
                        {placeOf(file, *name) + ": '" + name->text + "' is not the name of a " + kind,
                         "write '" + meant + "': the " + kind + "s are " + listed(known) +
                             (lower(name->text) == lower(meant) ? ", and only strcmpi ignores capital letters"
                                                                : "")});
    });
    return findings;
}

NameSource compoundSource() {
    return {{"compNames", "compoundNames", "compounds", "components"}, {}};
}

Names namesOf(std::span<const Compound* const> compounds) {
    Names names;
    for (const Compound* compound : compounds)
        names.emplace_back(compound->name);
    return names;
}

} // namespace

std::vector<ScriptFinding> wrongPhaseNames(const UnitModel& model) {
    Names phases;
    for (const Place place : phasePlaces)
        phases.push_back(narrow(placeLabel(place), CP_UTF8));
    const NameSource source{{"phaseNames", "phases"}, {"getFeedEquilibrium", "flashEquilibrium"}};
    return wrongNames(model, source, "phase", phases,
                      [&](const std::string& name) { return meantPhase(name, phases); });
}

std::vector<ScriptFinding> wrongCompoundNames(const UnitModel& model,
                                              std::span<const Compound* const> compounds) {
    return wrongNames(model, compoundSource(), "compound", namesOf(compounds),
                      [&](const std::string& name) { return meantCompound(name, compounds); });
}

std::vector<ScriptFinding> absentCompoundNames(const UnitModel& model,
                                               std::span<const Compound* const> compounds) {
    std::vector<ScriptFinding> findings;
    const Names known = namesOf(compounds);
    forEachComparison(model, compoundSource(), [&](const ScriptFile& file, const NameComparison& comparison) {
        if (comparison.isTested ||
            std::ranges::any_of(known, [&](const std::string& name) { return tries(comparison, name); }))
            return;
        for (const QuotedText* name : comparison.texts)
            if (meantCompound(name->text, compounds).empty())
                addOnce(findings, {placeOf(file, *name) + ": no compound is named '" + name->text + "'",
                                   "the compounds are " + listed(known) +
                                       "; if it may be missing, look for it with any(strcmp(compNames, '" +
                                       name->text + "')) first"});
    });
    return findings;
}

} // namespace solvane::host
