#include "StudyTable.h"

#include "cases/NumberText.h"
#include "cases/ParameterRules.h"
#include "results/CsvText.h"
#include "results/ScriptError.h"

#include <nlohmann/json.hpp>

#include <algorithm>
#include <array>
#include <charconv>

namespace solvane::host {

namespace {

using Json = nlohmann::ordered_json;
using Source = StudyColumn::Source;

constexpr char lineEnd[] = "\r\n";
constexpr char failedWord[] = "failed";

/// A line of the table has no line ends in its cells.
std::string inOneLine(std::string text) {
    std::erase(text, '\r');
    while (text.ends_with('\n'))
        text.pop_back();
    std::ranges::replace(text, '\n', ' ');
    return text;
}

/// A number is in SI units and shown in `unit`; no value gives an empty cell.
std::string cellOf(const Json* value, const std::string& unit) {
    if (!value)
        return {};
    if (value->is_boolean())
        return value->get<bool>() ? "true" : "false";
    if (value->is_number_integer())
        return std::to_string(value->get<std::int64_t>());
    if (value->is_number())
        return exactNumber(inUnit(value->get<double>(), unit));
    return value->is_string() ? inOneLine(value->get<std::string>()) : "";
}

ScriptError scriptErrorOf(const Json& script) {
    return {.file = script.at("file").get<std::string>(),
            .line = script.at("line").get<long>(),
            .column = script.value("column", 0L),
            .message = script.at("message").get<std::string>()};
}

std::string message(const Json& results) {
    if (!results.contains("error"))
        return {};
    const Json& error = results.at("error");
    const std::string unit = results.contains("units") ? error.value("unit", "") : "";
    // An error in the script: its place says more than the unit's text.
    const std::string text = error.contains("script") ? scriptErrorLine(scriptErrorOf(error.at("script")))
                                                      : error.value("message", "");
    return inOneLine((unit.empty() ? "" : "Unit \"" + unit + "\": ") + text);
}

/// The lines without their ends; an incomplete last one, of a study that was killed, is left out.
std::vector<std::string> completeLines(std::string_view csv) {
    std::vector<std::string> lines;
    for (std::size_t end; (end = csv.find(lineEnd)) != csv.npos; csv.remove_prefix(end + 2))
        lines.emplace_back(csv.substr(0, end));
    return lines;
}

std::vector<std::string> lineCells(const std::string& line) {
    const auto lines = readCsv(line);
    return lines.empty() ? std::vector<std::string>() : lines[0];
}

/// 0 for what is no whole number.
std::size_t wholeNumber(const std::string& cell) {
    std::size_t number = 0;
    const auto [end, code] = std::from_chars(cell.data(), cell.data() + cell.size(), number);
    return code == std::errc() && end == cell.data() + cell.size() ? number : 0;
}

/// The number of a line's point, from 1, and the count of all; 0 for a line of no table.
struct Place {
    std::size_t point = 0;
    std::size_t count = 0;

    explicit Place(const std::vector<std::string>& cells) {
        if (cells.size() < 2)
            return;
        count = wholeNumber(cells[1]);
        point = wholeNumber(cells[0]);
        if (point > count)
            point = 0;
    }
};

} // namespace

StudyTable::StudyTable(const Case& flowsheet, const UnitParameters& parameters, const Design& design,
                       const TableUnits& units)
    : design_(design) {
    columns_ = {{.source = Source::point, .name = "point"}, {.source = Source::count, .name = "points"}};
    for (std::size_t i = 0; i < design.axes.size(); ++i)
        columns_.push_back({.source = Source::axis,
                            .name = design.axes[i].variable.name,
                            .unit = design.axes[i].unit,
                            .axis = i});
    for (StudyColumn& column : resultColumns(flowsheet, parameters, units))
        if (std::ranges::none_of(
                design.axes, [&](const Axis& axis) { return isSameName(axis.variable.name, column.name); }))
            columns_.push_back(std::move(column));
    columns_.push_back({.source = Source::status, .name = "status"});
    columns_.push_back({.source = Source::message, .name = "message"});
}

std::string StudyTable::heading() const {
    std::vector<std::string> cells;
    for (const StudyColumn& column : columns_)
        cells.push_back(inOneLine(column.title()));
    return csvLine(cells) + lineEnd;
}

std::string StudyTable::line(std::size_t point, const Json& results) const {
    std::vector<std::string> cells;
    for (const StudyColumn& column : columns_)
        switch (column.source) {
        case Source::point:
            cells.push_back(std::to_string(point + 1));
            break;
        case Source::count:
            cells.push_back(std::to_string(design_.points.size()));
            break;
        case Source::axis:
            cells.push_back(design_.points[point][column.axis]);
            break;
        case Source::parameter:
        case Source::stream:
        case Source::fraction:
            cells.push_back(cellOf(findValue(column, results), column.unit));
            break;
        case Source::status:
            cells.push_back(results.contains("error") ? failedWord : "ok");
            break;
        case Source::message:
            cells.push_back(message(results));
            break;
        }
    return csvLine(cells) + lineEnd;
}

bool StudyTable::readLines(std::string_view csv, std::map<std::size_t, std::string>& lines,
                           std::string& error) const {
    const std::vector<std::string> all = completeLines(csv);
    if (all.empty())
        return true;
    const auto otherStudy = [&] {
        error = "it is the table of another study; choose another file, or leave out --resume";
        return false;
    };
    if (all.front() + lineEnd != heading())
        return otherStudy();
    for (std::size_t i = 1; i < all.size(); ++i) {
        const std::vector<std::string> cells = lineCells(all[i]);
        const Place place(cells);
        if (cells.size() != columns_.size() || place.point == 0 || place.count != design_.points.size() ||
            !std::ranges::equal(design_.points[place.point - 1],
                                std::span(cells).subspan(2, design_.axes.size())))
            return otherStudy();
        lines[place.point - 1] = all[i] + lineEnd;
    }
    return true;
}

bool hasFailed(const std::string& line) {
    const std::vector<std::string> cells = lineCells(line);
    return cells.size() > 1 && cells[cells.size() - 2] == failedWord;
}

bool mergeTables(const std::vector<std::string>& tables, std::string& merged, std::string& error) {
    const auto fail = [&](std::string text) {
        error = std::move(text);
        return false;
    };
    std::string heading;
    std::vector<std::string> lines;
    for (const std::string& table : tables) {
        const std::vector<std::string> all = completeLines(table);
        if (all.empty() || !all.front().starts_with("point,points,"))
            return fail("a file is not the table of a study");
        if (heading.empty())
            heading = all.front();
        else if (heading != all.front())
            return fail("the tables are of several studies: their columns differ");
        for (std::size_t i = 1; i < all.size(); ++i) {
            const Place place(lineCells(all[i]));
            if (place.point == 0 || (!lines.empty() && lines.size() != place.count))
                return fail("the tables are of several studies: their counts of points differ");
            lines.resize(place.count);
            std::string& line = lines[place.point - 1];
            if (!line.empty())
                return fail("the point " + std::to_string(place.point) + " is there twice");
            line = all[i] + lineEnd;
        }
    }
    if (lines.empty())
        return fail("the tables have no points");
    const auto missing = std::ranges::find(lines, std::string());
    if (missing != lines.end())
        return fail("the point " + std::to_string(missing - lines.begin() + 1) + " of " +
                    std::to_string(lines.size()) + " is missing");
    merged = heading + lineEnd;
    for (const std::string& line : lines)
        merged += line;
    return true;
}

std::string tableJson(const std::vector<StudyColumn>& columns, std::string_view csv) {
    Json json{{"columns", Json::array()}, {"rows", Json::array()}};
    for (const StudyColumn& column : columns) {
        Json& one = json["columns"].emplace_back(Json{{"name", column.name}});
        if (!column.unit.empty())
            one["unit"] = column.unit;
        if (column.source == Source::axis)
            one["varied"] = true;
    }
    const auto lines = readCsv(csv);
    for (std::size_t i = 1; i < lines.size(); ++i) {
        Json& row = json["rows"].emplace_back(Json::array());
        for (const std::string& cell : lines[i]) {
            double number = 0;
            const auto [end, code] = std::from_chars(cell.data(), cell.data() + cell.size(), number);
            if (cell.empty())
                row.push_back(nullptr);
            else if (code == std::errc() && end == cell.data() + cell.size())
                row.push_back(number);
            else
                row.push_back(cell);
        }
    }
    return json.dump(1, ' ', false, Json::error_handler_t::replace) + "\n";
}

} // namespace solvane::host
