// Late-bound calls, with and without a CAPE-OPEN type library on the machine.

#include "RegistrySandbox.h"
#include "ServerTest.h"
#include "com/Registry.h"
#include "com/Text.h"
#include "com/Variant.h"

namespace solvane {

namespace {

constexpr auto failure = static_cast<HRESULT>(0x80040501);

/// A caller that knows names only, as a script does.
class Script {
public:
    explicit Script(ComRef<IDispatch> object) : object_(std::move(object)) {}

    HRESULT find(const wchar_t* name, DISPID& id) const {
        LPOLESTR names[] = {const_cast<LPOLESTR>(name)};
        return object_->GetIDsOfNames(IID_NULL, names, 1, LOCALE_NEUTRAL, &id);
    }

    HRESULT call(const wchar_t* name, WORD kind, std::vector<VARIANT> reversedArguments,
                 VARIANT* result = nullptr, EXCEPINFO* exception = nullptr) const {
        DISPID id = 0;
        if (const HRESULT found = find(name, id); FAILED(found))
            return found;
        DISPID put = DISPID_PROPERTYPUT;
        DISPPARAMS parameters{reversedArguments.data(), nullptr, static_cast<UINT>(reversedArguments.size()),
                              0};
        if (kind == DISPATCH_PROPERTYPUT) {
            parameters.rgdispidNamedArgs = &put;
            parameters.cNamedArgs = 1;
        }
        return object_->Invoke(id, IID_NULL, LOCALE_NEUTRAL, kind, &parameters, result, exception, nullptr);
    }
    Variant get(const wchar_t* name) const {
        Variant result;
        EXPECT_EQ(call(name, DISPATCH_PROPERTYGET, {}, result.put()), S_OK) << narrow(name);
        return result;
    }

private:
    ComRef<IDispatch> object_;
};

template <class Interface>
Script scriptOf(const ComRef<Interface>& object) {
    return Script(ComRef<IDispatch>(object.get()));
}

void usesEveryWayOfCalling(const UnitModule& module) {
    const ComRef<ICapeParameter> parameter = module.create<ICapeParameter>(parameterClass);
    const Script script = scriptOf(parameter);
    EXPECT_EQ(script.call(L"value", DISPATCH_PROPERTYPUT, {Variant(std::wstring_view(L"2.5")).get()}), S_OK);
    EXPECT_EQ(script.get(L"value").real(), 2.5);
    EXPECT_EQ(script.call(L"Reset", DISPATCH_METHOD, {}), S_OK);
    Variant valid;
    BSTR message = nullptr;
    VARIANT place{};
    place.vt = VT_BYREF | VT_BSTR;
    place.pbstrVal = &message;
    EXPECT_EQ(script.call(L"Validate", DISPATCH_METHOD, {place}, valid.put()), S_OK);
    EXPECT_EQ(valid.boolean(), VARIANT_TRUE);

    EXCEPINFO exception{};
    EXPECT_EQ(script.call(L"Mode", DISPATCH_PROPERTYPUT, {Variant(LONG{1}).get()}, nullptr, &exception),
              DISP_E_EXCEPTION);
    EXPECT_EQ(exception.scode, failure);
    EXPECT_EQ(scriptOf(parameter.as<ECapeRoot>()).get(L"name").text(), L"Access denied");
    EXPECT_EQ(scriptOf(parameter.as<ECapeUser>()).get(L"code").integer(), 0);
    EXPECT_EQ(script.call(L"value", DISPATCH_METHOD, {Variant(1.0).get()}), DISP_E_MEMBERNOTFOUND);

    DISPID id = 0;
    EXPECT_EQ(script.find(L"VALUE", id), S_OK);
    EXPECT_EQ(id, 2);
    EXPECT_EQ(script.find(L"valu", id), DISP_E_UNKNOWNNAME);
    EXPECT_EQ(script.find(L"ComponentName", id), DISP_E_UNKNOWNNAME);

    const auto collection = module.create<ICapeCollection>(parameterCollectionClass);
    const Script named = scriptOf(collection.as<ICapeIdentification>());
    EXPECT_EQ(named.call(L"ComponentName", DISPATCH_PROPERTYPUT, {Variant(std::wstring_view(L"all")).get()}),
              S_OK);
    EXPECT_EQ(named.get(L"ComponentName").text(), L"all");
    EXPECT_EQ(scriptOf(collection).call(L"Item", DISPATCH_METHOD, {Variant(LONG{1}).get()}, valid.put()),
              DISP_E_EXCEPTION);
    EXPECT_EQ(scriptOf(collection.as<ECapeUser>()).get(L"scope").text(), L"Item");
}

/// Finds no registered library but those that the test registers.
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

TEST_F(LateBinding, takesTheRegisteredLibraryBeforeItsOwn) {
    registerLibrary(widen(SOLVANE_OTHER_LIBRARY));
    EXPECT_EQ(findForeignName(module), S_OK);
}

TEST_F(LateBinding, aRegisteredLibraryThatIsGoneIsReplacedByItsOwn) {
    registerLibrary(L"C:\\removed\\capeopen.tlb");
    usesEveryWayOfCalling(module);
}

} // namespace

} // namespace solvane
