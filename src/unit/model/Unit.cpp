#include "Unit.h"

#include "ReportNames.h"

#include <utility>

namespace solvane {

Unit::Unit() : numericLocale(_create_locale(LC_NUMERIC, "C")) {
    componentName = L"Solvane Unit Operation";
    componentDescription = L"Unit operation using Matlab script for calculations";
    selectedReport = outputReportName;
    outputText = L"Unit operation has not yet been run...";
}

void Unit::clear() {
    scriptDirty = true;
    echoLevel = 0;
    invalidate();
    releaseParameters();
    releasePorts();
    for (const std::string& name : std::exchange(additionalFiles, {})) {
        const std::string path = workingFolder.pathOf(name);
        if (DeleteFileA(path.c_str()) || GetLastError() != ERROR_ACCESS_DENIED)
            continue;
        SetFileAttributesA(path.c_str(), FILE_ATTRIBUTE_NORMAL); // it may be read-only
        DeleteFileA(path.c_str());
    }
}

void Unit::clearReports() {
    reportNames.clear();
    reportTexts.clear();
    selectedReport.clear();
    outputText.clear();
}

ComRef<CPort> Unit::CreatePort(bool isFeed, const std::wstring& name) {
    ComRef<CPort> port(new CComObject<CPort>());
    port->isFeed = isFeed;
    port->ownerUnit = this;
    port->componentName = name;
    return port;
}

ComRef<CParameter> Unit::CreateParameter(ParameterKind kind, bool isInput, const std::wstring& name) {
    ComRef<CParameter> parameter(new CComObject<CParameter>());
    parameter->ownerUnit = this;
    parameter->parameterKind = kind;
    parameter->isInput = isInput;
    parameter->componentName = name;
    parameter->componentDescription = L"Solvane unit operation parameter";
    return parameter;
}

void Unit::releasePorts() {
    for (auto* ports : {&feedPorts, &productPorts})
        for (const ComRef<CPort>& port : std::exchange(*ports, {})) { // a material's release may call
            port->Disconnect();
            port->ownerUnit = nullptr;
        }
}

void Unit::releaseParameters() {
    for (const ComRef<CParameter>& parameter : parameters)
        parameter->ownerUnit = nullptr;
    parameters.clear();
}

ComRef<ICapeDiagnostic> Unit::hostLog() {
    if (!diagnostic) {
        const ComRef<IDispatch> context = simulationContext; // the host may replace it meanwhile
        diagnostic = context.as<ICapeDiagnostic>();
    }
    return diagnostic;
}

std::vector<ComRef<CPort>> Unit::allPorts() const {
    std::vector<ComRef<CPort>> ports = feedPorts;
    ports.insert(ports.end(), productPorts.begin(), productPorts.end());
    return ports;
}

} // namespace solvane
