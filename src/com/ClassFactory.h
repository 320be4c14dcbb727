#pragma once

#include "Border.h"
#include "Object.h"

#include <new>

namespace solvane {

/// Makes an object: outer unknown or null, interface id, result.
using InstanceCreator = HRESULT (*)(IUnknown* outer, REFIID iid, void** result);

/// The class object of one class.
class CComClassFactory : public IClassFactory {
public:
    explicit CComClassFactory(InstanceCreator creator) : creator_(creator) {}
    virtual ~CComClassFactory() = default;

    STDMETHODIMP CreateInstance(IUnknown* outer, REFIID iid, void** result) override {
        return border([&]() -> HRESULT {
            if (!result)
                return E_POINTER;
            *result = nullptr;
            // The owner of an aggregate can only use the non-delegating unknown.
            if (outer && iid != IID_IUnknown)
                return CLASS_E_NOAGGREGATION;
            return creator_(outer, iid, result);
        });
    }
    STDMETHODIMP LockServer(BOOL lock) override {
        if (lock)
            ComModule::current().lock();
        else
            ComModule::current().unlock();
        return S_OK;
    }

private:
    InstanceCreator creator_;
};

/// A class factory that a map entry keeps. Its count is atomic, since any thread may request it, and it does
/// not keep the module loaded.
template <class Factory>
class CComObjectCached final : public Factory {
public:
    using Factory::Factory;
    STDMETHODIMP QueryInterface(REFIID iid, void** result) override {
        if (!result)
            return E_POINTER;
        *result = nullptr;
        if (iid != IID_IUnknown && iid != IID_IClassFactory)
            return E_NOINTERFACE;
        *result = static_cast<IClassFactory*>(this);
        AddRef();
        return S_OK;
    }
    STDMETHODIMP_(ULONG) AddRef() override { return static_cast<ULONG>(InterlockedIncrement(&references_)); }
    STDMETHODIMP_(ULONG) Release() override {
        const LONG left = InterlockedDecrement(&references_);
        if (left == 0)
            delete this;
        return static_cast<ULONG>(left);
    }

private:
    volatile LONG references_ = 0;
};

/// A new class object for `creator`, through its IUnknown.
inline HRESULT createClassFactory(InstanceCreator creator, void** result) {
    auto* factory = new (std::nothrow) CComObjectCached<CComClassFactory>(creator);
    if (!factory)
        return E_OUTOFMEMORY;
    return factory->QueryInterface(IID_IUnknown, result);
}

} // namespace solvane
