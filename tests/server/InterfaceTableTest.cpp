// The interfaces of each class, and their common identity.

#include "ServerTest.h"

#include <algorithm>
#include <ocidl.h>

namespace solvane {

namespace {

struct NamedInterface {
    const char* name;
    IID id;
    bool isDual = true;
};

#define INTERFACE_ROW(name)                                                                                  \
    NamedInterface {                                                                                         \
        #name, __uuidof(name)                                                                                \
    }

/// All interfaces of the classes, and some that no class has.
const NamedInterface interfaces[] = {
    INTERFACE_ROW(ICapeCollection),
    INTERFACE_ROW(ICapeUnit),
    INTERFACE_ROW(ICapeUnitReport),
    INTERFACE_ROW(ICapeUtilities),
    INTERFACE_ROW(ICapeUnitPort),
    INTERFACE_ROW(ICapeParameter),
    INTERFACE_ROW(ICapeParameterSpec),
    INTERFACE_ROW(ICapeRealParameterSpec),
    INTERFACE_ROW(ICapeIntegerParameterSpec),
    INTERFACE_ROW(ICapeOptionParameterSpec),
    INTERFACE_ROW(ICapeBooleanParameterSpec),
    INTERFACE_ROW(ECapeRoot),
    INTERFACE_ROW(ECapeUnknown),
    INTERFACE_ROW(ECapeUser),
    INTERFACE_ROW(ICapeIdentification),
    INTERFACE_ROW(ICapeArrayParameterSpec),
    INTERFACE_ROW(ICapeSimulationContext),
    INTERFACE_ROW(ECapeBoundaries),
    {"IPersistStream", IID_IPersistStream, false},
    {"IPersistPropertyBag", IID_IPersistPropertyBag, false},
    {"IPersistStreamInit", IID_IPersistStreamInit, false},
    {"IPersist", IID_IPersist, false},
    {"IMarshal", IID_IMarshal, false},
};

#undef INTERFACE_ROW

struct ClassRow {
    const char* name;
    CLSID id;
    const char* dispatch; ///< the interface that IDispatch returns
    std::vector<std::string> own;
};

const std::vector<ClassRow>& classRows() {
    static const std::vector<ClassRow> rows{
        {"CPort", portClass, "ICapeUnitPort", {"ICapeUnitPort"}},
        {"CParameterCollection", parameterCollectionClass, "ICapeCollection", {"ICapeCollection"}},
        {"CParameter",
         parameterClass,
         "ICapeParameter",
         {"ICapeBooleanParameterSpec", "ICapeIntegerParameterSpec", "ICapeOptionParameterSpec",
          "ICapeParameter", "ICapeParameterSpec", "ICapeRealParameterSpec"}},
        {"CSolvaneUnitOp",
         solvaneUnitOpClass,
         "ICapeUnit",
         {"ICapeCollection", "ICapeUnit", "ICapeUnitReport", "ICapeUtilities", "IPersistStream",
          "IPersistPropertyBag"}},
    };
    return rows;
}

bool isIn(const ClassRow& row, const std::string& name) {
    static const std::vector<std::string> ofAll{"ECapeRoot", "ECapeUnknown", "ECapeUser",
                                                "ICapeIdentification"};
    return std::ranges::count(row.own, name) + std::ranges::count(ofAll, name) > 0;
}

class InterfaceTable : public ServerTest, public testing::WithParamInterface<ClassRow> {};

TEST_P(InterfaceTable, answersItsInterfacesOnly) {
    const ComRef<IUnknown> object = module.create(GetParam().id);
    for (const NamedInterface& row : interfaces) {
        SCOPED_TRACE(row.name);
        ComRef<IUnknown> answer;
        const HRESULT asked = object->QueryInterface(row.id, answer.putVoid());
        if (!isIn(GetParam(), row.name)) {
            EXPECT_EQ(asked, E_NOINTERFACE);
            EXPECT_FALSE(answer);
            continue;
        }
        EXPECT_EQ(asked, S_OK);
        ASSERT_TRUE(answer);
        EXPECT_EQ(answer.as<IUnknown>().get(), object.get());
        // From each interface to each other one.
        for (const NamedInterface& other : interfaces) {
            const HRESULT back = answer->QueryInterface(other.id, ComRef<IUnknown>().putVoid());
            EXPECT_EQ(back, isIn(GetParam(), other.name) ? S_OK : E_NOINTERFACE) << "to " << other.name;
        }
    }
    EXPECT_EQ(object->QueryInterface(IID_IUnknown, nullptr), E_POINTER);
}

// A late-bound caller gets the names of its interface, and for IDispatch those of the main interface.
TEST_P(InterfaceTable, describesEachDualInterface) {
    const ComRef<IUnknown> object = module.create(GetParam().id);
    for (const NamedInterface& row : interfaces) {
        if (!row.isDual || !isIn(GetParam(), row.name))
            continue;
        SCOPED_TRACE(row.name);
        ComRef<IDispatch> dual;
        ASSERT_EQ(object->QueryInterface(row.id, dual.putVoid()), S_OK);
        UINT count = 0;
        EXPECT_EQ(dual->GetTypeInfoCount(&count), S_OK);
        EXPECT_EQ(count, 1u);
        EXPECT_EQ(dual->GetTypeInfoCount(nullptr), E_POINTER);
        ComRef<ITypeInfo> typeInfo;
        EXPECT_EQ(dual->GetTypeInfo(1, LOCALE_NEUTRAL, typeInfo.put()), DISP_E_BADINDEX);
        EXPECT_EQ(dual->GetTypeInfo(0, LOCALE_NEUTRAL, nullptr), E_POINTER);
        ASSERT_EQ(dual->GetTypeInfo(0, LOCALE_NEUTRAL, typeInfo.put()), S_OK);
        TYPEATTR* attributes = nullptr;
        ASSERT_EQ(typeInfo->GetTypeAttr(&attributes), S_OK);
        EXPECT_TRUE(attributes->guid == row.id);
        typeInfo->ReleaseTypeAttr(attributes);
        EXPECT_EQ(object.as<IDispatch>().get() == dual.get(), std::string(row.name) == GetParam().dispatch);
    }
}

INSTANTIATE_TEST_SUITE_P(OfEachClass, InterfaceTable, testing::ValuesIn(classRows()),
                         [](const auto& row) { return std::string(row.param.name); });

} // namespace

} // namespace solvane
