#include "CaseCheck.h"

#include "IdleParameter.h"
#include "Jumps.h"
#include "Leftovers.h"
#include "Noise.h"
#include "ParameterChanges.h"
#include "Tolerances.h"
#include "Variations.h"
#include "cases/NumberText.h"
#include "com/Text.h"
#include "flowsheet/ModelDescription.h"
#include "flowsheet/UnitSession.h"
#include "script/ScriptNotes.h"
#include "script/UnreadVariables.h"
#include "script/WrongNames.h"
#include "thermo/IdealGas.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <numeric>
#include <span>
#include <utility>

namespace solvane::host {

namespace {

struct CaseCheck {
    const char* name;
    CheckOutcome (*look)(CheckedCase& checked);
    bool compares = false; ///< outputs with those of the unchanged case, which must repeat for that
};

/// What the order of sums changes, with some room for solvers in the script.
constexpr double tolerance = 1e-7;

bool isOutsideData(const StreamResult& stream) {
    return stream.temperature < lowestFitted || stream.temperature > highestFitted;
}

/// Whether the warning is of such a stream.
bool isOutsideData(const Warning& warning, const RunResults& results) {
    return std::ranges::any_of(results.streams, [&](const StreamResult& stream) {
        return warning.subject == "stream " + stream.name && isOutsideData(stream);
    });
}

/// The first fault of a run that succeeded: an unsound output, or a warning that the unchanged case lacks. A
/// variation may lead out of the package's data, or to where simplifications of the script count more.
std::optional<CheckFinding> faultOf(const Trial& trial, const Trial& base, const char* remedy) {
    if (std::string unsound = unsoundOutput(trial.outputs); !unsound.empty())
        return CheckFinding{std::move(unsound), remedy};
    for (const Warning& warning : trial.results.warnings)
        if (std::ranges::find(base.results.warnings, warning.subject, &Warning::subject) ==
                base.results.warnings.end() &&
            !warning.isSlight && warning.text != nothingReacts && !isOutsideData(warning, trial.results))
            return CheckFinding{warning.subject + ": " + warning.text, warning.remedy};
    return std::nullopt;
}

/// Of a run that failed. The remedy is for failures that do not show their own.
CheckFinding failureOf(const std::string& what, const Trial& trial, const char* remedy) {
    if (trial.reachedLimit)
        remedy = "look at the loop there: let it end with an error after a number of passes, or give the run "
                 "more time by --limit";
    return {what + trial.message, trial.remedy.empty() ? remedy : trial.remedy};
}

/// Runs variations, each of which must succeed with sound outputs. A script may refuse them if `mayRefuse`.
/// `whyNone` says why there are none.
CheckOutcome survive(CheckedCase& checked, const std::vector<CaseVariation>& variations, bool mayRefuse,
                     const std::string& whyNone, const char* remedy) {
    CheckOutcome outcome;
    std::size_t refused = 0;
    for (const CaseVariation& variation : variations) {
        const Trial trial = checked.trials.run(variation.flowsheet, variation.name);
        if (!trial.succeeded && trial.isRefused && mayRefuse) {
            ++refused;
            outcome.summary = "; the script refuses " + variation.name + ": " + trial.message;
        } else if (!trial.succeeded)
            outcome.findings.push_back(failureOf(variation.name + ": ", trial, remedy));
        else if (const auto fault = faultOf(trial, checked.base, remedy))
            outcome.findings.push_back({variation.name + ": " + fault->text, fault->remedy});
    }
    const std::size_t calculated = variations.size() - refused - outcome.findings.size();
    outcome.summary = variations.empty()
                          ? "nothing to vary: " + whyNone
                          : std::to_string(calculated) + " of " + counted(variations.size(), "variation") +
                                " calculated" + outcome.summary;
    return outcome;
}

Trial runAnew(const CheckedCase& checked, const CaseVariation& variation) {
    return checked.trials.runAnew(variation.flowsheet, variation.name);
}

/// Adds a finding unless the run gives the outputs of the unchanged case.
void compare(const CheckedCase& checked, const std::string& name, const Trial& trial, double limit,
             const char* remedy, CheckOutcome& outcome) {
    if (!trial.succeeded)
        outcome.findings.push_back(failureOf(name + ": ", trial, remedy));
    else if (const auto deviation = largestDeviation(checked.base.outputs, trial.outputs, limit))
        outcome.findings.push_back({name + ": " + deviation->output + " is " + deviation->text, remedy});
}

/// Runs variations that must not change the outputs.
CheckOutcome agree(const CheckedCase& checked, const std::vector<CaseVariation>& variations,
                   const char* remedy) {
    CheckOutcome outcome{counted(variations.size(), "variation") + " compared", {}};
    for (const CaseVariation& variation : variations)
        compare(checked, variation.name, runAnew(checked, variation), tolerance, remedy, outcome);
    return outcome;
}

/// Simulators refuse such products in ways of their own, which say nothing about the model.
bool hasWrongFractions(const Trial& trial) {
    return std::ranges::any_of(trial.results.streams, [](const StreamResult& stream) {
        return std::abs(std::reduce(stream.fraction.begin(), stream.fraction.end()) - 1) >
               compositionTolerance;
    });
}

/// What several streams of a unit have in common is one finding. Products outside of the package's data are
/// none where the case's feeds are there, too.
CheckOutcome lookAtWarnings(CheckedCase& checked) {
    CheckOutcome outcome{"balances and results are plausible", {}};
    const std::vector<StreamResult>& streams = checked.base.results.streams;
    const bool startsOutsideData = std::ranges::any_of(
        std::span(streams).first(std::min(checked.flowsheet.feeds.size(), streams.size())),
        [](const StreamResult& stream) { return isOutsideData(stream); });
    std::vector<Warning> causes;
    for (const Warning& warning : checked.base.results.warnings) {
        if (warning.subject == namesInScript || // a check of its own
            (startsOutsideData && isOutsideData(warning, checked.base.results)))
            continue;
        const auto same = std::ranges::find_if(causes, [&](const Warning& cause) {
            return cause.unit == warning.unit && cause.text == warning.text;
        });
        if (same == causes.end())
            causes.push_back(warning);
        else
            same->subject += ", " + warning.subject;
    }
    for (const Warning& cause : causes)
        outcome.findings.push_back(
            {(cause.unit.empty() ? "" : cause.unit + ": ") + cause.subject + ": " + cause.text,
             cause.remedy});
    return outcome;
}

/// What `look` finds in the models' scripts.
CheckOutcome lookAtScripts(const CheckedCase& checked, std::string summary, auto look) {
    CheckOutcome outcome{std::move(summary), {}};
    for (const UnitCase& unit : checked.conditions.sources.units)
        if (const auto* model = std::get_if<UnitModel>(&unit.model))
            for (ScriptFinding& finding : look(*model))
                outcome.findings.push_back({std::move(finding.text), std::move(finding.remedy)});
    return outcome;
}

CheckOutcome lookAtPhaseNames(CheckedCase& checked) {
    return lookAtScripts(checked, "all names that are compared with phases are right", wrongPhaseNames);
}

CheckOutcome lookAtCompoundNames(CheckedCase& checked) {
    return lookAtScripts(checked, "no name that is compared with compounds is nearly right",
                         [&](const UnitModel& model) {
                             return wrongCompoundNames(model, checked.conditions.sources.compounds);
                         });
}

CheckOutcome lookAtAbsentNames(CheckedCase& checked) {
    return lookAtScripts(checked, "", [&](const UnitModel& model) {
        return absentCompoundNames(model, checked.conditions.sources.compounds);
    });
}

/// What makes the model no less fit.
CheckOutcome asNotes(CheckOutcome outcome, const char* summary) {
    if (!outcome.findings.empty())
        outcome.summary = summary;
    outcome.notes = std::exchange(outcome.findings, {});
    return outcome;
}

CheckOutcome lookAtLanguage(CheckedCase& checked) {
    return asNotes(lookAtScripts(checked, "nothing that only Octave understands", octaveOnly),
                   "the model needs Octave");
}

CheckOutcome lookAtKeptVariables(CheckedCase& checked) {
    return asNotes(lookAtScripts(checked, "no variable keeps what a result may depend on", keptVariables),
                   "variables keep what a result may depend on");
}

CheckOutcome lookAtUnreadVariables(CheckedCase& checked) {
    return asNotes(lookAtScripts(checked, "every variable that is set is read", unreadVariables),
                   "variables are set and never read");
}

CheckOutcome lookAtRun(CheckedCase& checked) {
    checked.base = checked.trials.run(checked.flowsheet, "the case");
    CheckOutcome outcome{"the case runs", {}};
    if (!checked.base.succeeded) {
        outcome = lookAtWarnings(checked); // they may be the cause
        for (const auto look : {lookAtPhaseNames, lookAtCompoundNames, lookAtAbsentNames})
            std::ranges::move(look(checked).findings, std::back_inserter(outcome.findings));
        outcome.findings.push_back(failureOf("", checked.base, "mend the case first: SolvaneHost run"));
    } else if (const std::string unsound = unsoundOutput(checked.base.outputs); !unsound.empty())
        outcome.findings.push_back({unsound, "find the division by 0, or the value that was never set"});
    return outcome;
}

CheckOutcome lookAtRepetition(CheckedCase& checked) {
    constexpr char remedy[] =
        "look for random numbers, the time, and what the script keeps in Matlab or in files";
    CheckOutcome outcome{"a second run and a new unit give the same digits", {}};
    const CaseVariation again{"a second run", checked.flowsheet}, anew{"a new unit", checked.flowsheet};
    compare(checked, again.name, checked.trials.run(again.flowsheet, again.name), 0, remedy, outcome);
    compare(checked, anew.name, runAnew(checked, anew), 0, remedy, outcome);
    return outcome;
}

CheckOutcome lookAtGenerations(CheckedCase& checked) {
    CaseVariation other{"thermodynamics ", checked.flowsheet};
    Generation& generation = other.flowsheet.generation;
    generation = generation == Generation::v10 ? Generation::v11 : Generation::v10;
    other.name += generationName(generation);
    return agree(checked, {other},
                 "ask only for properties that both generations know, and for no phase by its number");
}

/// A profile that ends the calculation of every unit proves nothing of this one.
bool letsRunEnd(const Profile& profile) {
    return std::ranges::none_of(profile.reentrantCalls, [](ReentrantCall call) {
        return call == ReentrantCall::terminate || call == ReentrantCall::release;
    });
}

CheckOutcome lookAtProfiles(CheckedCase& checked) {
    std::vector<CaseVariation> variations;
    for (const Profile& profile : profiles)
        if (profile.name != checked.flowsheet.profile.name && letsRunEnd(profile)) {
            variations.push_back({"profile " + std::string(profile.name), checked.flowsheet});
            variations.back().flowsheet.profile = profile;
        }
    return agree(
        checked, variations,
        "find a phase by its name or state of aggregation, and ask for phases that are present only");
}

CheckOutcome lookAtOrder(CheckedCase& checked) {
    if (checked.flowsheet.compounds.size() < 2)
        return {"nothing to reverse: the case has one compound", {}};
    return agree(checked, {{"compounds in the reversed order", withReversedCompounds(checked.flowsheet)}},
                 "find each compound by its name: strcmp(compNames, 'water')");
}

CheckOutcome lookAtAbsence(CheckedCase& checked) {
    return survive(checked, withoutCompound(checked.flowsheet), true,
                   "without any of the compounds a feed would be empty",
                   "allow mole fractions of 0, which make quotients and logarithms infinite, and for phases "
                   "that do not form");
}

CheckOutcome lookAtNoFlow(CheckedCase& checked) {
    return survive(
        checked, withoutFlow(checked.flowsheet), false, "the case has no feed",
        "give the products no flow and a composition, and divide by no flow; a flowsheet starts so");
}

CheckOutcome lookAtPhases(CheckedCase& checked) {
    return survive(checked, inOnePhase(checked.flowsheet), true, "no feed boils or condenses",
                   "look at which phases getFeedEquilibrium and flashEquilibrium return before using one");
}

/// What changes of one input show, if anything.
std::optional<CheckFinding> lookAtInput(CheckedCase& checked, const FeedInput& input) {
    const auto runAt = [&](double part) {
        return checked.trials.run(withChange(checked.flowsheet, input, part),
                                  input.name + " changed by " + shortNumber(part, 4));
    };
    std::array<Trial, noiseChanges.size()> changed;
    for (std::size_t i = 0; i < changed.size(); ++i) {
        changed[i] = runAt(noiseChanges[i]);
        if (changed[i].isRefused)
            return std::nullopt;
        if (!changed[i].succeeded)
            return failureOf(input.name + " changed by less than 0.02 %: ", changed[i],
                             "the model fails next to where it works");
    }
    if (const auto noise = findNoise(checked.base, changed))
        return CheckFinding{"small changes of the " + input.name + " make " + noise->output + " jump by " +
                                shortNumber(noise->size, 1) + " of its size",
                            "tighten the tolerances of fzero, fsolve and ode solvers; no random numbers: "
                            "recycles do not converge below this noise"};
    const auto& [nearUp, nearDown, farUp, farDown] = changed;
    if (const auto jump = findJump(checked.base, farUp, farDown, runAt))
        return CheckFinding{jump->output + " jumps by " + shortNumber(jump->size, 1) +
                                " of its size where the " + input.name + " is " +
                                shortNumber(valueOf(checked.flowsheet, input) * (1 + jump->at), 5) +
                                input.unit,
                            "do not round, interpolate in tables, and let one formula pass into the next: "
                            "derivatives are 0 beside a jump, and recycles may never converge at it"};
    return std::nullopt;
}

CheckOutcome lookAtNoise(CheckedCase& checked) {
    CheckOutcome outcome;
    const std::vector<FeedInput> inputs = feedInputs(checked.flowsheet);
    for (const FeedInput& input : inputs)
        if (auto finding = lookAtInput(checked, input))
            outcome.findings.push_back(std::move(*finding));
    outcome.summary = counted(inputs.size(), "input") + " changed by 1e-6, 1e-4 and 3e-2";
    return outcome;
}

bool hasSameReports(const RunResults& left, const RunResults& right) {
    return std::ranges::equal(left.units, right.units, [](const UnitResult& one, const UnitResult& other) {
        return std::ranges::equal(one.reports, other.reports,
                                  [](const ReportResult& report, const ReportResult& same) {
                                      return report.name == outputReport || report.text == same.text;
                                  });
    });
}

CheckOutcome lookAtParameters(CheckedCase& checked) {
    CheckOutcome outcome;
    const std::vector<ParameterChange> changes =
        parameterChanges(checked.flowsheet, checked.base.results.units);
    for (const ParameterChange& change : changes)
        if (std::ranges::all_of(change.variations, [&](const CaseVariation& variation) {
                const Trial trial = checked.trials.run(variation.flowsheet, variation.name);
                return trial.succeeded && hasSameReports(trial.results, checked.base.results) &&
                       !largestDeviation(checked.base.outputs, trial.outputs, tolerance);
            }))
            outcome.findings.push_back(
                {change.name + ": no result changes with it, by 1 % or by a factor of 2",
                 remedyOfIdleParameter(checked.conditions.sources.units[change.unit], change.parameter)});
    outcome.summary = changes.empty() ? "nothing to vary: no real input surely counts"
                                      : counted(changes.size(), "parameter") + " changed by 1 %";
    return outcome;
}

CheckOutcome lookAtTolerances(CheckedCase& checked) {
    CheckOutcome outcome{"no solver stops early", {}};
    for (const UnitCase& unit : checked.conditions.sources.units)
        if (const auto* model = std::get_if<UnitModel>(&unit.model))
            for (std::string& text : looseTolerances(*model))
                outcome.findings.push_back({std::move(text),
                                            "give 1e-8 of the unknown's size: the result errs by the "
                                            "tolerance, and recycles do not converge below it"});
    return outcome;
}

CheckOutcome lookAtLeftovers(CheckedCase& checked) {
    constexpr int repetitions = 8;
    Case probed = checked.conditions.sources;
    for (UnitCase& unit : probed.units)
        if (auto* model = std::get_if<UnitModel>(&unit.model))
            *model = withProbe(*model);
    // Its lines are not those of the script.
    TrialConditions conditions{checked.conditions.sources, checked.conditions.watch};
    Trials trials(probed, conditions);
    std::vector<std::vector<Leftovers>> left(probed.units.size()); // by unit and run
    for (int i = 0; i < repetitions; ++i) {
        const Trial trial =
            trials.run(probed, "run " + std::to_string(i + 1) + " of " + std::to_string(repetitions));
        for (std::size_t unit = 0; unit < trial.results.units.size(); ++unit)
            for (const ReportResult& report : trial.results.units[unit].reports)
                if (const auto one = readLeftovers(report.name == outputReport ? report.text : ""))
                    left[unit].push_back(*one);
    }
    CheckOutcome outcome{"no open files or windows, the same folder, no growing memory", {}};
    for (std::size_t unit = 0; unit < left.size(); ++unit)
        for (CheckFinding& finding : findLeftovers(left[unit])) {
            if (checked.flowsheet.isFlowsheet)
                finding.text.insert(0, probed.units[unit].name + ": ");
            outcome.findings.push_back(std::move(finding));
        }
    return outcome;
}

/// Of a run that does not start Matlab.
CheckOutcome lookAtCost(CheckedCase& checked) {
    const Trial trial = checked.trials.run(checked.flowsheet, "the case again");
    CheckOutcome outcome;
    for (const UnitResult& unit : trial.results.units)
        outcome.summary += (outcome.summary.empty() ? "" : "; ") +
                           (checked.flowsheet.isFlowsheet ? unit.name + ": " : "") +
                           shortNumber(1000 * unit.seconds, 3) + " ms and " + std::to_string(unit.flashes) +
                           (unit.flashes == 1 ? " flash" : " flashes") + " a run";
    return outcome;
}

/// In the order of their execution. The first runs the unchanged case; the others need its success.
constexpr std::array checks{
    CaseCheck{"run", lookAtRun},
    CaseCheck{"plausibility", lookAtWarnings},
    CaseCheck{"repetition", lookAtRepetition},
    CaseCheck{"generations", lookAtGenerations, true},
    CaseCheck{"profiles", lookAtProfiles, true},
    CaseCheck{"order of compounds", lookAtOrder, true},
    CaseCheck{"absent compounds", lookAtAbsence},
    CaseCheck{"no flow", lookAtNoFlow},
    CaseCheck{"single phases", lookAtPhases},
    CaseCheck{"noise", lookAtNoise, true},
    CaseCheck{"parameters", lookAtParameters, true},
    CaseCheck{"tolerances", lookAtTolerances},
    CaseCheck{"phase names", lookAtPhaseNames},
    CaseCheck{"compound names", lookAtCompoundNames},
    CaseCheck{"language", lookAtLanguage},
    CaseCheck{"kept variables", lookAtKeptVariables},
    CaseCheck{"unread variables", lookAtUnreadVariables},
    CaseCheck{"leftovers", lookAtLeftovers},
    CaseCheck{"cost", lookAtCost},
};

} // namespace

void checkCase(CheckedCase& checked, const std::function<void(const char*)>& begin,
               const std::function<void(const char*, const CheckOutcome&)>& end) {
    const char* whyLeftOut = nullptr;
    for (const CaseCheck& check : checks) {
        begin(check.name);
        const CheckOutcome outcome = check.compares && whyLeftOut
                                         ? CheckOutcome{std::string("left out, since ") + whyLeftOut, {}}
                                         : check.look(checked);
        if (checked.conditions.watch.isStopRequested())
            return;
        end(check.name, outcome);
        if (!checked.base.succeeded)
            return;
        if (check.look == lookAtWarnings && hasWrongFractions(checked.base))
            whyLeftOut = "the mole fractions of a product do not sum to 1";
        if (check.look == lookAtRepetition && !outcome.findings.empty())
            whyLeftOut = "the outputs do not repeat";
    }
}

bool openModels(Case& flowsheet, std::string& error) {
    for (UnitCase& unit : flowsheet.units) {
        if (!std::holds_alternative<ModelFile>(unit.model))
            continue;
        UnitSession session(unit, flowsheet.profile);
        ModelDescription description;
        if (!session.start([](std::string_view) {}, error) ||
            !describeModel(session.unit(), description, error))
            return false;
        unit.model = std::move(description.model);
    }
    return true;
}

} // namespace solvane::host
