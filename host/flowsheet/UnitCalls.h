/// The calls on a unit that is ready: connecting its ports, validating, calculating, and reading its results.
/// They work on the unit itself and on a proxy of it. Each returns false with a text that names the failed
/// call and includes the unit's message.
#pragma once

#include "CapeOpen.h"
#include "com/ComRef.h"
#include "results/RunResults.h"

#include <string>
#include <vector>

namespace solvane::host {

/// A material and the port that it belongs to.
struct Connection {
    std::string port; ///< UTF-8
    ComRef<IDispatch> material;
};

/// "Connect failed: " and the text of the object that the call was made on.
std::string callFailure(const std::string& call, IUnknown* object, HRESULT result);
/// For `return callFailed(...)`: puts that text into `error` and is always false.
bool callFailed(std::string& error, const std::string& call, IUnknown* object, HRESULT result);

/// Reads the names of the ports in the unit's order.
bool readPorts(ICapeUnit* unit, std::vector<std::string>& feeds, std::vector<std::string>& products,
               std::string& error);
bool connectPorts(ICapeUnit* unit, const std::vector<Connection>& connections, std::string& error);
bool disconnectPorts(ICapeUnit* unit, const std::vector<Connection>& connections, std::string& error);
bool validate(ICapeUnit* unit, std::string& error);
bool calculate(ICapeUnit* unit, std::string& error);

/// No names for a unit that has no reports.
bool readReportNames(ICapeUnit* unit, std::vector<std::string>& names, std::string& error);
bool readReports(ICapeUnit* unit, std::vector<ReportResult>& reports, std::string& error);

} // namespace solvane::host
