#pragma once

#include "CapeOpen.h"
#include "com/ComRef.h"
#include "com/Dispatch.h"
#include "com/Object.h"

#include <functional>
#include <string_view>

namespace solvane::host {

/// Takes a line (UTF-8) that a unit has to say.
using LogSink = std::function<void(std::string_view line)>;

/// The simulation context that a unit gets: its log. Messages that would pop up go to the log too. The sink
/// is called on the thread of the call.
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
