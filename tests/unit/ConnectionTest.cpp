// How connections affect the unit, and how the end of the unit affects its connections.

#include "UnitTest.h"

#include <functional>
#include <ocidl.h>

namespace solvane {
namespace {

/// A host's object, on the test's frame, that exposes the interfaces of its parts.
class HostObject final : public DispatchImpl<ICapeSimulationContext> {
public:
    explicit HostObject(std::vector<ComRef<IUnknown>> parts = {}) : parts_(std::move(parts)) {}
    ULONG references = 1;

    STDMETHODIMP QueryInterface(REFIID iid, void** result) override {
        *result = nullptr;
        if (iid == IID_IUnknown || iid == IID_IDispatch) {
            *result = this;
            AddRef();
            return S_OK;
        }
        for (const ComRef<IUnknown>& part : parts_)
            if (SUCCEEDED(part->QueryInterface(iid, result)))
                return S_OK;
        return E_NOINTERFACE;
    }
    STDMETHODIMP_(ULONG) AddRef() override { return ++references; }
    STDMETHODIMP_(ULONG) Release() override { return --references; }

private:
    std::vector<ComRef<IUnknown>> parts_;
};

ULONG countOf(IUnknown* object) {
    object->AddRef();
    return object->Release();
}

class Connections : public UnitTest {
protected:
    Connections() {
        model.feeds({L"Feed"}).products({L"Product"});
        loadModel();
        feed = item(unit.as<ICapeCollection>(), Variant(LONG{1})).as<ICapeUnitPort>();
    }
    ~Connections() override { unit.terminate(); } // before the objects on the test's frame end

    ComRef<ICapeUnitPort> feed;
    ComRef<FakeMaterial11> material11 = FakeMaterial11::create();
    ComRef<FakeMaterial10> material10 = FakeMaterial10::create();
};

TEST_F(Connections, preferTheNewerOfTwoGenerations) {
    HostObject both({ComRef<IUnknown>(material10->dispatch()), ComRef<IUnknown>(material11->dispatch())});
    const ULONG before10 = countOf(material10->dispatch());
    ASSERT_EQ(feed->Connect(&both), S_OK);
    EXPECT_EQ(countOf(material10->dispatch()), before10);
    ComRef<IDispatch> connected;
    ASSERT_EQ(feed->get_connectedObject(connected.put()), S_OK);
    EXPECT_EQ(connected.get(), material11->dispatch());
    EXPECT_EQ(feed->Disconnect(), S_OK);
}

TEST_F(Connections, invalidateTheUnitWithoutChangingTheModel) {
    ASSERT_EQ(unit.connect(L"Product", material11->dispatch()), S_OK);
    HostObject noMaterial;
    const std::function<HRESULT()> changes[] = {
        [&] { return feed->Connect(material11->dispatch()); },
        [&] { return feed->Disconnect(); },
        [&] { return feed->Connect(nullptr); },
        [&] { return feed->Connect(&noMaterial); },
    };
    for (const auto& change : changes) {
        ASSERT_EQ(feed->Connect(material11->dispatch()), S_OK);
        ASSERT_EQ(unit.validate(), L"");
        ASSERT_EQ(unit.status(), CAPE_VALID);
        change();
        EXPECT_EQ(unit.status(), CAPE_NOT_VALIDATED) << "change " << &change - changes;
        EXPECT_EQ(unit.as<IPersistStream>()->IsDirty(), S_FALSE);
    }
}

// A load creates new ports; those that the host still holds belong to no unit.
TEST_F(Connections, areDroppedByALoad) {
    ASSERT_EQ(feed->Connect(material11->dispatch()), S_OK);
    ModelBag empty;
    ASSERT_EQ(unit.load(empty.script("")), S_OK);
    EXPECT_EQ(countOf(material11->dispatch()), 1u);
    ASSERT_EQ(unit.validate(), L"");
    EXPECT_EQ(feed->Connect(material11->dispatch()), S_OK);
    EXPECT_EQ(unit.status(), CAPE_VALID);
    EXPECT_EQ(feed->Disconnect(), S_OK);
}

// A valid unit runs without validation until something changes it.
TEST_F(Connections, areValidatedByCalculateOnlyIfNeeded) {
    for (const wchar_t* port : {L"Feed", L"Product"})
        ASSERT_EQ(unit.connect(port, material10->dispatch()), S_OK);
    const auto listsRead = [&] {
        material10->record->calls.clear();
        EXPECT_EQ(unit.calculate(), capeFailure); // the script sets no product
        return material10->record->callsOf("ComponentIds").size();
    };
    const std::size_t withValidation = listsRead();
    EXPECT_EQ(unit.status(), CAPE_VALID);
    EXPECT_EQ(listsRead() + 2, withValidation);
}

TEST_F(Connections, areReleasedByTerminateWithAllHostObjects) {
    HostObject context;
    const auto utilities = unit.as<ICapeUtilities>();
    ASSERT_EQ(utilities->put_simulationContext(&context), S_OK);
    unit.connect(L"Feed", material11->dispatch());
    unit.connect(L"Product", material10->dispatch());
    ASSERT_EQ(unit.validate(), L"");
    EXPECT_EQ(context.references, 2u);
    EXPECT_EQ(unit.terminate(), S_OK);
    EXPECT_EQ(context.references, 1u);
    EXPECT_EQ(countOf(material11->dispatch()), 1u);
    EXPECT_EQ(countOf(material10->dispatch()), 1u);
}

TEST_F(Connections, replaceTheContextAndReleaseItAtTerminate) {
    HostObject first, second;
    const auto utilities = unit.as<ICapeUtilities>();
    EXPECT_EQ(utilities->put_simulationContext(&first), S_OK);
    EXPECT_EQ(utilities->put_simulationContext(&second), S_OK);
    EXPECT_EQ(first.references, 1u);
    EXPECT_EQ(second.references, 2u);
    EXPECT_EQ(utilities->put_simulationContext(nullptr), S_OK);
    EXPECT_EQ(second.references, 1u);
    ASSERT_EQ(unit.terminate(), S_OK);
    EXPECT_EQ(utilities->put_simulationContext(&first), capeFailure);
    EXPECT_EQ(first.references, 1u);
}

} // namespace
} // namespace solvane
