#pragma once

#include "CapeOpen.h"
#include "MaterialFailure.h"
#include "MaterialHabits.h"
#include "com/Dispatch.h"
#include "com/Object.h"

#include <string>

namespace solvane::host {

/// Base of the objects that a unit gets from this host: a name, and the last failure, which the unit reads
/// after a call that returned an ECape...HR code.
class HostObject : public DispatchImpl<ECapeRoot>,
                   public DispatchImpl<ECapeUser>,
                   public DispatchImpl<ICapeIdentification>,
                   public CComObjectRoot {
public:
    std::wstring componentName;
    std::wstring componentDescription;

    HRESULT FinalConstruct() { return S_OK; }

    // ECapeRoot
    STDMETHODIMP get_name(BSTR* name) override;
    // ECapeUser
    STDMETHODIMP get_code(LONG* code) override;
    STDMETHODIMP get_description(BSTR* description) override;
    STDMETHODIMP get_scope(BSTR* scope) override;
    STDMETHODIMP get_interfaceName(BSTR* interfaceName) override;
    STDMETHODIMP get_operation(BSTR* operation) override;
    STDMETHODIMP get_moreInfo(BSTR* moreInfo) override;
    // ICapeIdentification
    STDMETHODIMP get_ComponentName(BSTR* name) override;
    STDMETHODIMP put_ComponentName(BSTR name) override;
    STDMETHODIMP get_ComponentDescription(BSTR* description) override;
    STDMETHODIMP put_ComponentDescription(BSTR description) override;

protected:
    /// Called before each operation that can fail.
    virtual void onCall() {}
    static void callBack(const MaterialHabits& habits) {
        if (habits.onCall)
            habits.onCall();
    }

    /// The frame of every operation that can fail: `body(failure)` returns true, or false with the failure.
    template <class Body>
    HRESULT call(const wchar_t* interfaceName, const wchar_t* operation, Body&& body) {
        return border([&]() -> HRESULT {
            onCall();
            Failure failure;
            return body(failure) ? S_OK : keep(std::move(failure), interfaceName, operation);
        });
    }
    HRESULT notImplemented(const wchar_t* interfaceName, const wchar_t* operation);

private:
    HRESULT keep(Failure failure, const wchar_t* interfaceName, const wchar_t* operation);

    Failure failure_;
    const wchar_t* failedInterface_ = L"";
    const wchar_t* failedOperation_ = L"";
};

} // namespace solvane::host
