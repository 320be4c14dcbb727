#include "UnitCommands.h"

#include "WorkingFile.h"
#include "channel/ChannelFrame.h"
#include "com/Failure.h"
#include "com/Text.h"
#include "thermo/CalculationRun.h"
#include "unit/model/ReportNames.h"
#include "unit/model/Unit.h"

namespace solvane {

bool setReport(CalculationRun& run, RequestReader& request, ReplyWriter& reply, std::string& error) {
    const std::string name = request.text();
    const std::wstring wideName = widen(name);
    if (isOutputReport(wideName))
        return fail(error, "Cannot write to the Matlab output report");
    const auto index = findReport(run.unit, wideName);
    if (!index)
        return fail(error, "Invalid report name: " + name);
    run.unit.reportTexts[*index] = readWorkingFile(run.unit, "report.txt");
    reply.success();
    return true;
}

bool getUnitName(CalculationRun& run, RequestReader&, ReplyWriter& reply, std::string&) {
    reply.success();
    reply.text(narrow(run.unit.componentName));
    return true;
}

bool getFeedCount(CalculationRun& run, RequestReader&, ReplyWriter& reply, std::string&) {
    reply.success();
    reply.unsignedInteger(static_cast<std::uint32_t>(run.unit.feedPorts.size()));
    return true;
}

bool getProductCount(CalculationRun& run, RequestReader&, ReplyWriter& reply, std::string&) {
    reply.success();
    reply.unsignedInteger(static_cast<std::uint32_t>(run.unit.productPorts.size()));
    return true;
}

bool logMessage(CalculationRun& run, RequestReader& request, ReplyWriter& reply, std::string&) {
    // Without a text or a log, writes no status: the gateway takes that as success.
    const std::wstring text = widen(request.text());
    const ComRef<ICapeDiagnostic> log = text.empty() ? ComRef<ICapeDiagnostic>() : run.unit.hostLog();
    if (!log)
        return true;
    log->LogMessage(Bstr(text).get());
    reply.success();
    return true;
}

} // namespace solvane
