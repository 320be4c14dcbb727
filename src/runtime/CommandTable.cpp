#include "CommandTable.h"

#include "UnitCommands.h"
#include "channel/ChannelFrame.h"
#include "thermo/CompoundCommands.h"
#include "thermo/FeedCommands.h"
#include "thermo/FlashCommands.h"
#include "thermo/PhasePropertyCommands.h"
#include "thermo/ProductCommands.h"

#include <array>
#include <cstdint>
#include <cstring>
#include <exception>
#include <string>

namespace solvane {

namespace {

using Handler = bool (*)(CalculationRun& run, RequestReader& request, ReplyWriter& reply, std::string& error);

/// The commands in the order of their codes, from 1.
constexpr std::array<Handler, 18> handlers{
    getFeedProp,
    setProduct,
    setReport,
    getParameter,
    setParameter,
    getCompoundConstant,
    getTDependentProperty,
    getPDependentProperty,
    getSinglePhaseProperty,
    getTwoPhaseProperty,
    getPropertyUnit,
    getUnitName,
    getFeedCount,
    getProductCount,
    getFeedEquilibrium,
    flashEquilibrium,
    flashProperty,
    logMessage,
};

bool dispatch(CalculationRun& run, std::span<std::byte> block, std::string& error) {
    std::uint32_t code = 0;
    std::memcpy(&code, block.data(), sizeof code);
    if (code < 1 || code > handlers.size()) {
        error = "Internal error: unknonw/undefined function call";
        return false;
    }
    RequestReader request(block);
    ReplyWriter reply(block);
    return handlers[code - 1](run, request, reply, error);
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
