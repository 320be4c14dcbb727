// The two type libraries in the module.

#include "ServerTest.h"
#include "com/Variant.h"

namespace solvane {

namespace {

ComRef<ITypeLib> loadTypeLibrary(int resource) {
    ComRef<ITypeLib> library;
    const std::wstring path = UnitModule::builtPath() + L"\\" + std::to_wstring(resource);
    EXPECT_EQ(LoadTypeLibEx(path.c_str(), REGKIND_NONE, library.put()), S_OK);
    return library;
}

/// "Name 1.0 {id}"
std::wstring identityOf(ITypeLib* library) {
    Bstr name;
    library->GetDocumentation(MEMBERID_NIL, name.put(), nullptr, nullptr, nullptr);
    TLIBATTR* attributes = nullptr;
    library->GetLibAttr(&attributes);
    wchar_t id[40];
    StringFromGUID2(attributes->guid, id, 40);
    const std::wstring version =
        std::to_wstring(attributes->wMajorVerNum) + L'.' + std::to_wstring(attributes->wMinorVerNum);
    library->ReleaseTLibAttr(attributes);
    return std::wstring(name.view()) + L' ' + version + L' ' + id;
}

TEST(TypeLibraries, holdTheFourClassesInTheFirst) {
    const ComRef<ITypeLib> library = loadTypeLibrary(1);
    ASSERT_TRUE(library);
    EXPECT_EQ(identityOf(library.get()),
              L"SolvaneUnitOperationLib 1.0 {5C7A1E24-93B4-4D0E-8A61-2F0D7B9C41E3}");

    const struct {
        const wchar_t* name;
        CLSID id;
    } classes[] = {{L"SolvaneUnitOp", solvaneUnitOpClass},
                   {L"Port", portClass},
                   {L"ParameterCollection", parameterCollectionClass},
                   {L"Parameter", parameterClass}};
    ASSERT_EQ(library->GetTypeInfoCount(), std::size(classes));
    for (UINT i = 0; i < std::size(classes); ++i) {
        ComRef<ITypeInfo> type;
        ASSERT_EQ(library->GetTypeInfo(i, type.put()), S_OK);
        Bstr name, help;
        type->GetDocumentation(MEMBERID_NIL, name.put(), help.put(), nullptr, nullptr);
        EXPECT_EQ(name.view(), classes[i].name);
        EXPECT_EQ(help.view(), std::wstring(classes[i].name) + L" Class");
        TYPEATTR* attributes = nullptr;
        ASSERT_EQ(type->GetTypeAttr(&attributes), S_OK);
        EXPECT_EQ(attributes->typekind, TKIND_COCLASS);
        EXPECT_TRUE(attributes->guid == classes[i].id);
        type->ReleaseTypeAttr(attributes);
    }
}

// As CapeOpen.idl defines them.
TEST(TypeLibraries, holdTheInterfacesInTheSecond) {
    const ComRef<ITypeLib> library = loadTypeLibrary(2);
    ASSERT_TRUE(library);
    EXPECT_EQ(identityOf(library.get()), L"CAPEOPEN110 1.1 {4A5E2E81-C093-11D4-9F1B-0010A4D198C2}");
    EXPECT_EQ(library->GetTypeInfoCount(), 70u);
}

} // namespace

} // namespace solvane
