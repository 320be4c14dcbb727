#include "StudyColumn.h"

#include "cases/UnitOfMeasure.h"

#include <nlohmann/json.hpp>

#include <array>

namespace solvane::host {

namespace {

using Json = nlohmann::ordered_json;
using Source = StudyColumn::Source;

/// A value of a stream that has a column, by the name that variables have.
struct StreamValue {
    const char* name;
    std::string TableUnits::* unit; ///< null for a fraction
    const char* key;
};

constexpr std::array streamValues{
    StreamValue{"temperature", &TableUnits::temperature, "temperature"},
    StreamValue{"pressure", &TableUnits::pressure, "pressure"},
    StreamValue{"flow", &TableUnits::flow, "totalFlow"},
    StreamValue{"vaporFraction", nullptr, "vaporFraction"},
};

void addStream(const std::string& stream, const Case& flowsheet, const TableUnits& units,
               std::vector<StudyColumn>& columns) {
    for (const StreamValue& value : streamValues) {
        StudyColumn& column = columns.emplace_back(StudyColumn{
            .source = Source::stream, .name = stream + "." + value.name, .owner = stream, .key = value.key});
        if (value.unit) {
            column.unit = units.*value.unit;
            column.dimensionality = parseUnit(column.unit)->exponents;
        }
    }
    for (const Compound* compound : flowsheet.compounds)
        columns.push_back({.source = Source::fraction,
                           .name = stream + ".x(" + std::string(compound->name) + ")",
                           .owner = stream,
                           .key = std::string(compound->name)});
}

/// The element of that name; null if it is not there.
const Json* findNamed(const Json& results, const char* list, const std::string& name) {
    if (results.contains(list))
        for (const Json& one : results.at(list))
            if (one.at("name") == name)
                return &one;
    return nullptr;
}

} // namespace

std::vector<StudyColumn> resultColumns(const Case& flowsheet, const UnitParameters& parameters,
                                       const TableUnits& units) {
    std::vector<StudyColumn> columns;
    for (std::size_t unit = 0; unit < parameters.size(); ++unit)
        for (const ModelParameter& parameter : parameters[unit])
            if (!parameter.isInput)
                columns.push_back({.source = Source::parameter,
                                   .name = parameterName(flowsheet, unit, parameter.name),
                                   .unit = unitOfParameter(units, parameter.dimensionality),
                                   .owner = flowsheet.isFlowsheet ? flowsheet.units[unit].name : "",
                                   .key = parameter.name,
                                   .kind = parameter.kind,
                                   .dimensionality = parameter.dimensionality});
    for (const FeedStream& feed : flowsheet.feeds)
        addStream(feed.name, flowsheet, units, columns);
    for (const UnitCase& unit : flowsheet.units)
        for (const PortConnection& product : unit.products)
            addStream(product.stream, flowsheet, units, columns);
    return columns;
}

const Json* findValue(const StudyColumn& column, const Json& results) {
    const Json* owner = &results;
    const char* values = "parameters";
    if (column.source != Source::parameter) {
        owner = findNamed(results, "streams", column.owner);
        values = "fraction";
    } else if (!column.owner.empty()) {
        owner = findNamed(results, "units", column.owner);
    }
    if (owner && column.source != Source::stream)
        owner = owner->contains(values) ? &owner->at(values) : nullptr;
    return owner && owner->contains(column.key) ? &owner->at(column.key) : nullptr;
}

} // namespace solvane::host
