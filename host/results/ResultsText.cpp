#include "ResultsText.h"

#include "TextTable.h"
#include "cases/Dimensionality.h"
#include "cases/ParameterRules.h"

#include <array>

namespace solvane::host {

namespace {

constexpr double pascalPerBar = 1e5;

struct Row {
    const char* label;
    const char* unit;
    double StreamResult::*value;
    double divisor;
    const char* format;
};

constexpr std::array rows{
    Row{"Temperature", "K", &StreamResult::temperature, 1, "%.3f"},
    Row{"Pressure", "bar", &StreamResult::pressure, pascalPerBar, "%.4f"},
    Row{"Flow", "mol/s", &StreamResult::totalFlow, 1, "%.4f"},
    Row{"Vapour fraction", "mol/mol", &StreamResult::vaporFraction, 1, "%.5f"},
    Row{"Enthalpy", "J/mol", &StreamResult::enthalpy, 1, "%.2f"},
};

struct BalanceRow {
    const char* label;
    const char* unit;
    Flows Balance::*flows;
    double divisor;
    bool ofReactors; ///< also if the unit reacts
};

constexpr double wattPerKilowatt = 1000;

constexpr std::array balanceRows{
    BalanceRow{"Mass", "kg/s", &Balance::mass, 1, true},
    BalanceRow{"Moles", "mol/s", &Balance::moles, 1, false},
    BalanceRow{"Enthalpy", "kW", &Balance::enthalpy, wattPerKilowatt, true},
};

/// Not "-0.0000".
std::string plainNumber(double value) {
    const std::string text = numberText("%.4f", value);
    return text.find_first_of("123456789") == std::string::npos ? numberText("%.4f", 0) : text;
}

} // namespace

std::string balanceTable(const Balance& balance) {
    std::vector<Line> lines{{"Balance", "", "in", "out", "out - in"}};
    for (const BalanceRow& row : balanceRows) {
        if (balance.reacts && !row.ofReactors)
            continue;
        const Flows& flows = balance.*row.flows;
        Line& line = lines.emplace_back(Line{row.label, row.unit});
        for (const double value : {flows.in, flows.out, flows.out - flows.in})
            line.push_back(plainNumber(value / row.divisor));
    }
    return columns(lines, 2);
}

std::string warningLines(const std::vector<Warning>& warnings) {
    std::string text;
    for (const Warning& warning : warnings)
        text += "warning: " + warning.unit + ", " + warning.subject + ": " + warning.text + "\n";
    return text;
}

std::string streamTable(const RunResults& results) {
    std::vector<Line> lines{{"Stream", ""}};
    for (const StreamResult& stream : results.streams)
        lines.front().push_back(stream.name);
    for (const Row& row : rows) {
        Line& line = lines.emplace_back(Line{row.label, row.unit});
        for (const StreamResult& stream : results.streams)
            line.push_back(numberText(row.format, stream.*row.value / row.divisor));
    }
    for (std::size_t i = 0; i < results.compounds.size(); ++i) {
        Line& line = lines.emplace_back(Line{"x " + results.compounds[i], "mol/mol"});
        for (const StreamResult& stream : results.streams)
            line.push_back(numberText("%.5f", stream.fraction[i]));
    }
    return columns(lines, 2);
}

std::string outputParameterLines(const UnitResult& unit) {
    std::vector<Line> lines;
    for (const ModelParameter& parameter : unit.parameters)
        if (!parameter.isInput)
            lines.push_back({parameter.name, unitText(parameter.dimensionality), valueText(parameter.value)});
    return lines.empty() ? std::string() : columns(lines, 2);
}

} // namespace solvane::host
