#include "Steps.h"

#include "com/Variant.h"
#include "flowsheet/ParameterCalls.h"
#include "flowsheet/UnitCalls.h"

namespace solvane::host {

namespace {

constexpr char seeHelp[] =
    "The message says why; the page \"Messages and what they mean\" of the help book says "
    "what to do.";
constexpr char answerName[] = "answer";
constexpr double answer = 42;

/// A unit without ports, whose script goes through the gateway once.
UnitModel trialModel() {
    UnitModel model;
    model.script = {.name = "calc.m", .bytes = "setParameter('answer', 6*7);\r\n"};
    model.parameters.push_back(
        {.name = answerName, .kind = ParameterKind::real, .isInput = false, .value = 0.0});
    return model;
}

/// The report of what the engine printed.
std::string printed(ICapeUnit* unit) {
    std::vector<ReportResult> reports;
    std::string ignored;
    if (!readReports(unit, reports, ignored) || reports.empty())
        return {};
    return "\n" + reports.front().text;
}

} // namespace

Finding startUnit(Machine& machine) {
    machine.engine.reset(); // the unit starts its own
    machine.unitCase.model = trialModel();
    machine.session = std::make_unique<UnitSession>(machine.unitCase, profiles.front());
    std::string error;
    if (!machine.session->start([](std::string_view) {}, error))
        return {error, seeHelp};
    return {"It starts and takes a model", {}};
}

Finding runUnit(Machine& machine) {
    ICapeUnit* const unit = machine.session->unit();
    std::vector<ModelParameter> parameters;
    std::string error;
    if (!validate(unit, error) || !calculate(unit, error) || !readParameters(unit, parameters, error))
        return {error + printed(unit), seeHelp};
    if (parameters.empty() || parameters.front().value != ParameterValue(answer))
        return {"The script did not set its output." + printed(unit), seeHelp};
    return {"A one-line script ran and set its output", {}};
}

} // namespace solvane::host
