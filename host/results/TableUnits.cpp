#include "TableUnits.h"

#include "cases/UnitOfMeasure.h"

#include <algorithm>

namespace solvane::host {

namespace {

/// An absolute pressure may be meant, or a difference, which nothing marks.
std::string withoutGauge(const std::string& unit) {
    const bool isGauge = unit == "barg" || unit == "psig";
    return isGauge ? unit.substr(0, unit.size() - 1) : unit;
}

} // namespace

TableUnits unitsOfSystem(std::string_view system) {
    if (system == "si")
        return {"K", "Pa", "mol/s", "kg/s", "J/mol", "W"};
    if (system == "metric")
        return {"degC", "bar", "kmol/h", "kg/h", "kJ/mol", "kW"};
    return {"degF", "psi", "lbmol/h", "lb/h", "BTU/lbmol", "BTU/h"};
}

TableUnits unitsOfCase(const Case& flowsheet) {
    TableUnits units;
    const auto take = [&](std::string FeedStream::* stated, std::string& unit) {
        const auto feed = std::ranges::find_if(flowsheet.feeds,
                                               [&](const FeedStream& one) { return !(one.*stated).empty(); });
        if (feed != flowsheet.feeds.end())
            unit = (*feed).*stated;
    };
    take(&FeedStream::temperatureUnit, units.temperature);
    take(&FeedStream::pressureUnit, units.pressure);
    std::string flow;
    take(&FeedStream::flowUnit, flow);
    if (!flow.empty()) {
        const bool isOfMoles = isSameDimension(parseUnit(flow)->exponents, parseUnit("mol/s")->exponents);
        (isOfMoles ? units.flow : units.massFlow) = flow;
    }
    return units;
}

double inUnit(double value, const std::string& unit) {
    return unit.empty() ? value : parseUnit(unit)->fromSi(value);
}

std::string unitOfParameter(const TableUnits& units, const std::vector<double>& dimensionality) {
    std::string si = unitText(dimensionality);
    if (si.empty() || isDifference(dimensionality))
        return si;
    for (const auto& unit : {&TableUnits::temperature, &TableUnits::pressure, &TableUnits::flow,
                             &TableUnits::massFlow, &TableUnits::enthalpy, &TableUnits::power})
        if (isSameDimension(parseUnit(units.*unit)->exponents, dimensionality))
            return withoutGauge(units.*unit);
    return si;
}

} // namespace solvane::host
