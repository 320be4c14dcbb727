// A host that only checks whether the unit exposes a property bag to it. Exits with 0 if it does, with 1 if
// it does not, and with 2 for any other fault of the unit.

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
