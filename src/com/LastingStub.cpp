#include "LastingStub.h"

#include "Wine.h"

#include <objbase.h>

namespace solvane {

namespace {

/// Has the interface, but no client that could call it.
class UncalledObject : public IUnknown {
public:
    explicit UncalledObject(REFIID iid) : iid_(iid) {}
    virtual ~UncalledObject() = default;

    STDMETHODIMP QueryInterface(REFIID iid, void** result) override {
        const bool isOffered = iid == iid_ || iid == IID_IUnknown;
        *result = isOffered ? this : nullptr;
        if (isOffered)
            AddRef();
        return isOffered ? S_OK : E_NOINTERFACE;
    }
    STDMETHODIMP_(ULONG) AddRef() override { return InterlockedIncrement(&references_); }
    STDMETHODIMP_(ULONG) Release() override {
        const ULONG left = InterlockedDecrement(&references_);
        if (left == 0)
            delete this;
        return left;
    }

private:
    const IID iid_;
    ULONG references_ = 1;
};

} // namespace

LastingStub::LastingStub(REFIID iid) {
    if (!isWine())
        return;
    const auto object = ComRef<IUnknown>::adopt(new UncalledObject(iid));
    if (SUCCEEDED(CreateStreamOnHGlobal(nullptr, TRUE, marshalled_.put())) &&
        FAILED(CoMarshalInterface(marshalled_.get(), iid, object.get(), MSHCTX_LOCAL, nullptr,
                                  MSHLFLAGS_TABLESTRONG)))
        marshalled_.reset();
}

LastingStub::~LastingStub() {
    if (!marshalled_)
        return;
    marshalled_->Seek({}, STREAM_SEEK_SET, nullptr);
    CoReleaseMarshalData(marshalled_.get());
}

} // namespace solvane
