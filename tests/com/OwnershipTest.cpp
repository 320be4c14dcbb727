#include "com/ComRef.h"

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

} // namespace
} // namespace solvane
