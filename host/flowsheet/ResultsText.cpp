#include "ResultsText.h"

#include <algorithm>
#include <array>
#include <cstdio>
#include <numeric>

namespace solvane::host {

namespace {

using Line = std::vector<std::string>;

constexpr double pascalPerBar = 1e5;

std::string number(const char* format, double value) {
    std::array<char, 64> text{};
    std::snprintf(text.data(), text.size(), format, value);
    return text.data();
}

/// Characters of a UTF-8 text.
std::size_t width(const std::string& text) {
    return static_cast<std::size_t>(
        std::ranges::count_if(text, [](char c) { return (static_cast<unsigned char>(c) & 0xC0) != 0x80; }));
}

/// Pads to a width: labels and units to the right, numbers to the left.
std::string padded(const std::string& text, std::size_t wanted, bool isNumber) {
    const std::string blanks(wanted - std::min(wanted, width(text)), ' ');
    return isNumber ? blanks + text : text + blanks;
}

/// Lines of equal length as columns, the first `labels` of them aligned to the left.
std::string columns(const std::vector<Line>& lines, std::size_t labels) {
    std::vector<std::size_t> widths(lines.front().size());
    for (const Line& line : lines)
        for (std::size_t i = 0; i < line.size(); ++i)
            widths[i] = std::max(widths[i], width(line[i]));
    std::string text;
    for (const Line& line : lines) {
        std::string row;
        for (std::size_t i = 0; i < line.size(); ++i)
            row += (i == 0 ? "" : "  ") + padded(line[i], widths[i], i >= labels);
        row.erase(row.find_last_not_of(' ') + 1);
        text += row + "\n";
    }
    return text;
}

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

struct ToText {
    std::string operator()(std::monostate) const { return "?"; }
    std::string operator()(double value) const { return number("%.6g", value); }
    std::string operator()(std::int32_t value) const { return std::to_string(value); }
    std::string operator()(bool value) const { return value ? "true" : "false"; }
    std::string operator()(const std::string& value) const { return value; }
};

} // namespace

std::string streamTable(const RunResults& results) {
    std::vector<Line> lines{{"Stream", ""}};
    for (const StreamResult& stream : results.streams)
        lines.front().push_back(stream.name);
    for (const Row& row : rows) {
        Line& line = lines.emplace_back(Line{row.label, row.unit});
        for (const StreamResult& stream : results.streams)
            line.push_back(number(row.format, stream.*row.value / row.divisor));
    }
    for (std::size_t i = 0; i < results.compounds.size(); ++i) {
        Line& line = lines.emplace_back(Line{"x " + results.compounds[i], "mol/mol"});
        for (const StreamResult& stream : results.streams)
            line.push_back(number("%.5f", stream.fraction[i]));
    }
    return columns(lines, 2);
}

std::string outputParameterLines(const RunResults& results) {
    std::vector<Line> lines;
    for (const ParameterResult& parameter : results.parameters)
        if (!parameter.isInput)
            lines.push_back({parameter.name, parameter.unit, std::visit(ToText(), parameter.value)});
    return lines.empty() ? std::string() : columns(lines, 2);
}

} // namespace solvane::host
