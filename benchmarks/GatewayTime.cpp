// The gateway's own time for a command, in Octave on Linux: from the call of the script to the request that
// is handed over, and from the unit's reply to the results, beside a copy of the same bytes. The
// interpreter's arrays are played.

#include "Verdict.h"
#include "channel/ValueTags.h"
#include "gateway/Transport.h"
#include "tests/gateway/StandInArray.h"

#include <algorithm>
#include <chrono>
#include <cstdint>
#include <cstdio>
#include <cstring>
#include <limits>

extern "C" void mexFunction(int, mxArray* outputs[], int, const mxArray* arguments[]);

namespace solvane {

namespace {

using Clock = std::chrono::steady_clock;

constexpr int turns = 25;
constexpr int callsInTurn = 400;
constexpr double goal = 5; // microseconds, as of the unit's side with a host

/// The unit, which answers at once.
struct PlayedUnit {
    std::string block = std::string(16384, '\0');
    std::size_t requestSize = 0;
    std::size_t replySize = 0;
    Clock::duration time{}; ///< outside the gateway
    mxArray* compounds = nullptr;
    mxArray* phases = nullptr;
    std::string error{};
};
PlayedUnit unit;

class PlayedTransport final : public gateway::Transport {
public:
    std::size_t capacity() const override { return std::numeric_limits<std::size_t>::max(); }
    bool exchange(std::string_view request, std::size_t wanted, std::string& reply, std::string&) override {
        const auto begin = Clock::now();
        unit.requestSize = request.size();
        unit.replySize = std::min(wanted, unit.block.size());
        reply.assign(unit.block, 0, unit.replySize);
        unit.time += Clock::now() - begin;
        return true;
    }
    bool read(std::size_t offset, std::size_t count, std::string& bytes, std::string&) override {
        bytes.append(unit.block, offset, count);
        return true;
    }
};

/// The bytes of a reply, after the status of a success.
class ReplyBytes {
public:
    ReplyBytes& operator<<(ValueShape shape) { return add(&shape, sizeof shape); }
    ReplyBytes& operator<<(const std::vector<double>& values) {
        return add(values.data(), values.size() * sizeof(double));
    }
    ReplyBytes& operator<<(std::string_view text) { return add(text.data(), text.size()); }
    std::string bytes = std::string(4, '\0');

private:
    ReplyBytes& add(const void* from, std::size_t size) {
        bytes.append(static_cast<const char*>(from), size);
        return *this;
    }
};

mxArray* numbers(std::vector<double> values) {
    mxArray* array = keep({.rows = 1, .columns = values.size()});
    array->numbers = std::move(values);
    return array;
}

mxArray* text(const std::string& characters) {
    return keep({.kind = ArrayKind::text, .rows = 1, .columns = characters.size(), .characters = characters});
}

void call(const std::vector<const mxArray*>& given, int outputs) {
    std::vector<const mxArray*> arguments = given;
    mxArray* results[8]{};
    mexFunction(outputs, results, static_cast<int>(arguments.size()), arguments.data());
}

struct Call {
    std::string name;
    std::vector<const mxArray*> arguments;
    int outputs;
    std::string reply;
};

std::vector<Call> callsOf(std::size_t compounds) {
    const auto composition = [&] {
        return numbers(std::vector<double>(compounds, 1.0 / static_cast<double>(compounds)));
    };
    const std::vector<double> value{1.5}, values(compounds, 1.5);
    const std::string number = (ReplyBytes() << ValueShape::scalar << value).bytes;
    const std::string vector = (ReplyBytes() << ValueShape::vector << values).bytes;
    const auto state = [](std::vector<const mxArray*> before, std::vector<const mxArray*> after = {}) {
        before.insert(before.end(), {text("temperature"), numbers({350}), text("pressure"), numbers({1e5})});
        before.insert(before.end(), after.begin(), after.end());
        return before;
    };
    return {
        {"getFeedProp", {numbers({1}), text("enthalpy")}, 1, number},
        {"setProduct", state({numbers({1}), numbers({10}), composition()}), 0, ReplyBytes().bytes},
        {"getTDependentProperty", {text("vaporPressure"), numbers({350})}, 1, (ReplyBytes() << values).bytes},
        {"getSinglePhaseProperty",
         {text("fugacityCoefficient"), text("Vapor"), numbers({350}), numbers({1e5}), composition()},
         1,
         vector},
        {"getUnitName", {}, 1, (ReplyBytes() << std::string_view("Flash drum\0", 11)).bytes},
        {"flashProperty", state({composition()}, {text("enthalpy")}), 1, (ReplyBytes() << value).bytes},
    };
}

double microsecondsOfCall(Clock::duration time) {
    return std::chrono::duration<double, std::micro>(time).count() / callsInTurn;
}

bool compare(const Call& command, const std::string& of) {
    std::vector<const mxArray*> arguments{text(command.name)};
    arguments.insert(arguments.end(), command.arguments.begin(), command.arguments.end());
    std::copy(command.reply.begin(), command.reply.end(), unit.block.begin());
    unit.error.clear();
    const std::size_t kept = standInArrays().size();
    std::vector<double> own, copies;
    for (int turn = 0; turn < turns; ++turn) {
        unit.time = {};
        const auto begin = Clock::now();
        for (int i = 0; i < callsInTurn; ++i)
            call(arguments, command.outputs);
        own.push_back(microsecondsOfCall(Clock::now() - begin - unit.time));
        standInArrays().resize(kept);
        std::string request(unit.requestSize, '\0'), reply(unit.replySize, '\0');
        const auto copying = Clock::now();
        for (int i = 0; i < callsInTurn; ++i) {
            std::memcpy(request.data(), unit.block.data(), request.size());
            std::memcpy(reply.data(), unit.block.data(), reply.size());
            asm volatile(""
                         :
                         : "r"(request.data()), "r"(reply.data())
                         : "memory"); // the copies are not left out
        }
        copies.push_back(microsecondsOfCall(Clock::now() - copying));
    }
    if (!unit.error.empty()) {
        std::printf("  %s fails: %s\n", command.name.c_str(), unit.error.c_str());
        own.clear();
    }
    return printTimeAtMost("the gateway's own time of " + command.name + ", " + of + " / a copy of its bytes",
                           {own, copies}, goal);
}

bool compareGatewayTimes(std::size_t compounds) {
    standInArrays().clear();
    unit.compounds = numbers({static_cast<double>(compounds)});
    unit.phases = keep({.kind = ArrayKind::cell, .rows = 1, .columns = 2});
    unit.phases->cells = {text("Vapor"), text("Liquid")};
    call({numbers({1}), text("{unit}")}, 0);
    bool isMet = true;
    for (const Call& command : callsOf(compounds))
        isMet &= compare(command, std::to_string(compounds) + " compounds");
    call({numbers({2})}, 0);
    return isMet;
}

} // namespace

const bool gateway::staysLoaded = true;

std::unique_ptr<gateway::Transport> gateway::openTransport(const std::string&, std::string&) {
    return std::make_unique<PlayedTransport>();
}

} // namespace solvane

// The rest of the interpreter.
extern "C" {
void mexLock() {}
void mexUnlock() {}
mxArray* mexGetVariable(const char*, const char* name) {
    return name == std::string_view("nComp")        ? solvane::unit.compounds
           : name == std::string_view("phaseNames") ? solvane::unit.phases
                                                    : nullptr;
}
int mexCallMATLAB(int, mxArray**, int, mxArray** arguments, const char*) {
    solvane::unit.error = arguments[1]->characters;
    return 1;
}
/// Matlab's.
void mexErrMsgTxt(const char*) {}
}

int main() {
    std::printf("The gateway's own time for a command, without the unit\n");
    bool isMet = true;
    for (const std::size_t compounds : {5, 200})
        isMet &= solvane::compareGatewayTimes(compounds);
    solvane::printRows();
    return isMet ? 0 : 1;
}
