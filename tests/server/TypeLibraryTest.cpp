// The two type libraries in the module.

#include "ServerTest.h"
#include "TypeLibraryText.h"
#include "com/Text.h"
#include "com/Variant.h"

namespace solvane {

namespace {

ComRef<ITypeLib> loadTypeLibrary(int resource) {
    ComRef<ITypeLib> library;
    const std::wstring path = UnitModule::builtPath() + L"\\" + std::to_wstring(resource);
    EXPECT_EQ(LoadTypeLibEx(path.c_str(), REGKIND_NONE, library.put()), S_OK);
    return library;
}

struct LibraryFacts {
    std::wstring name;
    std::wstring help;
    GUID id{};
    WORD major = 0;
    WORD minor = 0;
};

LibraryFacts factsOf(ITypeLib* library) {
    Bstr name, help;
    library->GetDocumentation(MEMBERID_NIL, name.put(), help.put(), nullptr, nullptr);
    TLIBATTR* attributes = nullptr;
    library->GetLibAttr(&attributes);
    const LibraryFacts facts{std::wstring(name.view()), std::wstring(help.view()), attributes->guid,
                             attributes->wMajorVerNum, attributes->wMinorVerNum};
    library->ReleaseTLibAttr(attributes);
    return facts;
}

TEST(TypeLibraries, theFirstHoldsTheFourClasses) {
    const ComRef<ITypeLib> library = loadTypeLibrary(1);
    ASSERT_TRUE(library);
    const LibraryFacts facts = factsOf(library.get());
    EXPECT_EQ(facts.name, L"SolvaneUnitOperationLib");
    EXPECT_EQ(facts.help, L"SolvaneUnitOperation 1.0 Type Library");
    EXPECT_TRUE(facts.id == typeLibraryId);
    EXPECT_EQ(facts.major, 1);
    EXPECT_EQ(facts.minor, 0);

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

// Hosts bind to the published order and ids.
TEST(TypeLibraries, theSecondHoldsTheInterfacesAsPublished) {
    const ComRef<ITypeLib> library = loadTypeLibrary(2);
    ASSERT_TRUE(library);
    const LibraryFacts facts = factsOf(library.get());
    EXPECT_EQ(facts.name, L"CAPEOPEN110");
    const GUID published{0x4A5E2E81, 0xC093, 0x11D4, {0x9F, 0x1B, 0x00, 0x10, 0xA4, 0xD1, 0x98, 0xC2}};
    EXPECT_TRUE(facts.id == published);
    EXPECT_EQ(facts.major, 1);
    EXPECT_EQ(facts.minor, 1);

    const auto wanted = readTypeTable(SOLVANE_TYPE_TABLE);
    auto found = describeTypeLibrary(library.get());
    ASSERT_EQ(wanted.size(), 70u);
    for (const auto& [type, operations] : wanted) {
        EXPECT_EQ(found.count(type), 1u) << type;
        EXPECT_EQ(found[type], operations) << type;
        found.erase(type);
    }
    for (const auto& [type, operations] : found)
        ADD_FAILURE() << "not among the published: " << type;
}

} // namespace

} // namespace solvane
