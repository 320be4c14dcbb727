#include "PortNames.h"

#include "com/Text.h"
#include "unit/CSolvaneUnitOp.h"

#include <algorithm>

namespace solvane {

bool isPortName(const CSolvaneUnitOp& unit, const std::wstring& name, const CPort* except) {
    return std::ranges::any_of(unit.allPorts(), [&](const ComRef<CPort>& port) {
        return port.get() != except && compareNoCase(port->componentName, name) == 0;
    });
}

std::wstring freePortName(const CSolvaneUnitOp& unit, const std::wstring& word) {
    for (int number = 1;; ++number) {
        std::wstring name = word + L' ' + std::to_wstring(number);
        if (!isPortName(unit, name))
            return name;
    }
}

std::wstring connectedName(const CPort& port) {
    IUnknown* material = port.materialObject11.get();
    if (!material)
        material = port.materialObject10.get();
    const auto identification = queryInterface<ICapeIdentification>(material);
    if (!identification)
        return {};
    Bstr name;
    if (FAILED(identification->get_ComponentName(name.put())))
        return L"<unnamed>";
    return std::wstring(viewOf(name.get()));
}

} // namespace solvane
