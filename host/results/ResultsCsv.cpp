#include "ResultsCsv.h"

#include "CsvText.h"
#include "cases/NumberText.h"

#include <array>

namespace solvane::host {

namespace {

struct Column {
    const char* name;
    std::string TableUnits::* unit; ///< null for a fraction
    double StreamResult::* value;
};

constexpr std::array valueColumns{
    Column{"temperature", &TableUnits::temperature, &StreamResult::temperature},
    Column{"pressure", &TableUnits::pressure, &StreamResult::pressure},
    Column{"flow", &TableUnits::flow, &StreamResult::totalFlow},
    Column{"mass flow", &TableUnits::massFlow, &StreamResult::massFlow},
    Column{"vapour fraction", nullptr, &StreamResult::vaporFraction},
    Column{"enthalpy", &TableUnits::enthalpy, &StreamResult::enthalpy},
    Column{"enthalpy with formation", &TableUnits::enthalpy, &StreamResult::enthalpyF},
};

} // namespace

std::string streamsCsv(const RunResults& results, const TableUnits& units) {
    std::string csv = "stream";
    for (const Column& column : valueColumns)
        csv.append(",")
            .append(column.name)
            .append(column.unit ? " (" + units.*column.unit + ")" : std::string());
    for (const std::string& compound : results.compounds)
        csv.append(",").append(csvCell("x " + compound));
    csv += "\r\n";
    for (const StreamResult& stream : results.streams) {
        csv += csvCell(stream.name);
        for (const Column& column : valueColumns)
            csv.append(",").append(
                exactNumber(inUnit(stream.*column.value, column.unit ? units.*column.unit : std::string())));
        for (const double fraction : stream.fraction)
            csv.append(",").append(exactNumber(fraction));
        csv += "\r\n";
    }
    return csv;
}

} // namespace solvane::host
