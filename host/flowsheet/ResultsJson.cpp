#include "ResultsJson.h"

#include <nlohmann/json.hpp>

namespace solvane::host {

namespace {

using Json = nlohmann::ordered_json;

Json streamJson(const StreamResult& stream, const std::vector<std::string>& compounds) {
    Json fraction = Json::object();
    for (std::size_t i = 0; i < compounds.size(); ++i)
        fraction[compounds[i]] = stream.fraction.at(i);
    return {{"name", stream.name},         {"temperature", stream.temperature},
            {"pressure", stream.pressure}, {"totalFlow", stream.totalFlow},
            {"fraction", fraction},        {"vaporFraction", stream.vaporFraction},
            {"enthalpy", stream.enthalpy}};
}

/// Adds what a unit told.
void putUnit(Json& json, const UnitResult& unit) {
    json["parameters"] = Json::object();
    json["reports"] = Json::object();
    for (const ModelParameter& parameter : unit.parameters) {
        Json& value = json["parameters"][parameter.name];
        if (parameter.value)
            std::visit([&](const auto& held) { value = held; }, *parameter.value);
    }
    for (const ReportResult& report : unit.reports)
        json["reports"][report.name] = report.text;
}

} // namespace

std::string resultsJson(const RunResults& results) {
    Json json{{"generation", generationName(results.generation)}, {"streams", Json::array()}};
    for (const StreamResult& stream : results.streams)
        json["streams"].push_back(streamJson(stream, results.compounds));
    for (const UnitResult& unit : results.units) {
        if (results.isFlowsheet)
            json["units"].push_back({{"name", unit.name}});
        putUnit(results.isFlowsheet ? json["units"].back() : json, unit);
    }
    return json.dump(2) + "\n";
}

} // namespace solvane::host
