/// CapeOpenUnitMex, through which a script in Matlab or Octave reaches its unit operation.
///
///     CapeOpenUnitMex(1, unit_ID)           begins a run, from the run script
///     CapeOpenUnitMex(2)                    ends it
///     CapeOpenUnitMex('getFeedProp', ...)   a command: one row of the table in Commands.cpp
///
/// Users call the functions of the library (toolbox), which pass their arguments on to here. The interpreter
/// calls mexFunction on one thread only.
#include "BlockText.h"
#include "Commands.h"
#include "channel/ChannelFrame.h"
#include "channel/Hints.h"

#include <algorithm>
#include <exception>
#include <string>

namespace solvane::gateway {

namespace {

using Arguments = std::span<const mxArray* const>;
using Outputs = std::span<mxArray*>;

/// Messages about what a material answers, which do not say the name that it was asked for.
constexpr char invalidValues[] = "Invalid return values from ";
constexpr char noConstant[] =
    "the unit gave no answer: its material does not give this constant for all compounds";

/// Beside the commands: what setReport needs for its file.
constexpr std::string_view reportBytesName = "reportBytes";

std::unique_ptr<Run> currentRun;

/// Keeps the gateway and its run through a `clear all` in the user's script.
void keepLoaded(bool isWanted) {
    static bool isLocked = false;
    if (isWanted && !isLocked)
        mexLock();
    else if (!isWanted && isLocked)
        mexUnlock();
    isLocked = isWanted;
}

void closeRun() {
    currentRun.reset();
    if (!staysLoaded)
        keepLoaded(false);
}

/// A run that was never ended, since its script was broken off, gives way to the new one.
bool beginRun(const mxArray* unitIdText, std::string& error) {
    closeRun();
    std::string unitId;
    if (!readText(unitIdText, unitId, error)) {
        error = "unit_ID " + error;
        return false;
    }
    currentRun = openRun(unitId, error);
    if (!currentRun)
        return false;
    keepLoaded(true);
    return true;
}

bool endRun(std::string& error) {
    if (!currentRun) {
        error = "no run is open";
        return false;
    }
    closeRun();
    return true;
}

/// The two calls of the run script.
bool beginOrEndRun(Arguments arguments, std::string& error) {
    const double action = mxGetNumberOfElements(arguments[0]) == 1 ? mxGetScalar(arguments[0]) : 0;
    bool ok = false;
    if (action == 1 && arguments.size() == 2)
        ok = beginRun(arguments[1], error);
    else if (action == 2 && arguments.size() == 1)
        ok = endRun(error);
    else
        error = "Usage: CapeOpenUnitMex(1,unit_ID) begins a run, CapeOpenUnitMex(2) ends it";
    if (!ok)
        error = "CapeOpenUnitMex: " + error;
    return ok;
}

/// The bytes of a report's text in the code page in which the unit reads report.txt, as a row of numbers:
/// Matlab's own fopen can't be told the encoding in its older versions.
bool reportBytes(Arguments arguments, Outputs outputs, std::string& error) {
    std::string bytes;
    if (arguments.size() != 1 || !readText(arguments[0], bytes, error)) {
        error = "setReport: content " + (error.empty() ? "is missing" : error) +
                ". Usage: setReport(name, content)";
        return false;
    }
    outputs[0] = mxCreateDoubleMatrix(1, bytes.size(), mxREAL);
    for (std::size_t i = 0; i < bytes.size(); ++i)
        mxGetPr(outputs[0])[i] = static_cast<unsigned char>(bytes[i]);
    return true;
}

/// Packs the arguments. False with an error of the caller, which ends with the usage.
bool prepare(const Command& command, Arguments arguments, int outputCount, std::string& request,
             std::string& error) {
    const std::span<const Field> fields = command.usedFields();
    if (arguments.size() != fields.size())
        error = "expected " + std::to_string(fields.size()) + " arguments, got " +
                std::to_string(arguments.size());
    else if (outputCount > command.reply.outputs)
        error = "expected at most " + std::to_string(command.reply.outputs) + " outputs, got " +
                std::to_string(outputCount);
    else if (packRequest(command.code, fields, arguments, currentRun->compoundCount, request, error) &&
             request.size() > currentRun->blockSize)
        error = "the text is too long: the arguments take " + std::to_string(request.size()) +
                " bytes, and there is room for " + std::to_string(currentRun->blockSize);
    if (error.empty())
        return true;
    error = std::string(command.name) + ": " + error + ". Usage: " + command.usage;
    return false;
}

/// The end of the unit's message about a wrong argument: its limits, or what the script may have meant by a
/// name. `reply` has been read up to the message's end.
std::string suggestion(const Command& command, Arguments arguments, const std::string& message,
                       Reply& reply) {
    const std::string_view rest = reply.rest(hintSize);
    if (const std::string limits = readHint(rest, message); !limits.empty())
        return "; " + limits;
    const auto says = [&message](std::string_view text) { return message.find(text) != message.npos; };
    const bool isNameless = says(invalidValues) || says(noConstant);
    for (const Field& field : command.usedFields()) {
        std::string name;
        std::string ignored;
        if (field.names == NameKind::any || !readText(arguments[field.argument - 1], name, ignored))
            continue;
        std::string meant;
        if (field.names == NameKind::unitsOwn)
            meant = readHint(rest, name);
        else if (name.resize(std::min(name.find('.'), name.size())); // without the derivative
                 isNameless || says(name))
            meant = meantName(field.names, name);
        if (!meant.empty())
            return "; did you mean '" + meant + "'?";
    }
    return {};
}

/// Sends the request and reads the answer. Adds to the unit's message only what explains a wrong argument.
bool carryOut(const Command& command, Arguments arguments, const std::string& request, Outputs outputs,
              std::string& error) {
    const auto fail = [&](const std::string& reason) {
        error = std::string(command.name) + ": " + reason;
        return false;
    };
    std::string firstBytes;
    std::string reason;
    std::uint32_t status = statusFailure;
    if (!currentRun->transport->exchange(request, wantedBytes(command, *currentRun), firstBytes, reason))
        return fail(reason);
    Reply reply(*currentRun->transport, std::move(firstBytes));
    if (!reply.word(status, reason))
        return fail(reason);
    if (status == statusFailure) {
        std::string unitsText;
        if (!reply.text(unitsText, reason))
            return fail(reason);
        // An error without a text would be none to the interpreter.
        if (unitsText.empty())
            return fail("it failed, and the unit gave no reason");
        error = messageText(unitsText + suggestion(command, arguments, unitsText, reply));
        return false;
    }
    // Its code is still in the status word where the unit has not answered it.
    if (command.code == CommandCode::getCompoundConstant &&
        status == static_cast<std::uint32_t>(CommandCode::getCompoundConstant))
        return fail(noConstant + suggestion(command, arguments, noConstant, reply));
    return command.reply.unpack(reply, *currentRun, outputs, reason) || fail(reason);
}

bool serve(Arguments arguments, Outputs outputs, int outputCount, std::string& error) {
    if (!arguments.empty() && mxIsNumeric(arguments[0]))
        return beginOrEndRun(arguments, error);

    std::string name;
    if (arguments.empty() || !readText(arguments[0], name, error)) {
        error =
            "CapeOpenUnitMex: it is called by the functions of its library, such as getFeedProp, and wants "
            "the name of a command";
        return false;
    }
    const Command* command = findCommand(name);
    if (!command && name != reportBytesName) {
        error = messageText("CapeOpenUnitMex: there is no command '" + name + "'");
        return false;
    }
    if (!currentRun) {
        error = (command ? name : std::string("setReport")) +
                ": it can only be called from the script of a unit operation, while the unit calculates";
        return false;
    }
    if (!command)
        return reportBytes(arguments.subspan(1), outputs, error);
    std::string request;
    return prepare(*command, arguments.subspan(1), outputCount, request, error) &&
           carryOut(*command, arguments.subspan(1), request, outputs, error);
}

/// Doesn't return. Octave would set the gateway's name before a message of mexErrMsgTxt, so it runs its
/// `error`.
void raise(const char* message) {
    if (isMatlab()) {
        mexErrMsgTxt(message);
        return;
    }
    std::array<mxArray*, 2> arguments{mxCreateString("%s"), mxCreateString(message)};
    mexCallMATLAB(0, nullptr, arguments.size(), arguments.data(), "error");
}

} // namespace

} // namespace solvane::gateway

/// There is always room for one output, the `ans` of a call that asks for none.
SOLVANE_MEX_EXPORT void mexFunction(int outputCount, mxArray* outputs[], int argumentCount,
                                    const mxArray* arguments[]) {
    // An error jumps past destructors: the message outlives the call, all else has gone by then.
    static std::string error;
    error.clear();
    bool ok = false;
    try {
        const auto count = static_cast<std::size_t>(outputCount);
        ok = solvane::gateway::serve({arguments, static_cast<std::size_t>(argumentCount)},
                                     {outputs, count > 0 ? count : 1}, outputCount, error);
    } catch (const std::exception& exception) {
        error = exception.what();
    }
    if (!ok)
        solvane::gateway::raise(error.c_str());
}
