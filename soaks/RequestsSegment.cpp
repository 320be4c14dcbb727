#include "Damage.h"
#include "Door.h"
#include "Folders.h"
#include "GatewayClient.h"
#include "HostedUnit.h"
#include "MatlabStandIn.h"
#include "Segments.h"
#include "com/Module.h"
#include "materials/Material.h"

#include <algorithm>
#include <array>
#include <cstring>
#include <limits>

namespace solvane::soak {

namespace {

using namespace std::string_view_literals;

// The materials are objects of this program.
ComModule thisProgram;

constexpr char untouched = '\xcc'; // what the client fills the block with
constexpr std::size_t blockSize = 2048;

constexpr std::array compoundNames = {"methane"sv, "propane"sv, "water"sv};
constexpr std::array texts = {
    "temperature"sv,
    "pressure"sv,
    "fraction"sv,
    "vaporFraction"sv,
    "vaporPhaseFraction"sv,
    "totalFlow"sv,
    "flow"sv,
    "enthalpy"sv,
    "entropy"sv,
    "volume"sv,
    "internalEnergy"sv,
    "molecularWeight"sv,
    "heatOfFormation"sv,
    "criticalTemperature"sv,
    "casRegistryNumber"sv,
    "normalBoilingPoint"sv,
    "vaporPressure"sv,
    "idealGasHeatCapacity"sv,
    "boilingPointTemperature"sv,
    "viscosity"sv,
    "density"sv,
    "fugacityCoefficient"sv,
    "enthalpy.Dtemperature"sv,
    "logFugacityCoefficient.Dmoles"sv,
    "kvalue"sv,
    "surfaceTension"sv,
    "phaseFraction"sv,
    "Vapor"sv,
    "Liquid"sv,
    "Liquid2"sv,
    "Overall"sv,
    "VaporLiquid"sv,
    "r"sv,
    "i"sv,
    "b"sv,
    "s"sv,
    "R"sv,
    "Matlab Output"sv,
    ""sv,
    "\xC3\xA9"sv,
    "%s%n"sv,
};
constexpr std::array numbers = {0.0,
                                1.0,
                                0.25,
                                -1.0,
                                300.0,
                                350.0,
                                1e5,
                                2e6,
                                1e-9,
                                1e308,
                                -0.0,
                                1e9,
                                49.0,
                                3001.0,
                                4.9e-324,
                                -1e5,
                                std::numeric_limits<double>::quiet_NaN(),
                                std::numeric_limits<double>::infinity()};
constexpr std::array<std::int32_t, 7> ports = {1, 2, 0, 3, -1, INT32_MIN, INT32_MAX};

// The fields of each command's request, from code 1: p a port, n a number, x a composition, t a text, v a
// value.
constexpr std::array layouts = {"pt",      "pnxnntt", "t", "t", "tv", "t", "nt",    "nt",     "nnxtt",
                                "nnxxttt", "t",       "",  "",  "",   "p", "xnntt", "xnnttt", "t"};
static_assert(layouts.size() == commandCount);

/// getCompoundConstant of a 1.0 material without that constant, and logMessage without a log, leave the block
/// as it is.
constexpr std::array mayStaySilent = {CommandCode::getCompoundConstant, CommandCode::logMessage};

class RequestDoor final : public Door {
public:
    explicit RequestDoor(const std::wstring& folder) : client_(folder) {}

    Verdict attempt(std::uint32_t seed, int number) override {
        Damage damage(seed, number, texts);
        const std::string request = damagedRequest(damage);
        std::string block;
        client_.send(request);
        if (!client_.receive(block))
            return {.fault = "the unit does not answer" + of(request)};
        CommandCode code{};
        std::uint32_t status = statusSuccess;
        std::memcpy(&code, request.data(), sizeof code);
        std::memcpy(&status, block.data(), sizeof status);
        const std::size_t end = block.find('\0', sizeof status);
        if (block.find_first_not_of(untouched, blockSize) != std::string::npos)
            return {.fault = "the unit writes beyond the block" + of(request)};
        if (status == statusSuccess)
            return {.isAccepted = true};
        if (status == static_cast<std::uint32_t>(code) &&
            std::ranges::find(mayStaySilent, code) != mayStaySilent.end())
            return {};
        if (status != statusFailure || end == sizeof status || end >= blockSize)
            return {.fault = "neither an answer nor a refusal with a text" + of(request)};
        return {};
    }

private:
    static std::string of(const std::string& request) {
        return " to command " + std::to_string(static_cast<unsigned char>(request[0]));
    }

    static double damagedNumber(Damage& damage) {
        return damage.oneIn(4) ? static_cast<double>(damage.below(100000)) / 100 : damage.anyOf(numbers);
    }

    static void appendField(char field, Damage& damage, Wire& wire) {
        switch (field) {
        case 'p':
            wire << damage.anyOf(ports);
            return;
        case 'n':
            wire << damagedNumber(damage);
            return;
        case 'x':
            for (std::size_t i = 0; i < compoundNames.size(); ++i)
                wire << (damage.oneIn(8) ? damagedNumber(damage)
                                         : 1.0 / static_cast<double>(1 + damage.below(9)));
            return;
        case 't':
            wire << std::string(damage.anyOf(texts));
            return;
        default: {
            const auto tag = static_cast<ValueTag>(damage.below(5)); // the last one is unknown
            wire << tag;
            appendField(tag == ValueTag::real ? 'n' : tag == ValueTag::text ? 't' : 'p', damage, wire);
        }
        }
    }

    /// As the gateway would pack it, and every second one with damage after the code; never longer than the
    /// block.
    static std::string damagedRequest(Damage& damage) {
        const std::size_t command = damage.below(layouts.size());
        Wire wire =
            request(static_cast<CommandCode>(damage.oneIn(200) ? damage.below(SIZE_MAX) : command + 1));
        for (const char* field = layouts[command]; *field; ++field)
            appendField(*field, damage, wire);
        std::string bytes = wire.bytes();
        if (damage.oneIn(2)) {
            std::string fields = bytes.substr(4);
            damage.to(fields);
            bytes.replace(4, std::string::npos, fields);
        }
        bytes.resize(std::min(bytes.size(), blockSize));
        return bytes;
    }

    GatewayClient client_;
};

ComRef<IDispatch> createStream(host::Generation generation) {
    std::vector<const host::Compound*> compounds;
    for (const std::string_view name : compoundNames)
        compounds.push_back(host::findCompound(name));
    auto state =
        std::make_shared<host::StreamState>(std::make_shared<const host::PropertyPackage>(compounds));
    const auto set = [&](const host::StreamProperty& property, std::initializer_list<double> values) {
        host::Failure failure;
        state->set(host::Place::overall, property, std::span(values.begin(), values.size()), failure);
    };
    set(host::totalFlowProperty, {10});
    set(host::fractionProperty, {0.3, 0.5, 0.2});
    set(host::temperatureProperty, {320});
    set(host::pressureProperty, {1e6});
    host::Failure failure;
    state->flash({&host::temperatureProperty, host::Place::overall},
                 {&host::pressureProperty, host::Place::overall}, failure);
    return host::createMaterial(generation, state, L"Stream");
}

/// All within one run.
void soakRequests(host::Generation generation, const Effort& effort, const Figures& figures) {
    TemporaryFolder temporary;
    MatlabStandIn matlab;
    const UnitModule module;
    const HostedUnit unit(module);
    ModelBag bag;
    bag.feeds({L"F1", L"F2"}).products({L"P1", L"P2"}).reports({L"R"}).script("");
    bag.parameter(L"r", L"real", Variant(1.5)).parameter(L"i", L"int", Variant(LONG{3}));
    bag.parameter(L"b", L"bool", Variant(true)).parameter(L"s", L"string", Variant(L"x"sv));
    unit.load(bag);
    for (const wchar_t* port : {L"F1", L"F2", L"P1", L"P2"})
        unit.connect(port, createStream(generation).get());
    matlab.onRun = [&](const std::wstring& folder) {
        RequestDoor door(folder);
        soakDoor(door, effort, effort.of(10000, 100000), figures);
        return MatlabAnswer();
    };
    unit.calculate(); // succeeds only where the last product that was set can be flashed
}

} // namespace

void soakRequests10(const Effort& effort, const Figures& figures) {
    soakRequests(host::Generation::v10, effort, figures);
}

void soakRequests11(const Effort& effort, const Figures& figures) {
    soakRequests(host::Generation::v11, effort, figures);
}

} // namespace solvane::soak
