#include "CommandTable.h"

#include "UnitCommands.h"
#include "channel/ChannelFrame.h"
#include "thermo/FeedCommands.h"
#include "thermo/FlashCommands.h"
#include "thermo/ProductCommands.h"

#include <array>
#include <cstdint>
#include <cstring>
#include <exception>
#include <string>

namespace solvane {

namespace {

using Handler = bool (*)(CalculationRun& run, RequestReader& request, ReplyWriter& reply, std::string& error);

struct Command {
    const char* name;
    Handler handler; ///< null: not available yet
};

/// The commands in the order of their codes, from 1.
constexpr std::array<Command, 18> commands{{
    {"getFeedProp", getFeedProp},
    {"setProduct", setProduct},
    {"setReport", setReport},
    {"getParameter", getParameter},
    {"setParameter", setParameter},
    {"getCompoundConstant", nullptr},
    {"getTDependentProperty", nullptr},
    {"getPDependentProperty", nullptr},
    {"getSinglePhaseProperty", nullptr},
    {"getTwoPhaseProperty", nullptr},
    {"getPropertyUnit", getPropertyUnit},
    {"getUnitName", getUnitName},
    {"getFeedCount", getFeedCount},
    {"getProductCount", getProductCount},
    {"getFeedEquilibrium", getFeedEquilibrium},
    {"flashEquilibrium", flashEquilibrium},
    {"flashProperty", flashProperty},
    {"logMessage", logMessage},
}};

bool dispatch(CalculationRun& run, std::span<std::byte> block, std::string& error) {
    std::uint32_t code = 0;
    std::memcpy(&code, block.data(), sizeof code);
    if (code < 1 || code > commands.size()) {
        error = "Internal error: unknonw/undefined function call";
        return false;
    }
    const Command& command = commands[code - 1];
    if (!command.handler) {
        error = std::string(command.name) + " is not available in this version";
        return false;
    }
    RequestReader request(block);
    ReplyWriter reply(block);
    return command.handler(run, request, reply, error);
}

} // namespace

void carryOutCommand(CalculationRun& run, std::span<std::byte> block) noexcept {
    try {
        std::string error;
        if (!dispatch(run, block, error))
            SetChannelError(block, error);
    } catch (const std::exception& exception) {
        const char* text = exception.what();
        SetChannelError(block, text && *text ? text : "Unknown exception");
    } catch (const char* text) {
        SetChannelError(block, text);
    } catch (...) {
        SetChannelError(block, "unhandled exception");
    }
}

} // namespace solvane
