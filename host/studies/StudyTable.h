/// The table of a study: a line for each point.
#pragma once

#include "Design.h"
#include "StudyColumn.h"

#include <nlohmann/json_fwd.hpp>

#include <map>
#include <string>
#include <string_view>
#include <vector>

namespace solvane::host {

/// A study's point, the values of the axes, the output parameters of all units, the streams and how it went.
class StudyTable {
public:
    /// Refers to the design.
    StudyTable(const Case& flowsheet, const UnitParameters& parameters, const Design& design,
               const TableUnits& units);
    StudyTable(const StudyTable&) = delete;
    StudyTable& operator=(const StudyTable&) = delete;

    const std::vector<StudyColumn>& columns() const { return columns_; }

    /// The lines end with CR LF, as those of all our CSV files.
    std::string heading() const;

    /// The line of a point, from 0. `results` is what `run --json` writes; it may have no more than an error.
    std::string line(std::size_t point, const nlohmann::ordered_json& results) const;

    /// The complete lines of a table that an earlier study of the same design has left, by point. False with
    /// a text if it is another design's. No table has no lines.
    [[nodiscard]] bool readLines(std::string_view csv, std::map<std::size_t, std::string>& lines,
                                 std::string& error) const;

private:
    const Design& design_;
    std::vector<StudyColumn> columns_;
};

/// Whether the line is of a point that failed.
bool hasFailed(const std::string& line);

/// One table of the tables of a study's shards, in the order of points. False with a text if they are of
/// several studies, or if a point is missing or doubled.
[[nodiscard]] bool mergeTables(const std::vector<std::string>& tables, std::string& merged,
                               std::string& error);

/// The table as a JSON document: the columns' names and units, and the rows.
std::string tableJson(const std::vector<StudyColumn>& columns, std::string_view csv);

} // namespace solvane::host
