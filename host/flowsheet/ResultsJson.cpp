#include "ResultsJson.h"

#include <nlohmann/json.hpp>

namespace solvane::host {

namespace {

using Json = nlohmann::ordered_json;

struct ToJson {
    Json operator()(std::monostate) const { return nullptr; }
    template <class T>
    Json operator()(const T& value) const {
        return value;
    }
};

Json streamJson(const StreamResult& stream, const std::vector<std::string>& compounds) {
    Json fraction = Json::object();
    for (std::size_t i = 0; i < compounds.size(); ++i)
        fraction[compounds[i]] = stream.fraction.at(i);
    return {{"name", stream.name},         {"temperature", stream.temperature},
            {"pressure", stream.pressure}, {"totalFlow", stream.totalFlow},
            {"fraction", fraction},        {"vaporFraction", stream.vaporFraction},
            {"enthalpy", stream.enthalpy}};
}

} // namespace

std::string resultsJson(const RunResults& results) {
    Json json{{"generation", generationName(results.generation)},
              {"streams", Json::array()},
              {"parameters", Json::object()},
              {"reports", Json::object()}};
    for (const StreamResult& stream : results.streams)
        json["streams"].push_back(streamJson(stream, results.compounds));
    for (const ParameterResult& parameter : results.parameters)
        json["parameters"][parameter.name] = std::visit(ToJson(), parameter.value);
    for (const ReportResult& report : results.reports)
        json["reports"][report.name] = report.text;
    return json.dump(2) + "\n";
}

} // namespace solvane::host
