#include "ClientRun.h"

#include "Folders.h"
#include "GatewayClient.h"
#include "HostedUnit.h"
#include "MatlabStandIn.h"
#include "OutOfProcessObject.h"
#include "RoundTrip.h"
#include "com/Text.h"

#include <cstdio>
#include <optional>

namespace solvane {

Timings measureInRun(ModelBag& model, const std::vector<Connection>& connections,
                     const std::vector<std::string>& ways, IDispatch* object) {
    const TemporaryFolder temporary;
    MatlabStandIn matlab;
    const UnitModule module;
    const HostedUnit unit(module);
    unit.load(model);
    for (const Connection& connection : connections)
        unit.connect(connection.port, connection.material);

    const BareResponder responder;
    const std::wstring objectFile = temporary.path() + L"object";
    std::optional<OfferedObject> offered;
    if (object)
        offered.emplace(ComRef<IDispatch>(object), objectFile);
    Timings timings;
    matlab.onRun = [&](const std::wstring& folder) {
        timings = measureInClient({ways, unitIdOf(folder), responder.id(), objectFile},
                                  temporary.path() + L"results");
        return MatlabAnswer();
    };
    if (FAILED(unit.calculate()))
        std::printf("  the run failed: %s\n", narrow(unit.errorDescription()).c_str());
    return timings;
}

} // namespace solvane
