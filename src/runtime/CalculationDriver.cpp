#include "CalculationDriver.h"

#include "CalculationLock.h"
#include "CommandChannel.h"
#include "RunScripts.h"
#include "com/Failure.h"
#include "com/Text.h"
#include "thermo/CalculationMaterial.h"
#include "thermo/CalculationRun.h"
#include "thermo/HostTexts.h"
#include "thermo/MaterialFlash.h"
#include "unit/model/Unit.h"
#include "unit/model/UnitActivity.h"

#include <algorithm>
#include <new>

namespace solvane {

namespace {

bool isEnding(const Unit& unit, std::wstring& error);
bool prepareScriptAndMaterial(CalculationRun& run, std::wstring& error);
bool runScript(CalculationRun& run, std::wstring& error);
bool judge(Unit& unit, std::wstring& error);

bool calculate(Unit& unit, std::wstring& error) {
    CalculationRun run(unit);
    if (!prepareScriptAndMaterial(run, error))
        return false;
    StdioFile initScript = openInitScript(unit, error);
    if (!initScript)
        return false;
    const CalculationLock calculationLock;
    if (isEnding(unit, error))
        return false;
    if (!readCompoundsAndPhases(run, error) || !finishInitScript(std::move(initScript), run, error))
        return false;
    return runScript(run, error) && judge(unit, error);
}

/// The host may have terminated the unit from a material, or while this thread waited.
bool isEnding(const Unit& unit, std::wstring& error) {
    if (unit.terminationAsked)
        error = widen(unit.startupError);
    return unit.terminationAsked;
}

bool prepareScriptAndMaterial(CalculationRun& run, std::wstring& error) {
    if (run.unit.scriptDirty) {
        if (!writeUnitScript(run.unit, error))
            return false;
        run.unit.scriptDirty = false;
    }
    return createCalculationMaterial(run, error);
}

/// False only if the script could not be started.
bool runScript(CalculationRun& run, std::wstring& error) {
    Unit& unit = run.unit;
    CommandChannel channel;
    if (!channel.open(run, error))
        return false;
    for (const ComRef<CPort>& product : unit.productPorts)
        product->product.specified = false;
    unit.workerCommand = WorkerCommand::run;
    SetEvent(unit.workerCommandEvent.get());
    channel.serve(run, error);
    return true;
}

// ---- the outcome of a run

/// The run script catches an error in the user's script and prints it after this marker.
constexpr std::wstring_view errorMarker = L"Evaluation error: ";
constexpr std::wstring_view endMarker = L"MATLAB done";

/// The lines of a message joined with ", ", without their indentation.
std::wstring joinLines(std::wstring_view message) {
    std::wstring joined;
    bool atLineStart = true;
    for (const wchar_t c : message) {
        if (c == L'\r')
            continue;
        if (c == L'\n') {
            if (!atLineStart)
                joined += L", ";
            atLineStart = true;
        } else if (!atLineStart || (c != L' ' && c != L'\t')) {
            joined += c;
            atLineStart = false;
        }
    }
    if (joined.size() > 2 && joined.ends_with(L", "))
        joined.resize(joined.size() - 2);
    return joined;
}

std::wstring numbered(std::size_t index, const CPort& port) {
    return std::to_wstring(index + 1) + L" (" + port.componentName + L")";
}

bool flashProducts(Unit& unit, std::wstring& error) {
    const std::vector<ComRef<CPort>> products = unit.productPorts; // the host may change them during a flash
    for (std::size_t i = 0; i < products.size(); ++i)
        if (!products[i]->product.specified)
            return fail(error, L"setProduct was not called for product " + numbered(i, *products[i]));
    for (std::size_t i = 0; i < products.size(); ++i) {
        if (isEnding(unit, error))
            return false;
        std::string flashError;
        if (!flashProductPort(*products[i], flashError))
            return fail(error, L"Failed to flash product " + numbered(i, *products[i]) + L": " +
                                   std::wstring(hostText(flashError).view()));
    }
    return true;
}

bool judge(Unit& unit, std::wstring& error) {
    if (unit.workerCommand != WorkerCommand::succeeded)
        return fail(error, unit.workerError);
    unit.outputText = std::move(unit.workerOutput);
    if (isEnding(unit, error))
        return false;
    const std::wstring& output = unit.outputText;
    const std::size_t marker = output.find(errorMarker);
    if (marker == std::wstring::npos)
        return flashProducts(unit, error);
    const std::size_t begin = marker + errorMarker.size();
    const std::size_t end = std::min(output.find(endMarker, begin), output.size());
    return fail(error, joinLines(std::wstring_view(output).substr(begin, end - begin)));
}

} // namespace

bool runCalculation(Unit& unit, std::wstring& error) {
    try {
        if (!mayBegin(unit, UnitActivity::running, error))
            return false;
        const ActivityScope scope(unit, UnitActivity::running);
        return calculate(unit, error);
    } catch (const std::bad_alloc&) {
        error = L"out of memory";
    } catch (const std::exception& exception) {
        error = widen(exception.what());
    }
    return false;
}

} // namespace solvane
