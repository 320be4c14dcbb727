#include "ResultsJson.h"

#include "cases/UnitOfMeasure.h"

#include <nlohmann/json.hpp>

namespace solvane::host {

namespace {

using Json = nlohmann::ordered_json;

Json fractionsJson(const std::vector<double>& fractions, const std::vector<std::string>& compounds) {
    Json json = Json::object();
    for (std::size_t i = 0; i < compounds.size(); ++i)
        json[compounds[i]] = fractions.at(i);
    return json;
}

Json streamJson(const StreamResult& stream, const std::vector<std::string>& compounds) {
    Json phases = Json::array();
    for (const PhaseResult& phase : stream.phases)
        phases.push_back({{"label", phase.label},
                          {"amount", phase.amount},
                          {"fraction", fractionsJson(phase.fraction, compounds)}});
    return {{"name", stream.name},
            {"temperature", stream.temperature},
            {"pressure", stream.pressure},
            {"totalFlow", stream.totalFlow},
            {"massFlow", stream.massFlow},
            {"fraction", fractionsJson(stream.fraction, compounds)},
            {"vaporFraction", stream.vaporFraction},
            {"enthalpy", stream.enthalpy},
            {"enthalpyF", stream.enthalpyF},
            {"phases", phases}};
}

Json flowsJson(const Flows& flows) {
    return {{"in", flows.in}, {"out", flows.out}};
}

Json balanceJson(const Balance& balance) {
    Json elements = Json::object();
    for (const ElementFlow& element : balance.elements)
        elements[element.symbol] = flowsJson(element.moles);
    return {{"unit", balance.unit},
            {"mass", flowsJson(balance.mass)},
            {"moles", flowsJson(balance.moles)},
            {"elements", elements},
            {"enthalpy", flowsJson(balance.enthalpy)},
            {"reacts", balance.reacts}};
}

Json convergenceJson(const ConvergenceResult& convergence) {
    Json iterations = Json::array();
    for (const IterationResult& one : convergence.iterations)
        iterations.push_back(
            {{"deviation", one.deviation}, {"stream", one.stream}, {"quantity", one.quantity}});
    return {{"method", convergence.method},
            {"tolerance", convergence.tolerance},
            {"limit", convergence.limit},
            {"converged", convergence.converged},
            {"iterations", iterations}};
}

/// A quantity by its name and its SI unit.
Json quantityJson(const std::string& name, const std::string& unit) {
    Json json{{"name", name}};
    if (const std::string si = unit.empty() ? "" : unitText(parseUnit(unit)->exponents); !si.empty())
        json["unit"] = si;
    return json;
}

Json adjustmentJson(const AdjustmentResult& adjustment) {
    Json trials = Json::array();
    for (const TrialResult& trial : adjustment.trials)
        trials.push_back({{"value", trial.value},
                          {"output", trial.output},
                          {"deviation", trial.output - adjustment.target}});
    Json json{{"variable", quantityJson(adjustment.variable, adjustment.variableUnit)},
              {"output", quantityJson(adjustment.output, adjustment.outputUnit)},
              {"target", adjustment.target},
              {"tolerance", adjustment.tolerance},
              {"limit", adjustment.limit},
              {"reached", adjustment.reached},
              {"trials", trials}};
    if (adjustment.reached)
        json["value"] = adjustment.trials.back().value;
    return json;
}

Json failureJson(const RunFailure& failure) {
    Json json{{"unit", failure.unit}, {"message", failure.message}};
    if (const auto& error = failure.scriptError) {
        json["script"] = {{"file", error->file}, {"line", error->line}, {"message", error->message}};
        if (error->column > 0)
            json["script"]["column"] = error->column;
    }
    return json;
}

const char* statusName(UnitStatus status) {
    switch (status) {
    case UnitStatus::calculated:
        return "calculated";
    case UnitStatus::failed:
        return "failed";
    case UnitStatus::notCalculated:
        break;
    }
    return "not calculated";
}

/// Adds the unit's status, parameters and reports.
void putUnit(Json& json, const UnitResult& unit) {
    json["status"] = statusName(unit.status);
    for (const char* key : {"parameters", "parameterUnits", "reports"})
        json[key] = Json::object();
    for (const ModelParameter& parameter : unit.parameters) {
        Json& value = json["parameters"][parameter.name];
        if (parameter.value)
            std::visit([&](const auto& held) { value = held; }, *parameter.value);
        if (const std::string measure = unitText(parameter.dimensionality); !measure.empty())
            json["parameterUnits"][parameter.name] = measure;
    }
    for (const ReportResult& report : unit.reports)
        json["reports"][report.name] = report.text;
}

} // namespace

std::string resultsJson(const RunResults& results, int indent) {
    Json json{{"ok", !results.failure}};
    if (results.failure)
        json["error"] = failureJson(*results.failure);
    json["generation"] = generationName(results.generation);
    json["unitsOfMeasure"] = {
        {"temperature", "K"},
        {"pressure", "Pa"},
        {"totalFlow", "mol/s"},
        {"massFlow", "kg/s"},
        {"enthalpy", "J/mol"},
        {"balances", {{"mass", "kg/s"}, {"moles", "mol/s"}, {"elements", "mol/s"}, {"enthalpy", "W"}}}};
    if (results.convergence)
        json["convergence"] = convergenceJson(*results.convergence);
    if (results.adjustment)
        json["adjustment"] = adjustmentJson(*results.adjustment);
    json["streams"] = Json::array();
    for (const StreamResult& stream : results.streams)
        json["streams"].push_back(streamJson(stream, results.compounds));
    json["balances"] = Json::array();
    for (const Balance& balance : results.balances)
        json["balances"].push_back(balanceJson(balance));
    json["warnings"] = Json::array();
    for (const Warning& warning : results.warnings)
        json["warnings"].push_back(
            {{"unit", warning.unit}, {"subject", warning.subject}, {"text", warning.text}});
    json["log"] = Json::array();
    for (const LogLine& line : results.log)
        json["log"].push_back({{"unit", line.unit}, {"text", line.text}});
    for (const UnitResult& unit : results.units) {
        if (results.isFlowsheet)
            json["units"].push_back({{"name", unit.name}});
        putUnit(results.isFlowsheet ? json["units"].back() : json, unit);
    }
    // A report in another code page is not UTF-8.
    return json.dump(indent, ' ', false, Json::error_handler_t::replace) + "\n";
}

} // namespace solvane::host
