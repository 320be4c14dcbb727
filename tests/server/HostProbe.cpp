// A host whose only question is whether the unit offers it a property bag. It exits with 0 where it does,
// with 1 where it doesn't, and with 2 where the unit is not as it should be otherwise.

#include "UnitModule.h"

#include <ocidl.h>

#include <exception>

using namespace solvane;

namespace {

int probe() {
    const UnitModule module(UnitModule::builtPath());
    const ComRef<IUnknown> unit = module.createUnit();
    if (!unit || !unit.as<IPersistStream>())
        return 2;
    ComRef<IUnknown> bag;
    const HRESULT asked = unit->QueryInterface(IID_IPersistPropertyBag, bag.putVoid());
    if (asked == S_OK && bag)
        return 0;
    return asked == E_NOINTERFACE && !bag ? 1 : 2;
}

} // namespace

int main() {
    CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED);
    try {
        return probe();
    } catch (const std::exception&) {
        return 2;
    }
}
