// The identification of each object, and its last failure.

#include "UnitTest.h"

#include "unit/ClassIds.h"

#include <ocidl.h>

namespace solvane {
namespace {

template <class Interface>
std::wstring textOf(const ComRef<Interface>& object, HRESULT (STDMETHODCALLTYPE Interface::*getter)(BSTR*)) {
    EXPECT_EQ((object.get()->*getter)(nullptr), E_POINTER);
    Bstr text;
    EXPECT_EQ((object.get()->*getter)(text.put()), S_OK);
    EXPECT_NE(text.get(), nullptr) << "a text of the caller's own, even an empty one";
    return std::wstring(text.view());
}

class Identity : public UnitTest {
protected:
    Identity() {
        model.feeds({L"Feed"}).parameter(L"P", L"real", Variant(1.0));
        loadModel();
        port = item(unit.as<ICapeCollection>(), Variant(LONG{1})).as<ICapeUnitPort>();
    }

    ComRef<ICapeUnitPort> port;
};

TEST_F(Identity, letsTheHostReplaceNamesAndDescriptions) {
    const struct {
        ComRef<ICapeIdentification> object;
        std::wstring name, description;
    } cases[] = {
        {unit.as<ICapeIdentification>(), L"Solvane Unit Operation",
         L"Unit operation using Matlab script for calculations"},
        {port.as<ICapeIdentification>(), L"Feed", L""},
        {parameter<ICapeIdentification>(L"P"), L"P", L"Solvane unit operation parameter"},
        {parameters().as<ICapeIdentification>(), L"ParameterCollection",
         L"Solvane Unit Operation Parameter Collection"},
    };
    for (const auto& row : cases) {
        const auto nameOf = [&] { return textOf(row.object, &ICapeIdentification::get_ComponentName); };
        const auto descriptionOf = [&] {
            return textOf(row.object, &ICapeIdentification::get_ComponentDescription);
        };
        EXPECT_EQ(nameOf(), row.name);
        EXPECT_EQ(descriptionOf(), row.description);
        const Bstr name(std::wstring_view(L"T\u00e4g\0 1", 6));
        EXPECT_EQ(row.object->put_ComponentName(name.get()), S_OK);
        EXPECT_EQ(row.object->put_ComponentDescription(Bstr(L"new").get()), S_OK);
        EXPECT_EQ(nameOf(), name.view());
        EXPECT_EQ(descriptionOf(), L"new");
        EXPECT_EQ(row.object->put_ComponentName(nullptr), S_OK);
        EXPECT_EQ(row.object->put_ComponentDescription(nullptr), S_OK);
        EXPECT_EQ(nameOf(), L"");
        EXPECT_EQ(descriptionOf(), L"");
    }
    EXPECT_EQ(unit.as<IPersistStream>()->IsDirty(), S_FALSE) << "a name is no change of the model";
}

TEST_F(Identity, keepsAFailurePerObject) {
    ComRef<IDispatch> ignored;
    port->get_connectedObject(ignored.put());
    parameters()->Item(Variant(LONG{9}).get(), ignored.put());
    const auto user = port.as<ECapeUser>();
    EXPECT_EQ(textOf(port.as<ECapeRoot>(), &ECapeRoot::get_name), L"Not connected");
    EXPECT_EQ(textOf(user, &ECapeUser::get_description), L"Port is not connected");
    EXPECT_EQ(textOf(user, &ECapeUser::get_scope), L"get_connectedObject");
    EXPECT_EQ(textOf(user, &ECapeUser::get_interfaceName), L"ICapeUnitPort");
    EXPECT_EQ(textOf(user, &ECapeUser::get_operation), L"N/A");
    EXPECT_EQ(textOf(user, &ECapeUser::get_moreInfo), L"");
    EXPECT_EQ(user->get_code(nullptr), E_POINTER);
    EXPECT_TRUE(errorOf(parameters().get()).starts_with(L"Parameter index out of range | "));
    EXPECT_EQ(unit.error(), L" |  |  | ");
}

TEST_F(Identity, returnsTheClassFromBothPersistences) {
    const ComRef<IPersist> persistences[] = {ComRef<IPersist>(unit.as<IPersistStream>().get()),
                                             ComRef<IPersist>(unit.as<IPersistPropertyBag>().get())};
    for (const ComRef<IPersist>& persist : persistences) {
        CLSID classId{};
        EXPECT_EQ(persist->GetClassID(&classId), S_OK);
        EXPECT_TRUE(classId == solvaneUnitOpClass);
        EXPECT_EQ(persist->GetClassID(nullptr), E_POINTER);
    }
}

} // namespace
} // namespace solvane
