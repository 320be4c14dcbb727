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
            {"enthalpy", stream.enthalpy}, {"enthalpyF", stream.enthalpyF}};
}

Json flowsJson(const Flows& flows) {
    return {{"in", flows.in}, {"out", flows.out}};
}

Json balanceJson(const Balance& balance) {
    return {{"unit", balance.unit},
            {"mass", flowsJson(balance.mass)},
            {"moles", flowsJson(balance.moles)},
            {"enthalpy", flowsJson(balance.enthalpy)},
            {"reacts", balance.reacts}};
}

/// Adds the unit's parameters and reports.
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
    json["balances"] = Json::array();
    for (const Balance& balance : results.balances)
        json["balances"].push_back(balanceJson(balance));
    json["warnings"] = Json::array();
    for (const Warning& warning : results.warnings)
        json["warnings"].push_back(
            {{"unit", warning.unit}, {"subject", warning.subject}, {"text", warning.text}});
    for (const UnitResult& unit : results.units) {
        if (results.isFlowsheet)
            json["units"].push_back({{"name", unit.name}});
        putUnit(results.isFlowsheet ? json["units"].back() : json, unit);
    }
    return json.dump(2) + "\n";
}

} // namespace solvane::host
