#include "PortNames.h"

#include "com/Text.h"
#include "unit/model/Unit.h"

#include <algorithm>

namespace solvane {

bool isPortName(const Unit& unit, const std::wstring& name, const CPort* except) {
    return std::ranges::any_of(unit.allPorts(), [&](const ComRef<CPort>& port) {
        return port.get() != except && compareNoCase(port->componentName, name) == 0;
    });
}

std::wstring freePortName(const Unit& unit, const std::wstring& word) {
    for (int number = 1;; ++number) {
        std::wstring name = word + L' ' + std::to_wstring(number);
        if (!isPortName(unit, name))
            return name;
    }
}

std::wstring connectedName(const CPort& port) {
    // Held, since the host may disconnect it from inside a call.
    const ComRef<IUnknown> material(port.materialObject11
                                        ? static_cast<IUnknown*>(port.materialObject11.get())
                                        : port.materialObject10.get());
    const auto identification = material.as<ICapeIdentification>();
    if (!identification)
        return {};
    Bstr name;
    if (FAILED(identification->get_ComponentName(name.put())))
        return L"<unnamed>";
    return std::wstring(viewOf(name.get()));
}

} // namespace solvane
