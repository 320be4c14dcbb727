/// IDispatch of the dual interfaces, from the type information of the CAPE-OPEN type library.
#pragma once

#include "Border.h"
#include "ComRef.h"
#include "Handle.h"

#include <oaidl.h>

#include <string>
#include <vector>

namespace solvane {

/// Loads the CAPE-OPEN 1.1 type library: the registered one if there is one, else the one in this module.
HRESULT loadCapeOpenTypeLibrary(ComRef<ITypeLib>& library);

/// The type information of one interface, loaded on first use, with its names beside it.
class DispatchTypeInfo {
public:
    explicit DispatchTypeInfo(REFIID iid) : iid_(iid) {}

    HRESULT getTypeInfo(UINT index, ITypeInfo** result);
    HRESULT getIdsOfNames(LPOLESTR* names, UINT count, DISPID* ids);
    HRESULT invoke(void* object, DISPID id, WORD flags, DISPPARAMS* parameters, VARIANT* result,
                   EXCEPINFO* exception, UINT* argumentError);

private:
    struct Name {
        std::wstring text;
        DISPID id;
    };

    HRESULT load();

    IID iid_;
    CriticalSection lock_;
    ComRef<ITypeInfo> typeInfo_;
    std::vector<Name> names_;
};

/// Gives the dual interface I its four IDispatch operations. Each interface of an object has its own.
template <class I>
class DispatchImpl : public I {
public:
    STDMETHODIMP GetTypeInfoCount(UINT* count) override {
        if (!count)
            return E_POINTER;
        *count = 1;
        return S_OK;
    }
    STDMETHODIMP GetTypeInfo(UINT index, LCID, ITypeInfo** result) override {
        return border([&] { return typeInfo().getTypeInfo(index, result); });
    }
    STDMETHODIMP GetIDsOfNames(REFIID, LPOLESTR* names, UINT count, LCID, DISPID* ids) override {
        return border([&] { return typeInfo().getIdsOfNames(names, count, ids); });
    }
    STDMETHODIMP Invoke(DISPID id, REFIID, LCID, WORD flags, DISPPARAMS* parameters, VARIANT* result,
                        EXCEPINFO* exception, UINT* argumentError) override {
        return border([&] {
            return typeInfo().invoke(static_cast<I*>(this), id, flags, parameters, result, exception,
                                     argumentError);
        });
    }

    virtual ~DispatchImpl() = default;

private:
    static DispatchTypeInfo& typeInfo() {
        static DispatchTypeInfo info(__uuidof(I));
        return info;
    }
};

} // namespace solvane
