#include "CommandTable.h"

#include "UnitCommands.h"
#include "channel/ChannelFrame.h"
#include "channel/CommandCode.h"
#include "channel/Hints.h"
#include "com/Failure.h"
#include "com/Text.h"
#include "thermo/CalculationRun.h"
#include "thermo/CompoundCommands.h"
#include "thermo/FeedCommands.h"
#include "thermo/FlashCommands.h"
#include "thermo/PhasePropertyCommands.h"
#include "thermo/ProductCommands.h"
#include "unit/model/Unit.h"

#include <array>
#include <cstdint>
#include <cstring>
#include <exception>
#include <string>
#include <string_view>
#include <vector>

namespace solvane {

namespace {

using Handler = bool (*)(CalculationRun& run, RequestReader& request, ReplyWriter& reply, std::string& error);

struct Command {
    CommandCode code;
    Handler carryOut;
};

/// In the order of their codes, which the look-up relies on.
constexpr std::array<Command, commandCount> commands{{
    {CommandCode::getFeedProp, getFeedProp},
    {CommandCode::setProduct, setProduct},
    {CommandCode::setReport, setReport},
    {CommandCode::getParameter, getParameter},
    {CommandCode::setParameter, setParameter},
    {CommandCode::getCompoundConstant, getCompoundConstant},
    {CommandCode::getTDependentProperty, getTDependentProperty},
    {CommandCode::getPDependentProperty, getPDependentProperty},
    {CommandCode::getSinglePhaseProperty, getSinglePhaseProperty},
    {CommandCode::getTwoPhaseProperty, getTwoPhaseProperty},
    {CommandCode::getPropertyUnit, getPropertyUnit},
    {CommandCode::getUnitName, getUnitName},
    {CommandCode::getFeedCount, getFeedCount},
    {CommandCode::getProductCount, getProductCount},
    {CommandCode::getFeedEquilibrium, getFeedEquilibrium},
    {CommandCode::flashEquilibrium, flashEquilibrium},
    {CommandCode::flashProperty, flashProperty},
    {CommandCode::logMessage, logMessage},
}};
static_assert([] {
    for (std::size_t row = 0; row < commands.size(); ++row)
        if (static_cast<std::size_t>(commands[row].code) != row + 1)
            return false;
    return true;
}());

bool dispatch(CalculationRun& run, std::span<std::byte> block, std::string& error) {
    std::uint32_t code = 0;
    std::memcpy(&code, block.data(), sizeof code);
    if (code < 1 || code > commands.size())
        return fail(
            error,
            "Internal error: unknonw/undefined function call"); // prescribed text, misspelling included
    RequestReader request(block);
    ReplyWriter reply(block);
    return commands[code - 1].carryOut(run, request, reply, error);
}

/// The limits that a script's argument exceeds, or what it may have meant by a wrong name of a parameter
/// or report.
void addHint(const CalculationRun& run, std::string_view error, std::span<std::byte> block) {
    if (!run.hint.empty())
        return writeHint(block, error, run.hint);
    std::string_view wrong = error;
    const auto isAbout = [&wrong](std::string_view refusal) {
        const bool is = wrong.starts_with(refusal);
        wrong.remove_prefix(is ? refusal.size() : 0);
        return is;
    };
    std::vector<std::string> names;
    if (isAbout("Invalid parameter name: "))
        for (const ComRef<CParameter>& parameter : run.unit.parameters)
            names.push_back(narrow(parameter->componentName));
    else if (isAbout("Invalid report name: "))
        for (const std::wstring& report : run.unit.reportNames)
            names.push_back(narrow(report));
    if (const std::string meant = probableName(names, wrong); !meant.empty())
        writeHint(block, wrong, meant);
}

} // namespace

void carryOutCommand(CalculationRun& run, std::span<std::byte> block) noexcept {
    try {
        std::string error;
        run.hint.clear();
        if (!dispatch(run, block, error)) {
            SetChannelError(block, error);
            addHint(run, error, block);
        }
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
