#pragma once

#include "CapeOpen.h"
#include "com/ComRef.h"
#include "com/Dispatch.h"
#include "com/Object.h"

#include <functional>
#include <string_view>

namespace solvane::host {

/// Receives a log line (UTF-8) of a unit.
using LogSink = std::function<void(std::string_view line)>;

/// The simulation context of a unit: its log, which also receives the messages that would pop up. The sink is
/// called on the thread of the call.
class SimulationContext : public DispatchImpl<ICapeSimulationContext>,
                          public DispatchImpl<ICapeDiagnostic>,
                          public CComObjectRoot {
public:
    static ComRef<IDispatch> create(LogSink sink);
    static std::span<const InterfaceEntry> interfaceTable();

    // ICapeDiagnostic
    STDMETHODIMP PopUpMessage(BSTR message) override { return LogMessage(message); }
    STDMETHODIMP LogMessage(BSTR message) override;

private:
    LogSink sink_;
};

} // namespace solvane::host
