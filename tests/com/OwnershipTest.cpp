#include "com/ComRef.h"
#include "com/Handle.h"
#include "com/Variant.h"

#include <gtest/gtest.h>

namespace solvane {
namespace {

/// Counts its references and offers IUnknown only.
class CountedObject final : public IUnknown {
public:
    virtual ~CountedObject() = default;
    LONG references = 0;
    STDMETHODIMP QueryInterface(REFIID iid, void** result) override {
        *result = iid == IID_IUnknown ? this : nullptr;
        if (!*result)
            return E_NOINTERFACE;
        AddRef();
        return S_OK;
    }
    STDMETHODIMP_(ULONG) AddRef() override { return static_cast<ULONG>(++references); }
    STDMETHODIMP_(ULONG) Release() override { return static_cast<ULONG>(--references); }
};

TEST(ComRef, everyWayOfPassingKeepsTheCount) {
    CountedObject object;
    CountedObject other;
    {
        ComRef<IUnknown> first(&object);
        ComRef<IUnknown> copy(first);
        EXPECT_EQ(object.references, 2);
        ComRef<IUnknown> moved(std::move(copy));
        EXPECT_EQ(object.references, 2);
        EXPECT_FALSE(copy);
        first = first;
        EXPECT_EQ(object.references, 2);
        first = ComRef<IUnknown>(&other);
        EXPECT_EQ(object.references, 1);
        EXPECT_EQ(other.references, 1);
        *moved.put() = nullptr;
        EXPECT_EQ(object.references, 0);
        object.AddRef();
        moved = ComRef<IUnknown>::adopt(&object);
        EXPECT_EQ(object.references, 1);
        IUnknown* given = moved.release();
        EXPECT_EQ(object.references, 1);
        given->Release();
    }
    EXPECT_EQ(object.references, 0);
    EXPECT_EQ(other.references, 0);
}

TEST(ComRef, anInterfaceThatIsRefusedLeavesNothing) {
    CountedObject object;
    {
        EXPECT_FALSE(queryInterface<IDispatch>(&object));
        EXPECT_FALSE(queryInterface<IDispatch>(nullptr));
        EXPECT_TRUE(ComRef<IUnknown>(&object).as<IUnknown>());
    }
    EXPECT_EQ(object.references, 0);
}

TEST(Variant, copiesAreDeepAndReleasesMove) {
    Variant text{std::wstring_view(L"methane")};
    Variant copy = text;
    EXPECT_NE(copy.get().bstrVal, text.get().bstrVal);
    EXPECT_EQ(copy.text(), L"methane");
    VARIANT taken = copy.release();
    EXPECT_TRUE(copy.isEmpty());
    EXPECT_EQ(viewOf(taken.bstrVal), L"methane");
    VariantClear(&taken);
    text.put();
    EXPECT_TRUE(text.isEmpty());
    EXPECT_EQ(text.real(), 0); // the storage of an emptied variant reads 0
}

TEST(Variant, anObjectInsideIsReleasedOnce) {
    CountedObject object;
    {
        Variant holder;
        holder.put()->vt = VT_UNKNOWN;
        VARIANT& place = const_cast<VARIANT&>(holder.get());
        place.punkVal = &object;
        object.AddRef();
        const Variant copy = holder;
        EXPECT_EQ(object.references, 2);
    }
    EXPECT_EQ(object.references, 0);
}

TEST(Unique, aMoveLeavesOneOwner) {
    Handle event(CreateEventW(nullptr, TRUE, TRUE, nullptr));
    const HANDLE raw = event.get();
    Handle moved(std::move(event));
    EXPECT_FALSE(event);
    EXPECT_EQ(WaitForSingleObject(raw, 0), WAIT_OBJECT_0);
    moved.reset();
    EXPECT_EQ(WaitForSingleObject(raw, 0), WAIT_FAILED);
}

} // namespace
} // namespace solvane
