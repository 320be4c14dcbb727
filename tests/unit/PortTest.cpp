#include "UnitTest.h"

namespace solvane {
namespace {

class Ports : public UnitTest {
protected:
    Ports() {
        model.feeds({L"Feed 1", L"Shared"}).products({L"shared", L"Product 1"});
        loadModel();
    }

    ComRef<ICapeUnitPort> port(const Variant& id) {
        return item(unit.as<ICapeCollection>(), id).as<ICapeUnitPort>();
    }
};

TEST_F(Ports, listFeedsFirst) {
    LONG count = 0;
    EXPECT_EQ(unit.as<ICapeCollection>()->Count(&count), S_OK);
    EXPECT_EQ(count, 4);
    const auto direction = [&](const Variant& id) {
        CapePortDirection value = CAPE_INLET_OUTLET;
        port(id)->get_direction(&value);
        return value;
    };
    EXPECT_EQ(direction(Variant(LONG{2})), CAPE_INLET);
    EXPECT_EQ(direction(Variant(LONG{3})), CAPE_OUTLET);
    EXPECT_EQ(direction(text(L"SHARED")), CAPE_INLET); // the feed of two ports of one name
    EXPECT_FALSE(port(Variant(LONG{5})));
    EXPECT_EQ(unit.error(), L"Port index out of range | Port index out of range | Item | ICapeCollection");
    EXPECT_FALSE(port(text(L"Feed")));
    EXPECT_EQ(unit.error(),
              L"Undefined port name | No port matches the specified name | Item | ICapeCollection");
    CapePortType type = CAPE_ANY;
    EXPECT_EQ(port(Variant(LONG{1}))->get_portType(&type), S_OK);
    EXPECT_EQ(type, CAPE_MATERIAL);
}

TEST_F(Ports, areFoundByALateBoundCallersVariable) {
    Variant name = text(L"Feed 1");
    ComRef<IDispatch> found;
    for (const VARTYPE type : {VT_VARIANT, VT_BSTR}) {
        EXPECT_EQ(unit.as<ICapeCollection>()->Item(toVariable(name, type), found.put()), S_OK);
        EXPECT_TRUE(found);
    }
    for (const VARTYPE type : {VT_VARIANT, VT_BSTR, VT_I4}) {
        EXPECT_EQ(unit.as<ICapeCollection>()->Item(toNothing(type), found.put()), capeFailure);
        EXPECT_EQ(unit.error().substr(0, 26), L"Invalid port specification");
    }
}

// A literal has no length before its text.
TEST_F(Ports, areFoundByALiteralInPlaceOfABstr) {
    struct {
        std::uint32_t length;
        wchar_t text[7];
    } literal{0, L"Feed 1"};
    for (const std::uint32_t length : {0u, 4u, 11u, 100u, 0x7FFFFFFEu, 0xFFFFFFFFu}) {
        literal.length = length;
        VARIANT name{};
        name.vt = VT_BSTR;
        name.bstrVal = literal.text;
        ComRef<IDispatch> found;
        EXPECT_EQ(unit.as<ICapeCollection>()->Item(name, found.put()), S_OK) << length;
    }
}

TEST_F(Ports, returnAndReleaseTheirMaterial) {
    const auto feed = port(Variant(LONG{1}));
    ComRef<IDispatch> connected;
    EXPECT_EQ(feed->get_connectedObject(connected.put()), capeFailure);
    EXPECT_EQ(errorOf(feed.get()),
              L"Not connected | Port is not connected | get_connectedObject | ICapeUnitPort");

    const auto material = FakeMaterial11::create();
    ASSERT_EQ(feed->Connect(material->dispatch()), S_OK);
    ASSERT_EQ(feed->get_connectedObject(connected.put()), S_OK);
    EXPECT_EQ(connected.as<IUnknown>().get(), queryInterface<IUnknown>(material->dispatch()).get());
    connected.reset();
    EXPECT_EQ(feed->Connect(nullptr), S_OK); // as Disconnect
    EXPECT_EQ(feed->get_connectedObject(connected.put()), capeFailure);
    EXPECT_EQ(feed->Disconnect(), S_OK);
    material->AddRef();
    EXPECT_EQ(material->Release(), 1u); // the test's own
}

TEST_F(Ports, loseTheirConnectionWhenConnectFails) {
    const auto feed = port(Variant(LONG{1}));
    const auto material = FakeMaterial10::create();
    ASSERT_EQ(feed->Connect(material->dispatch()), S_OK);
    EXPECT_EQ(feed->Connect(unit.as<IDispatch>().get()), capeFailure);
    EXPECT_EQ(errorOf(feed.get()),
              L"Failed to get interface | Failed to get version 1.0 or 1.1 thermo material "
              L"object interface | Connect | ICapeUnit");
    ComRef<IDispatch> connected;
    EXPECT_EQ(feed->get_connectedObject(connected.put()), capeFailure);
    EXPECT_FALSE(connected);
}

TEST_F(Ports, areFoundByTheNameThatTheHostGave) {
    const auto feed = port(Variant(LONG{1}));
    const auto identification = feed.as<ICapeIdentification>();
    EXPECT_EQ(identification->put_ComponentName(Bstr(L"Crude").get()), S_OK);
    EXPECT_TRUE(port(text(L"crude")));
    EXPECT_EQ(identification->put_ComponentName(nullptr), S_OK);
    Bstr name(L"x");
    EXPECT_EQ(identification->get_ComponentName(name.put()), S_OK);
    EXPECT_EQ(name.view(), L"");
    // A null name matches the empty one only.
    Variant nullName;
    nullName.put()->vt = VT_BSTR;
    EXPECT_EQ(port(nullName).get(), feed.get());
}

TEST_F(Ports, outliveTheirUnitUnconnected) {
    const auto feed = port(Variant(LONG{1}));
    const auto material = FakeMaterial11::create();
    ASSERT_EQ(feed->Connect(material->dispatch()), S_OK);
    unit.terminate();
    unit.release();
    ComRef<IDispatch> connected;
    EXPECT_EQ(feed->get_connectedObject(connected.put()), capeFailure);
    EXPECT_EQ(feed->Disconnect(), S_OK);
}

} // namespace
} // namespace solvane
