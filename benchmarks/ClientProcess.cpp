#include "ClientProcess.h"

#include "CommandRequests.h"
#include "OutOfProcessObject.h"
#include "PhaseCalls.h"
#include "RoundTrip.h"
#include "Wire.h"
#include "com/Text.h"

#include <algorithm>
#include <chrono>
#include <cstdint>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <functional>

namespace solvane {

namespace {

constexpr int turns = 41;
constexpr int callsInTurn = 200;

using Way = std::function<bool()>;

/// One call by that way; null for an unknown one.
Way makeWay(const std::string& name, RoundTrip& unit, RoundTrip& responder, IDispatch* object) {
    const std::string word = name.substr(0, name.find(' '));
    const std::string property = name.substr(std::min(name.size(), word.size() + 1));
    if (word == "ping")
        return [&responder, request = request(CommandCode::getUnitName).bytes()] {
            return responder.ask(request);
        };
    if (word == "getFeedProp")
        return [&unit, request = (request(CommandCode::getFeedProp) << 1 << property).bytes()] {
            return unit.ask(request);
        };
    if (word == "command") {
        const std::vector<CommandRequest> commands = commandRequests();
        const auto command = std::ranges::find(commands, property, &CommandRequest::name);
        return [&unit, request = command->bytes] { return unit.ask(request); };
    }
    if (word == "Invoke" && object)
        return [object, wide = widen(property)] { return invokeGetProp(object, wide.c_str()); };
    if (word == "getSinglePhaseProperty")
        return [&unit, request = phaseRequest(property)] { return unit.ask(request); };
    if (word == "direct10")
        return askMaterial10(property);
    if (word == "direct11")
        return askMaterial11(property);
    return nullptr;
}

/// Microseconds a call; negative where one failed.
double measure(const Way& way) {
    const auto begin = std::chrono::steady_clock::now();
    for (int i = 0; i < callsInTurn; ++i)
        if (!way())
            return -1;
    const std::chrono::duration<double, std::micro> elapsed = std::chrono::steady_clock::now() - begin;
    return elapsed.count() / callsInTurn;
}

} // namespace

int runClient(const std::vector<std::string>& arguments) {
    if (arguments.size() < 5)
        return 1;
    CoInitializeEx(nullptr, COINIT_MULTITHREADED);
    RoundTrip unit(arguments[1]);
    RoundTrip responder(arguments[2]);
    const ComRef<IDispatch> object = openOfferedObject(widen(arguments[3]));
    std::ofstream results(std::filesystem::path(widen(arguments[0])));
    const std::vector<std::string> names(arguments.begin() + 4, arguments.end());
    std::vector<Way> ways;
    for (const std::string& name : names)
        ways.push_back(makeWay(name, unit, responder, object.get()));
    // The first turn warms up.
    for (int turn = 0; turn <= turns; ++turn)
        for (std::size_t i = 0; i < ways.size(); ++i) {
            const double time = ways[i] ? measure(ways[i]) : -1;
            if (time < 0) {
                std::printf("%s failed in the client\n", names[i].c_str());
                return 1;
            }
            if (turn > 0)
                results << names[i] << '\t' << time << '\n';
        }
    return 0;
}

Timings measureInClient(const ClientTask& task, const std::wstring& resultFile) {
    std::wstring program(1024, L'\0');
    program.resize(GetModuleFileNameW(nullptr, program.data(), static_cast<DWORD>(program.size())));
    std::wstring line = L"\"" + program + L"\" " + widen(clientWord);
    for (const std::wstring& argument :
         {resultFile, widen(task.unitId), widen(task.responderId), task.objectFile})
        line += L" \"" + argument + L"\"";
    for (const std::string& way : task.ways)
        line += L" \"" + widen(way) + L"\"";
    STARTUPINFOW startup{};
    startup.cb = sizeof startup;
    PROCESS_INFORMATION process{};
    if (!CreateProcessW(nullptr, line.data(), nullptr, nullptr, FALSE, 0, nullptr, nullptr, &startup,
                        &process)) {
        std::printf("the client process can't be started\n");
        return {};
    }
    const Handle running(process.hProcess), thread(process.hThread);
    WaitForSingleObject(running.get(), INFINITE);
    DWORD code = 1;
    GetExitCodeProcess(running.get(), &code);
    Timings timings;
    if (code != 0)
        return timings;
    std::ifstream results{std::filesystem::path(resultFile)};
    std::string name, time;
    while (std::getline(results, name, '\t') && std::getline(results, time))
        timings[name].push_back(std::stod(time));
    return timings;
}

} // namespace solvane
