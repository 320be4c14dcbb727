#include "SimulationContext.h"

#include "com/Text.h"
#include "com/Variant.h"

#include <array>

namespace solvane::host {

ComRef<IDispatch> SimulationContext::create(LogSink sink) {
    const ComRef context(new CComObject<SimulationContext>());
    context->sink_ = std::move(sink);
    return ComRef<IDispatch>(static_cast<ICapeSimulationContext*>(context.get()));
}

std::span<const InterfaceEntry> SimulationContext::interfaceTable() {
    static constexpr std::array table{
        interfaceEntry<SimulationContext, IDispatch, ICapeSimulationContext>(),
        interfaceEntry<SimulationContext, ICapeSimulationContext>(),
        interfaceEntry<SimulationContext, ICapeDiagnostic>(),
    };
    return table;
}

STDMETHODIMP SimulationContext::LogMessage(BSTR message) {
    return border([&]() -> HRESULT {
        sink_(narrow(viewOf(message), CP_UTF8));
        return S_OK;
    });
}

} // namespace solvane::host
