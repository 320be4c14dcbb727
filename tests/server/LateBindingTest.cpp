// Late-bound calls, with and without a CAPE-OPEN type library on the machine.

#include "LateBound.h"
#include "RegistrySandbox.h"
#include "ServerTest.h"
#include "com/Registry.h"
#include "com/Text.h"
#include "com/Variant.h"

namespace solvane {

namespace {

template <class Interface>
LateBound scriptOf(const ComRef<Interface>& object) {
    return LateBound(object.get());
}
template <class Interface>
Variant get(const ComRef<Interface>& object, const wchar_t* name) {
    const LateBound::Call call = scriptOf(object).call(name, DISPATCH_PROPERTYGET);
    EXPECT_EQ(call.result, S_OK) << narrow(name);
    return call.value;
}

void usesEveryWayOfCalling(const UnitModule& module) {
    const ComRef<ICapeParameter> parameter = module.create<ICapeParameter>(parameterClass);
    const LateBound script = scriptOf(parameter);
    const Variant number(std::wstring_view(L"2.5")), one(LONG{1}), name(std::wstring_view(L"all"));
    EXPECT_EQ(script.call(L"value", DISPATCH_PROPERTYPUT, {number.get()}).result, S_OK);
    EXPECT_EQ(get(parameter, L"value").real(), 2.5);
    EXPECT_EQ(script.call(L"Reset", DISPATCH_METHOD).result, S_OK);
    BSTR message = nullptr;
    VARIANT place{};
    place.vt = VT_BYREF | VT_BSTR;
    place.pbstrVal = &message;
    EXPECT_EQ(script.call(L"Validate", DISPATCH_METHOD, {place}).value.boolean(), VARIANT_TRUE);

    const LateBound::Call refused = script.call(L"Mode", DISPATCH_PROPERTYPUT, {one.get()});
    EXPECT_EQ(refused.result, DISP_E_EXCEPTION);
    EXPECT_EQ(refused.code, capeFailure);
    EXPECT_EQ(refused.description, L"The mode of this parameter cannot be changed");
    EXPECT_EQ(get(parameter.as<ECapeRoot>(), L"name").text(), L"Access denied");
    EXPECT_EQ(get(parameter.as<ECapeUser>(), L"code").integer(), 0);
    EXPECT_EQ(script.call(L"value", DISPATCH_METHOD, {one.get()}).result, DISP_E_MEMBERNOTFOUND);

    DISPID id = 0;
    EXPECT_EQ(script.find(L"VALUE", id), S_OK);
    EXPECT_EQ(id, 2);
    EXPECT_EQ(script.find(L"valu", id), DISP_E_UNKNOWNNAME);
    EXPECT_EQ(script.find(L"ComponentName", id), DISP_E_UNKNOWNNAME);
    std::wstring known = L"value";
    LPOLESTR names[] = {known.data(), nullptr};
    DISPID ids[2] = {};
    EXPECT_EQ(parameter->GetIDsOfNames(IID_NULL, nullptr, 1, LOCALE_NEUTRAL, ids), E_POINTER);
    EXPECT_EQ(parameter->GetIDsOfNames(IID_NULL, names + 1, 1, LOCALE_NEUTRAL, ids), E_POINTER);
    EXPECT_EQ(parameter->GetIDsOfNames(IID_NULL, names, 2, LOCALE_NEUTRAL, ids), E_POINTER);
    EXPECT_EQ(parameter->GetIDsOfNames(IID_NULL, names, 1, LOCALE_NEUTRAL, nullptr), E_POINTER);

    // A failure without a text does not show the text of an earlier one.
    EXPECT_EQ(parameter->put_Mode(CAPE_INPUT), capeFailure);
    place.pbstrVal = nullptr;
    const LateBound::Call silent = scriptOf(parameter.as<ICapeRealParameterSpec>())
                                       .call(L"Validate", DISPATCH_METHOD, {place, Variant(1.0).get()});
    EXPECT_EQ(silent.code, E_POINTER);
    EXPECT_EQ(silent.description, L"");

    const auto collection = module.create<ICapeCollection>(parameterCollectionClass);
    const auto named = collection.as<ICapeIdentification>();
    EXPECT_EQ(scriptOf(named).call(L"ComponentName", DISPATCH_PROPERTYPUT, {name.get()}).result, S_OK);
    EXPECT_EQ(get(named, L"ComponentName").text(), L"all");
    EXPECT_EQ(scriptOf(collection).call(L"Item", DISPATCH_METHOD, {one.get()}).result, DISP_E_EXCEPTION);
    EXPECT_EQ(get(collection.as<ECapeUser>(), L"scope").text(), L"Item");
}

/// Sees only the type libraries that the test registers.
class LateBinding : public testing::Test {
protected:
    Apartment apartment;

    RegistrySandbox registry;
    UnitModule module;

    static void registerLibrary(const std::wstring& path) {
        const std::wstring key = L"TypeLib\\{4A5E2E81-C093-11D4-9F1B-0010A4D198C2}\\1.1";
        for (const wchar_t* platform : {L"\\0\\win32", L"\\0\\win64"})
            writeRegistryString(HKEY_CLASSES_ROOT, key + platform, L"", path);
    }
    static HRESULT findForeignName(const UnitModule& module) {
        DISPID id = 0;
        return scriptOf(module.create<ICapeIdentification>(portClass)).find(L"RegisteredElsewhere", id);
    }
};

TEST_F(LateBinding, worksOnABareMachine) {
    usesEveryWayOfCalling(module);
    EXPECT_EQ(findForeignName(module), DISP_E_UNKNOWNNAME);
}

TEST_F(LateBinding, worksWithTheRegisteredLibrary) {
    registerLibrary(UnitModule::builtPath() + L"\\2");
    usesEveryWayOfCalling(module);
}

TEST_F(LateBinding, prefersTheRegisteredLibrary) {
    registerLibrary(widen(SOLVANE_OTHER_LIBRARY));
    EXPECT_EQ(findForeignName(module), S_OK);
}

TEST_F(LateBinding, fallsBackToItsOwnLibrary) {
    registerLibrary(L"C:\\removed\\capeopen.tlb");
    usesEveryWayOfCalling(module);
}

} // namespace

} // namespace solvane
