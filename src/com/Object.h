/// The forms in which an object is created: plain, or aggregated by an outer unknown.
///
/// A class T that can be created
///  - derives from CComObjectRoot and from its interfaces, and leaves QueryInterface, AddRef and Release
///    to the form,
///  - offers `static std::span<const InterfaceEntry> interfaceTable()`, whose first row answers for IUnknown,
///  - offers `HRESULT FinalConstruct()`, the construction that may call virtual operations, and may offer
///    `void FinalRelease()`, its counterpart: called after the last release, while the object is whole.
#pragma once

#include "Module.h"

#include <unknwn.h>

#include <new>
#include <span>

namespace solvane {

/// One row of an interface table. `object` is a T.
struct InterfaceEntry {
    const IID* iid;
    IUnknown* (*cast)(void* object);
    /// Null for a row that always applies.
    bool (*isOffered)() = nullptr;
};

/// The row by which T exposes `Interface`, through its base `Through` where several bases have it.
template <class T, class Interface, class Through = Interface>
constexpr InterfaceEntry interfaceEntry(bool (*isOffered)() = nullptr) {
    return {&__uuidof(Interface),
            [](void* object) -> IUnknown* { return static_cast<Through*>(static_cast<T*>(object)); },
            isOffered};
}

/// The reference count of an object that lives in one apartment; not atomic.
class CComObjectRoot {
public:
    virtual ~CComObjectRoot() = default;

protected:
    ULONG references_ = 0;
};

template <class T>
HRESULT queryInterfaceTable(T* object, REFIID iid, void** result) {
    if (!result)
        return E_POINTER;
    *result = nullptr;
    for (const InterfaceEntry& entry : T::interfaceTable()) {
        if (iid != *entry.iid && iid != IID_IUnknown)
            continue;
        if (entry.isOffered && !entry.isOffered())
            return E_NOINTERFACE;
        IUnknown* interfacePointer = entry.cast(object);
        interfacePointer->AddRef();
        *result = interfacePointer;
        return S_OK;
    }
    return E_NOINTERFACE;
}

template <class T>
void finalRelease(T& object) {
    if constexpr (requires { object.FinalRelease(); })
        object.FinalRelease();
}

/// The plain form, with its own reference count.
template <class T>
class CComObject final : public T {
public:
    STDMETHODIMP QueryInterface(REFIID iid, void** result) override {
        return queryInterfaceTable<T>(this, iid, result);
    }
    STDMETHODIMP_(ULONG) AddRef() override { return ++this->references_; }
    STDMETHODIMP_(ULONG) Release() override {
        const ULONG left = --this->references_;
        if (left == 0) {
            // A call back during the destruction must not destroy the object again.
            ++this->references_;
            finalRelease<T>(*this);
            delete this;
        }
        return left;
    }

private:
    ModuleLock moduleLock_;
};

/// The object inside an aggregate: the outer unknown provides identity and counting.
template <class T>
class CComContainedObject final : public T {
public:
    explicit CComContainedObject(IUnknown* outer) : outer_(outer) {}
    STDMETHODIMP QueryInterface(REFIID iid, void** result) override {
        return outer_->QueryInterface(iid, result);
    }
    STDMETHODIMP_(ULONG) AddRef() override { return outer_->AddRef(); }
    STDMETHODIMP_(ULONG) Release() override { return outer_->Release(); }

private:
    IUnknown* outer_; // not counted: the outer object owns the aggregate
};

/// The aggregated form: the unknown that the outer object holds, with its own reference count.
template <class T>
class CComAggObject final : public IUnknown {
public:
    explicit CComAggObject(IUnknown* outer) : contained_(outer) {}
    virtual ~CComAggObject() = default;
    HRESULT FinalConstruct() { return contained_.FinalConstruct(); }

    STDMETHODIMP QueryInterface(REFIID iid, void** result) override {
        if (iid != IID_IUnknown)
            return queryInterfaceTable<T>(&contained_, iid, result);
        if (!result)
            return E_POINTER;
        *result = this;
        AddRef();
        return S_OK;
    }
    STDMETHODIMP_(ULONG) AddRef() override { return ++references_; }
    STDMETHODIMP_(ULONG) Release() override {
        const ULONG left = --references_;
        if (left == 0) {
            ++references_;
            finalRelease<T>(contained_);
            delete this;
        }
        return left;
    }

private:
    ModuleLock moduleLock_;
    ULONG references_ = 0;
    CComContainedObject<T> contained_;
};

/// Makes an object in the form that the outer unknown selects.
template <class T>
HRESULT createInstance(IUnknown* outer, REFIID iid, void** result) {
    if (!result)
        return E_POINTER;
    *result = nullptr;
    const auto construct = [&](auto* object) -> HRESULT {
        if (!object)
            return E_OUTOFMEMORY;
        object->AddRef(); // FinalConstruct may pass the object out, and its receiver may release it
        HRESULT made = object->FinalConstruct();
        if (SUCCEEDED(made))
            made = object->QueryInterface(iid, result);
        object->Release();
        return made;
    };
    if (outer)
        return construct(new (std::nothrow) CComAggObject<T>(outer));
    return construct(new (std::nothrow) CComObject<T>());
}

} // namespace solvane
