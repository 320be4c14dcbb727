#include "ParameterChanges.h"

#include "cases/NumberText.h"
#include "cases/ParameterRules.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <string_view>

namespace solvane::host {

namespace {

constexpr std::array factors{1.01, 2.0};

/// Words in the names of parameters that steer a solver or bound a result.
constexpr std::array<std::string_view, 10> withoutEffect{"tol",   "iter", "guess", "init", "start",
                                                         "limit", "max",  "min",   "step", "damp"};

bool chooses(const ModelParameter& parameter) {
    return parameter.isInput &&
           (parameter.kind == ParameterKind::text || parameter.kind == ParameterKind::boolean);
}

Case withValue(const Case& flowsheet, std::size_t unit, const std::string& parameter, double value) {
    Case changed = flowsheet;
    std::vector<ParameterSetting>& settings = changed.units[unit].parameters;
    std::erase_if(settings, [&](const ParameterSetting& one) { return isSameName(one.name, parameter); });
    settings.push_back({parameter, value});
    return changed;
}

} // namespace

std::vector<ParameterChange> parameterChanges(const Case& flowsheet, const std::vector<UnitResult>& units) {
    std::vector<ParameterChange> changes;
    for (std::size_t unit = 0; unit < units.size(); ++unit) {
        if (std::ranges::any_of(units[unit].parameters, chooses))
            continue;
        for (const ModelParameter& parameter : units[unit].parameters) {
            const auto* value =
                parameter.isInput && parameter.value ? std::get_if<double>(&*parameter.value) : nullptr;
            if (!value || *value == 0 || !std::isfinite(*value) || hasWord(parameter.name, withoutEffect))
                continue;
            ParameterChange change{(flowsheet.isFlowsheet ? units[unit].name + ": " : "") + "parameter " +
                                       parameter.name,
                                   unit,
                                   parameter.name,
                                   {}};
            for (const double factor : factors)
                for (const double changed : {*value * factor, *value / factor})
                    if (limitFault(parameter, changed).empty()) {
                        change.variations.push_back({change.name + " at " + shortNumber(changed, 6),
                                                     withValue(flowsheet, unit, parameter.name, changed)});
                        break;
                    }
            if (change.variations.size() == factors.size())
                changes.push_back(std::move(change));
        }
    }
    return changes;
}

} // namespace solvane::host
