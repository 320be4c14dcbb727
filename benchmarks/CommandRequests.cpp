#include "CommandRequests.h"

#include "ClientRun.h"
#include "GatewayClient.h"
#include "StubHost.h"
#include "Verdict.h"

namespace solvane {

namespace {

constexpr double temperature = 350; // K
constexpr double pressure = 1e5;    // Pa

Wire withComposition(Wire wire, std::size_t compounds) {
    return wire << std::vector<double>(compounds, 1.0 / static_cast<double>(compounds));
}

Wire withState(Wire wire) {
    return wire << temperature << pressure << "temperature"
                << "pressure";
}

} // namespace

std::vector<CommandRequest> commandRequests(std::size_t compounds) {
    const auto composed = [compounds](Wire wire) { return withComposition(std::move(wire), compounds); };
    return {
        {"getFeedProp", (request(CommandCode::getFeedProp) << 1 << "enthalpy").bytes()},
        {"setProduct", withState(composed(request(CommandCode::setProduct) << 1 << 10.0)).bytes()},
        {"setReport", (request(CommandCode::setReport) << "Duties").bytes(),
         4}, // reads the text from its file
        {"getParameter", (request(CommandCode::getParameter) << "Duty").bytes()},
        {"setParameter", (request(CommandCode::setParameter) << "Duty" << ValueTag::real << 1.0).bytes()},
        {"getCompoundConstant", (request(CommandCode::getCompoundConstant) << "weight").bytes()},
        {"getTDependentProperty",
         (request(CommandCode::getTDependentProperty) << temperature << "vaporPressure").bytes()},
        {"getPDependentProperty",
         (request(CommandCode::getPDependentProperty) << pressure << "boilingPointTemperature").bytes()},
        {"getSinglePhaseProperty",
         (composed(request(CommandCode::getSinglePhaseProperty) << temperature << pressure)
          << "fugacityCoefficient"
          << "Vapor")
             .bytes()},
        {"getTwoPhaseProperty",
         (composed(composed(request(CommandCode::getTwoPhaseProperty) << temperature << pressure))
          << "kvalue"
          << "Vapor"
          << "Liquid")
             .bytes()},
        {"getPropertyUnit", (request(CommandCode::getPropertyUnit) << "enthalpy").bytes()},
        {"getUnitName", request(CommandCode::getUnitName).bytes()},
        {"getFeedCount", request(CommandCode::getFeedCount).bytes()},
        {"getProductCount", request(CommandCode::getProductCount).bytes()},
        {"getFeedEquilibrium", (request(CommandCode::getFeedEquilibrium) << 1).bytes()},
        {"flashEquilibrium", withState(composed(request(CommandCode::flashEquilibrium))).bytes()},
        {"flashProperty", (withState(composed(request(CommandCode::flashProperty))) << "enthalpy").bytes()},
    };
}

bool compareCommands() {
    ModelBag bag;
    bag.script("").feeds({L"Feed"}).products({L"Product"}).reports({L"Duties"}).file("report.txt", "1");
    bag.parameter(L"Duty", L"real", Variant(1.0));
    const ComRef<IDispatch> feed = createStubMaterial(commandCompounds);
    const ComRef<IDispatch> product = createStubMaterial(commandCompounds);
    bool isMet = true;
    for (const CommandRequest& command : commandRequests()) {
        const std::string way = "command " + command.name;
        Timings timings =
            measureInRun(bag, {{L"Feed", feed.get()}, {L"Product", product.get()}}, {"ping", way});
        isMet &= printAtMost(command.name + " / ping-pong", {timings[way], timings["ping"]}, command.goal);
    }
    return isMet;
}

} // namespace solvane
