#pragma once

#include "FakeMaterial10.h"
#include "FakeMaterial11.h"
#include "HostTest.h"
#include "HostedUnit.h"
#include "com/VariantArray.h"

namespace solvane {

/// "name | description | scope | interface" of an object's last failure.
inline std::wstring errorOf(IUnknown* object) {
    return HostedUnit(ComRef<IUnknown>(object)).error();
}

/// A usable unit, with a Matlab that does nothing.
class UnitTest : public HostTest {
protected:
    void loadModel() {
        model.script("1;");
        ASSERT_EQ(unit.load(model), S_OK);
    }

    ComRef<ICapeCollection> parameters() const {
        ComRef<IDispatch> collection;
        EXPECT_EQ(unit.as<ICapeUtilities>()->get_parameters(collection.put()), S_OK);
        return collection.as<ICapeCollection>();
    }

    /// Empty if the collection rejects the item.
    static ComRef<IDispatch> item(const ComRef<ICapeCollection>& collection, const Variant& id) {
        ComRef<IDispatch> found;
        collection->Item(id.get(), found.put());
        return found;
    }

    template <class Interface = ICapeParameter>
    ComRef<Interface> parameter(const wchar_t* name) const {
        return item(parameters(), text(name)).as<Interface>();
    }

    /// A reference to a late-bound caller's variable.
    static VARIANT toVariable(Variant& variable, VARTYPE type = VT_VARIANT) {
        VARIANT reference{};
        reference.vt = static_cast<VARTYPE>(type | VT_BYREF);
        reference.byref = type == VT_VARIANT ? static_cast<void*>(variable.in()) : &variable.in()->byref;
        return reference;
    }
    static VARIANT toNothing(VARTYPE type) {
        VARIANT reference{};
        reference.vt = static_cast<VARTYPE>(type | VT_BYREF);
        return reference;
    }

    static Variant text(std::wstring_view value) { return Variant(value); }

    HostedUnit unit{module};
    ModelBag model;
};

} // namespace solvane
