// Each class inside an outer object, which provides identity and counting.

#include "ServerTest.h"

namespace solvane {

namespace {

/// Something that only the outer object has.
constexpr IID outerOnly{0x5C7A1E2E, 0x93B4, 0x4D0E, {0x8A, 0x61, 0x2F, 0x0D, 0x7B, 0x9C, 0x41, 0xE3}};

/// An object that aggregates another one, on the test's frame.
class Outer final : public IUnknown {
public:
    virtual ~Outer() = default;

    ULONG references = 1;
    ComRef<IUnknown> inner;

    STDMETHODIMP QueryInterface(REFIID iid, void** result) override {
        if (iid != IID_IUnknown && iid != outerOnly)
            return inner->QueryInterface(iid, result);
        *result = this;
        AddRef();
        return S_OK;
    }
    STDMETHODIMP_(ULONG) AddRef() override { return ++references; }
    STDMETHODIMP_(ULONG) Release() override { return --references; }
};

class Aggregation : public ServerTest, public testing::WithParamInterface<NamedClass> {
protected:
    Outer outer;
    HRESULT aggregate(REFIID iid) {
        return module.factory(GetParam().id)->CreateInstance(&outer, iid, outer.inner.putVoid());
    }
};

TEST_P(Aggregation, delegatesIdentityAndCountingToTheOuterObject) {
    ASSERT_EQ(aggregate(IID_IUnknown), S_OK);
    EXPECT_EQ(outer.references, 1u) << "the aggregate must not hold its owner";

    ComRef<ICapeIdentification> identification = outer.inner.as<ICapeIdentification>();
    ASSERT_TRUE(identification);
    EXPECT_EQ(outer.references, 2u);
    EXPECT_EQ(identification.as<IUnknown>().get(), &outer);
    ComRef<IUnknown> asked;
    EXPECT_EQ(identification->QueryInterface(outerOnly, asked.putVoid()), S_OK);
    EXPECT_EQ(asked.get(), &outer);
    EXPECT_EQ(outer.references, 3u);
    asked.reset();
    // From one of its interfaces to another, and through IDispatch.
    const ComRef<ECapeUser> user = identification.as<ECapeUser>();
    const ComRef<IDispatch> dispatch = user.as<IDispatch>();
    EXPECT_EQ(outer.references, 4u);
    EXPECT_EQ(dispatch.as<IUnknown>().get(), &outer);
    EXPECT_EQ(identification->AddRef(), 5u);
    EXPECT_EQ(identification->Release(), 4u);
}

TEST_P(Aggregation, destroysTheObjectWithTheOwnersUnknown) {
    ASSERT_EQ(aggregate(IID_IUnknown), S_OK);
    EXPECT_NE(outer.inner.get(), &outer);
    EXPECT_EQ(outer.inner.as<IUnknown>().get(), outer.inner.get());
    EXPECT_EQ(outer.inner->AddRef(), 2u);
    EXPECT_EQ(outer.inner->Release(), 1u);
    EXPECT_EQ(outer.references, 1u);
    EXPECT_EQ(outer.inner->QueryInterface(IID_IStorage, ComRef<IUnknown>().putVoid()), E_NOINTERFACE);
    EXPECT_EQ(outer.inner->QueryInterface(IID_IUnknown, nullptr), E_POINTER);

    EXPECT_EQ(module.canUnloadNow(), S_FALSE);
    outer.inner.reset();
    EXPECT_EQ(module.canUnloadNow(), S_OK);
    EXPECT_EQ(outer.references, 1u);
}

TEST_P(Aggregation, isRejectedForAnythingButTheUnknown) {
    for (const IID& iid : {__uuidof(ICapeIdentification), IID_IDispatch})
        EXPECT_EQ(aggregate(iid), CLASS_E_NOAGGREGATION);
    EXPECT_FALSE(outer.inner);
    EXPECT_EQ(module.canUnloadNow(), S_OK);
}

INSTANTIATE_TEST_SUITE_P(OfEachClass, Aggregation, testing::ValuesIn(allClasses),
                         [](const auto& row) { return std::string(row.param.name); });

// The collection of ports is the unit itself, and so has the identity of the aggregating object.
TEST_F(ServerTest, exposesAnAggregatedUnitsPortsThroughItsOwner) {
    Outer outer;
    module.factory(solvaneUnitOpClass)->CreateInstance(&outer, IID_IUnknown, outer.inner.putVoid());
    ComRef<IDispatch> ports;
    ASSERT_EQ(outer.inner.as<ICapeUnit>()->get_ports(ports.put()), S_OK);
    EXPECT_EQ(ports.as<IUnknown>().get(), &outer);
    EXPECT_TRUE(ports.as<ICapeCollection>());
    EXPECT_EQ(outer.inner.as<ICapeUtilities>()->Terminate(), S_OK);
}

} // namespace

} // namespace solvane
