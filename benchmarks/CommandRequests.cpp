#include "CommandRequests.h"

#include "ClientRun.h"
#include "FakeMaterial11.h"
#include "GatewayClient.h"
#include "OddVariants.h"
#include "Verdict.h"

namespace solvane {

namespace {

constexpr double temperature = 350; // K
constexpr double pressure = 1e5;    // Pa

Wire withComposition(Wire wire) {
    for (std::size_t i = 0; i < commandCompounds; ++i)
        wire << 1.0 / static_cast<double>(commandCompounds);
    return wire;
}

Wire withState(Wire wire) {
    return wire << temperature << pressure << "temperature"
                << "pressure";
}

FakeStream answeringStream() {
    FakeStream stream = makeFakeStream(commandCompounds);
    const std::vector<double> values(commandCompounds, 1);
    stream.results = {{L"vaporPressure", values},
                      {L"boilingPointTemperature", values},
                      {L"volume", {1}},
                      {L"fugacityCoefficient", values},
                      {L"kvalue", values}};
    const Variant one(1.0);
    stream.constants = {{L"weight", variants({one, one, one, one, one, one, one, one, one, one})}};
    return stream;
}

} // namespace

const std::vector<CommandRequest>& commandRequests() {
    static const std::vector<CommandRequest> requests{
        {"getFeedProp", (request(CommandCode::getFeedProp) << 1 << "enthalpy").bytes()},
        {"setProduct", withState(withComposition(request(CommandCode::setProduct) << 1 << 10.0)).bytes()},
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
         (withComposition(request(CommandCode::getSinglePhaseProperty) << temperature << pressure)
          << "fugacityCoefficient"
          << "Vapor")
             .bytes()},
        {"getTwoPhaseProperty", (withComposition(withComposition(request(CommandCode::getTwoPhaseProperty)
                                                                 << temperature << pressure))
                                 << "kvalue"
                                 << "Vapor"
                                 << "Liquid")
                                    .bytes()},
        {"getPropertyUnit", (request(CommandCode::getPropertyUnit) << "enthalpy").bytes()},
        {"getUnitName", request(CommandCode::getUnitName).bytes()},
        {"getFeedCount", request(CommandCode::getFeedCount).bytes()},
        {"getProductCount", request(CommandCode::getProductCount).bytes()},
        {"getFeedEquilibrium", (request(CommandCode::getFeedEquilibrium) << 1).bytes()},
        {"flashEquilibrium", withState(withComposition(request(CommandCode::flashEquilibrium))).bytes()},
        {"flashProperty",
         (withState(withComposition(request(CommandCode::flashProperty))) << "enthalpy").bytes()},
    };
    return requests;
}

bool compareCommands() {
    ModelBag bag;
    bag.script("").feeds({L"Feed"}).products({L"Product"}).reports({L"Duties"}).file("report.txt", "1");
    bag.parameter(L"Duty", L"real", Variant(1.0));
    std::vector<std::string> ways;
    for (const CommandRequest& command : commandRequests())
        ways.push_back("command " + command.name);
    const ComRef<FakeMaterial11> feed = FakeMaterial11::create(answeringStream());
    const ComRef<FakeMaterial11> product = FakeMaterial11::create(answeringStream());
    Timings timings =
        measureInRun(bag, {{L"Feed", feed->dispatch()}, {L"Product", product->dispatch()}}, ways);
    // Not to a bare ping-pong: measured beside so many others it took 70 us in one run and 105 in another,
    // while getUnitName stayed between 98 and 112. Why is not known.
    const std::string simplest = "getUnitName";
    bool isMet = true;
    for (const CommandRequest& command : commandRequests())
        if (command.name != simplest)
            isMet &= printAtMost(
                command.name + " / " + simplest,
                median(ratios(timings["command " + command.name], timings["command " + simplest])),
                command.goal);
    return isMet;
}

} // namespace solvane
