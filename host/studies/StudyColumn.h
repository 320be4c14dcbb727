/// The results of a case that have a column in a study: output parameters and values of streams.
#pragma once

#include "Variable.h"
#include "results/TableUnits.h"

#include <nlohmann/json_fwd.hpp>

#include <string>
#include <vector>

namespace solvane::host {

/// What a column shows of a point's results.
struct StudyColumn {
    enum class Source { point, count, axis, parameter, stream, fraction, status, message };

    Source source{};
    std::string name{};  ///< such as "Suction.flow"
    std::string unit{};  ///< of measure; empty for none
    std::string owner{}; ///< the stream or, of a case that lists its units, the unit
    std::string key{};   ///< in the results: of the value, or the compound
    std::size_t axis = 0;
    // Of a result:
    ParameterKind kind = ParameterKind::real;
    std::vector<double> dimensionality{};

    std::string title() const { return unit.empty() ? name : name + " (" + unit + ")"; }
};

/// The columns of all results of a case.
std::vector<StudyColumn> resultColumns(const Case& flowsheet, const UnitParameters& parameters,
                                       const TableUnits& units);

/// The value of such a column, in SI units; null if the results, which are what `run --json` writes, have
/// none.
const nlohmann::ordered_json* findValue(const StudyColumn& column, const nlohmann::ordered_json& results);

} // namespace solvane::host
