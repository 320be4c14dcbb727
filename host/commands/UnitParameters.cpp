#include "UnitParameters.h"

#include "flowsheet/ParameterCalls.h"
#include "flowsheet/UnitSession.h"

namespace solvane::host {

bool readUnitParameters(const Case& flowsheet, UnitParameters& parameters, std::string& error) {
    for (const UnitCase& unit : flowsheet.units) {
        std::vector<ModelParameter>& list = parameters.emplace_back();
        if (const auto* model = std::get_if<UnitModel>(&unit.model)) {
            list = model->parameters;
            continue;
        }
        UnitSession session(unit, flowsheet.profile);
        if (!session.start([](std::string_view) {}, error) || !readParameters(session.unit(), list, error)) {
            error.insert(0, "Unit \"" + unit.name + "\": ");
            return false;
        }
    }
    return true;
}

} // namespace solvane::host
