#include "ResultTables.h"

#include "Balances.h"
#include "cases/NumberText.h"
#include "cases/ParameterRules.h"
#include "cases/UnitOfMeasure.h"

#include <algorithm>
#include <array>
#include <cmath>

namespace solvane::host {

namespace {

struct Row {
    const char* label;
    std::string TableUnits::* unit; ///< null for mol/mol
    double StreamResult::* value;
    int decimals; ///< in the usual unit
};

constexpr std::array rows{
    Row{"Temperature", &TableUnits::temperature, &StreamResult::temperature, 3},
    Row{"Pressure", &TableUnits::pressure, &StreamResult::pressure, 4},
    Row{"Flow", &TableUnits::flow, &StreamResult::totalFlow, 4},
    Row{"Mass flow", &TableUnits::massFlow, &StreamResult::massFlow, 4},
    Row{"Vapour fraction", nullptr, &StreamResult::vaporFraction, 5},
    Row{"Enthalpy", &TableUnits::enthalpy, &StreamResult::enthalpy, 2},
};

constexpr char fractionUnit[] = "mol/mol";
constexpr int fractionDecimals = 5;

struct BalanceRow {
    const char* label;
    std::string TableUnits::* unit;
    Flows Balance::* flows;
    bool ofReactors; ///< also if the unit reacts
};

constexpr std::array balanceRows{
    BalanceRow{"Mass", &TableUnits::massFlow, &Balance::mass, true},
    BalanceRow{"Moles", &TableUnits::flow, &Balance::moles, false},
    BalanceRow{"Enthalpy", &TableUnits::power, &Balance::enthalpy, true},
};
constexpr int balanceDecimals = 4;

/// An SI value in a unit, as precise as one in the usual unit with that many decimals; never "-0.0000".
std::string preciseNumber(double value, std::string TableUnits::* quantity, const TableUnits& units,
                          int decimals) {
    const UnitOfMeasure unit = *parseUnit(units.*quantity);
    const double usualFactor = parseUnit(TableUnits().*quantity)->factor;
    decimals = std::max(0, decimals + static_cast<int>(std::lround(std::log10(unit.factor / usualFactor))));
    const std::string text = fixedNumber(unit.fromSi(value), decimals);
    return text.find_first_of("123456789") == std::string::npos ? fixedNumber(0, decimals) : text;
}

Line balanceLine(const std::string& label, std::string TableUnits::* quantity, const TableUnits& units,
                 const Flows& flows) {
    Line line{label, units.*quantity};
    for (const double value : {flows.in, flows.out, flows.out - flows.in})
        line.push_back(preciseNumber(value, quantity, units, balanceDecimals));
    return line;
}

/// A value in the table's unit; "not set" for an output without a value.
std::string shownValue(const ModelParameter& parameter, const std::string& unit) {
    if (!parameter.isInput && !isSet(parameter))
        return "not set";
    const auto* number = parameter.value ? std::get_if<double>(&*parameter.value) : nullptr;
    return valueText(number ? inUnit(*number, unit) : parameter.value);
}

} // namespace

Table balanceTable(const Balance& balance, const TableUnits& units) {
    std::vector<Line> lines{{"Balance", "", "in", "out", "out - in"}};
    for (const BalanceRow& row : balanceRows)
        if (!balance.reacts || row.ofReactors)
            lines.push_back(balanceLine(row.label, row.unit, units, balance.*row.flows));
    if (balance.reacts)
        for (const ElementFlow& element : balance.elements)
            lines.push_back(balanceLine(element.symbol, &TableUnits::flow, units, element.moles));
    return {lines, 2};
}

std::vector<std::string> balanceNotes(const Balance& balance, const UnitResult& unit,
                                      const TableUnits& units) {
    std::vector<std::string> notes;
    if (balance.reacts)
        notes.emplace_back(
            "The unit reacts: its enthalpies include those of formation, the streams' do not.");
    const auto power = parseUnit(units.power);
    const bool isShown = std::ranges::any_of(unit.parameters, [&](const ModelParameter& parameter) {
        return isSameDimension(parameter.dimensionality, power->exponents);
    });
    if (!isShown && !isKept(balance.enthalpy))
        notes.push_back("The enthalpy changes by " +
                        shortNumber(power->fromSi(balance.enthalpy.out - balance.enthalpy.in), 4) + " " +
                        units.power + ", and no parameter in W shows this heat or power.");
    return notes;
}

std::string subjectText(const Warning& warning) {
    return (warning.unit.empty() ? "" : warning.unit + ", ") + warning.subject;
}

std::string warningLines(const std::vector<Warning>& warnings) {
    std::string text;
    for (const Warning& warning : warnings)
        text += "warning: " + subjectText(warning) + ": " + warning.text +
                (warning.remedy.empty() ? "" : "; " + warning.remedy) + "\n";
    return text;
}

Table convergenceTable(const ConvergenceResult& convergence) {
    std::vector<Line> lines{{"Iteration", "Stream", "Largest change", "relative"}};
    for (const IterationResult& one : convergence.iterations)
        lines.push_back(
            {std::to_string(lines.size()), one.stream, one.quantity, shortNumber(one.deviation, 3)});
    return {lines, 3};
}

Table trialTable(const AdjustmentResult& adjustment) {
    const auto title = [](const std::string& name, const std::string& unit) {
        return unit.empty() ? name : name + " (" + unit + ")";
    };
    constexpr int digits = 8;
    std::vector<Line> lines{{"Trial", title(adjustment.variable, adjustment.variableUnit),
                             title(adjustment.output, adjustment.outputUnit), "deviation"}};
    const double target = inUnit(adjustment.target, adjustment.outputUnit);
    for (const TrialResult& trial : adjustment.trials) {
        Line& line = lines.emplace_back(
            Line{std::to_string(lines.size()),
                 shortNumber(inUnit(trial.value, adjustment.variableUnit), digits), "failed", ""});
        if (std::isnan(trial.output))
            continue;
        const double output = inUnit(trial.output, adjustment.outputUnit);
        line[2] = shortNumber(output, digits);
        line[3] = shortNumber(output - target, 3);
    }
    return {lines, 1};
}

Table streamTable(const RunResults& results, const TableUnits& units) {
    std::vector<Line> lines{{"Stream", ""}};
    for (const StreamResult& stream : results.streams)
        lines.front().push_back(stream.name);
    for (const Row& row : rows) {
        Line& line = lines.emplace_back(Line{row.label, row.unit ? units.*row.unit : fractionUnit});
        for (const StreamResult& stream : results.streams)
            line.push_back(row.unit ? preciseNumber(stream.*row.value, row.unit, units, row.decimals)
                                    : fixedNumber(stream.*row.value, row.decimals));
    }
    for (std::size_t i = 0; i < results.compounds.size(); ++i) {
        Line& line = lines.emplace_back(Line{"x " + results.compounds[i], fractionUnit});
        for (const StreamResult& stream : results.streams)
            line.push_back(fixedNumber(stream.fraction[i], fractionDecimals));
    }
    return {lines, 2};
}

Table phaseTable(const RunResults& results) {
    std::vector<Line> lines{{"Phase", ""}, {"Fraction", fractionUnit}};
    for (const std::string& compound : results.compounds)
        lines.push_back({"x " + compound, fractionUnit});
    for (const StreamResult& stream : results.streams)
        for (const PhaseResult& phase : stream.phases) {
            lines[0].push_back(stream.name + ": " + phase.label);
            lines[1].push_back(fixedNumber(phase.amount, fractionDecimals));
            for (std::size_t i = 0; i < results.compounds.size(); ++i)
                lines[i + 2].push_back(fixedNumber(phase.fraction[i], fractionDecimals));
        }
    return lines.front().size() == 2 ? Table{} : Table{lines, 2};
}

Table parameterTable(const UnitResult& unit, const TableUnits& units) {
    std::vector<Line> lines{{"Parameter", "", "", "value"}};
    for (const bool isInput : {true, false})
        for (const ModelParameter& parameter : unit.parameters)
            if (parameter.isInput == isInput) {
                const std::string measure = unitOfParameter(units, parameter.dimensionality);
                lines.push_back(
                    {parameter.name, isInput ? "input" : "output", measure, shownValue(parameter, measure)});
            }
    return lines.size() == 1 ? Table{} : Table{lines, 3};
}

} // namespace solvane::host
