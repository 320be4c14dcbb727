#include "Adjustment.h"

#include "cases/NumberText.h"
#include "cases/ParameterRules.h"
#include "cases/Quantity.h"
#include "convergence/RootSearch.h"
#include "results/ResultsJson.h"

#include <nlohmann/json.hpp>

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <iterator>
#include <limits>

namespace solvane::host {

namespace {

/// The part of the bracket that counts as a point: no model is this exact.
constexpr double resolution = 1e-10;

bool fail(const std::string& text, std::string& error) {
    error = text;
    return false;
}

/// The unit of tables; a difference is shown in SI units, since its unit may have a zero of its own.
std::string shownUnit(const std::string& unit, const std::vector<double>& dimensionality) {
    return isDifference(dimensionality) ? unitText(dimensionality) : unit;
}

bool readVariable(const std::vector<Variable>& variables, const std::string& text, Adjustment& adjustment,
                  std::string& error) {
    const std::size_t equals = text.find('=');
    if (equals == text.npos)
        return fail("\"" + text + "\" is not of the form VARIABLE=FIRST:LAST", error);
    Axis& axis = adjustment.axis;
    Levels levels;
    if (!findVariable(variables, text.substr(0, equals), axis.variable, error))
        return false;
    if (axis.variable.values.kind != ParameterKind::real)
        return fail(axis.variable.name + ": only a real number can be adjusted", error);
    if (!readLevels(std::string_view(text).substr(equals + 1), axis, levels, error))
        return false;
    if (!levels.range || levels.range->count != 0 || levels.range->isLogarithmic)
        return fail(axis.variable.name + ": expected a bracket FIRST:LAST, such as \"2 bar:20 bar\"", error);
    adjustment.bracket = *levels.range;
    adjustment.plan.variable = axis.variable.name;
    adjustment.plan.variableUnit = shownUnit(axis.unit, axis.variable.values.dimensionality);
    return true;
}

/// A number in SI units, or one with its unit.
bool readTargetValue(const std::string& text, const StudyColumn& output, AdjustmentResult& plan,
                     std::string& error) {
    const char* const end = text.data() + text.size();
    std::string unit = unitText(output.dimensionality);
    if (const auto [stop, code] = std::from_chars(text.data(), end, plan.target);
        code != std::errc() || stop != end) {
        Quantity quantity;
        if (!parseQuantity(text, output.dimensionality, quantity, error))
            return false;
        plan.target = quantity.value;
        unit = quantity.unit;
    }
    plan.outputUnit = shownUnit(unit, output.dimensionality);
    return std::isfinite(plan.target) || fail("\"" + text + "\" is not a number", error);
}

bool readTarget(const std::vector<StudyColumn>& results, const std::string& text, Adjustment& adjustment,
                std::string& error) {
    const std::size_t equals = text.find('=');
    if (equals == text.npos)
        return fail("\"" + text + "\" is not of the form OUTPUT=VALUE", error);
    const std::string name = text.substr(0, equals);
    const auto found =
        std::ranges::find_if(results, [&](const StudyColumn& one) { return isSameName(one.name, name); });
    if (found == results.end()) {
        std::vector<std::string> known;
        std::ranges::transform(results, std::back_inserter(known), &StudyColumn::name);
        return fail(unknownName("output", name, known), error);
    }
    adjustment.output = *found;
    adjustment.plan.output = found->name;
    if (found->kind == ParameterKind::text || found->kind == ParameterKind::boolean)
        return fail(found->name + ": only a number can have a target", error);
    return readTargetValue(text.substr(equals + 1), *found, adjustment.plan, error);
}

std::string shown(double value, const std::string& unit) {
    return shortNumber(value, 8) + (unit.empty() ? "" : " " + unit);
}

/// Not a number if the output has no value.
double outputOf(const StudyColumn& column, const RunResults& results) {
    const auto json = nlohmann::ordered_json::parse(resultsJson(results, -1));
    const auto* value = findValue(column, json);
    return value && value->is_number() ? value->get<double>() : std::numeric_limits<double>::quiet_NaN();
}

/// Runs the case at one value of the variable after the other.
class Trials {
public:
    Trials(const Case& flowsheet, const Adjustment& adjustment, const Calculation& calculate,
           const TrialSink& onTrial, RunResults& results)
        : case_(flowsheet),
          adjustment_(adjustment),
          calculate_(calculate),
          onTrial_(onTrial),
          results_(results),
          progress_(adjustment.plan),
          scale_(std::abs(progress_.target)) {}

    /// Sets the point's y to the output's deviation.
    bool calculate(RootPoint& point, std::string& error) {
        const std::string text = exactNumber(point.x);
        Variation variation;
        ParameterValue value;
        if (!vary(case_, {adjustment_.axis}, {text}, variation, error) ||
            !readValue(adjustment_.axis, text, value, error))
            return false;
        TrialResult& trial = progress_.trials.emplace_back(TrialResult{.value = std::get<double>(value)});
        const bool isCalculated = calculate_(variation, results_, error);
        if (isCalculated)
            trial.output = outputOf(adjustment_.output, results_);
        point.y = trial.output - progress_.target;
        progress_.reached = std::abs(point.y) <= progress_.tolerance * scale_;
        results_.adjustment = progress_;
        onTrial_(progress_);
        if (!std::isnan(trial.output))
            return true;
        error = "At " + place(point) + ": " +
                (isCalculated ? "the output \"" + progress_.output + "\" has no value" : error);
        return false;
    }

    bool isReached() const { return progress_.reached; }
    bool isLast() const { return std::ssize(progress_.trials) >= progress_.limit; }
    std::string count() const { return std::to_string(progress_.trials.size()); }
    void setScale(double scale) { scale_ = scale_ > 0 ? scale_ : scale; }

    std::string target() const { return progress_.output + " = " + shownOutput(0); }
    std::string output(const RootPoint& point) const { return shownOutput(point.y); }
    std::string place(const RootPoint& point) const {
        return progress_.variable + " = " + shown(point.x, adjustment_.axis.unit);
    }

private:
    std::string shownOutput(double deviation) const {
        return shown(inUnit(progress_.target + deviation, progress_.outputUnit), progress_.outputUnit);
    }

    const Case& case_;
    const Adjustment& adjustment_;
    const Calculation& calculate_;
    const TrialSink& onTrial_;
    RunResults& results_;
    AdjustmentResult progress_;
    double scale_; ///< what the tolerance is a part of; 0 if it is not yet known
};

bool search(Trials& trials, const Range& bracket, std::string& error) {
    RootPoint first{.x = bracket.first}, last{.x = bracket.last};
    if (!trials.calculate(first, error))
        return false;
    if (trials.isReached())
        return true;
    if (!trials.calculate(last, error))
        return false;
    trials.setScale(std::max(std::abs(first.y), std::abs(last.y)));
    if (trials.isReached())
        return true;
    if ((first.y > 0) == (last.y > 0))
        return fail("The target, " + trials.target() +
                        ", does not lie between the outputs at the ends of "
                        "the bracket: " +
                        trials.output(first) + " at " + trials.place(first) + ", " + trials.output(last) +
                        " at " + trials.place(last) + ". Choose another bracket",
                    error);
    RootSearch search(first, last, resolution * std::abs(last.x - first.x));
    while (!trials.isLast()) {
        RootPoint point{.x = search.next()};
        if (!trials.calculate(point, error))
            return false;
        if (trials.isReached())
            return true;
        search.put(point.y);
        if (search.isNarrow())
            return fail("The output jumps over the target, " + trials.target() + ": at " +
                            trials.place(search.best()) + " from " + trials.output(search.best()) + " to " +
                            trials.output(search.opposite()) +
                            ". If the model has no jump there, tighten the tolerances of its script and of "
                            "recycles, or raise --target-tolerance",
                        error);
    }
    return fail("The target, " + trials.target() + ", is not reached within " + trials.count() +
                    " trials: the closest output is " + trials.output(search.best()) + " at " +
                    trials.place(search.best()) + ". Raise --trials or --target-tolerance",
                error);
}

} // namespace

bool readAdjustment(const Case& flowsheet, const UnitParameters& parameters, const AdjustmentRequest& request,
                    Adjustment& adjustment, std::string& error) {
    adjustment.plan.tolerance = request.tolerance;
    adjustment.plan.limit = request.limit;
    if (!readVariable(variablesOf(flowsheet, parameters), request.variable, adjustment, error)) {
        error.insert(0, "--adjust: ");
        return false;
    }
    if (!readTarget(resultColumns(flowsheet, parameters, {}), request.target, adjustment, error)) {
        error.insert(0, "--target: ");
        return false;
    }
    Variation ignored;
    return std::ranges::all_of(
        std::array{adjustment.bracket.first, adjustment.bracket.last},
        [&](double end) { return vary(flowsheet, {adjustment.axis}, {exactNumber(end)}, ignored, error); });
}

bool reachTarget(const Case& flowsheet, const Adjustment& adjustment, const Calculation& calculate,
                 const TrialSink& onTrial, RunResults& results, std::string& error) {
    Trials trials(flowsheet, adjustment, calculate, onTrial, results);
    const bool isReached = search(trials, adjustment.bracket, error);
    if (!isReached && !results.failure)
        results.failure.emplace().message = error;
    return isReached;
}

} // namespace solvane::host
