#pragma once

#include "CapeOpen.h"
#include "com/CapeError.h"
#include "com/Dispatch.h"
#include "com/Object.h"
#include "com/Variant.h"

#include <string>

namespace solvane {

/// Base of every object that the host can hold: its name, its description and its last failure.
///
/// A method that fails stores four texts on its object with SetError and returns `capeFailure`; the host then
/// reads them through ECapeRoot and ECapeUser. A later success does not clear them. The description is the
/// thread's error object as well, from which a late-bound call takes its exception record.
class CapeOpenBaseObject : public DispatchImpl<ECapeRoot>,
                           public DispatchImpl<ECapeUnknown>,
                           public DispatchImpl<ECapeUser>,
                           public DispatchImpl<ICapeIdentification>,
                           public CComObjectRoot {
public:
    std::wstring componentName;
    std::wstring componentDescription;
    std::wstring errorName;
    std::wstring errorDescription;
    std::wstring errorScope;     ///< the method that failed
    std::wstring errorInterface; ///< that method's interface

    /// Any of the texts may be the field that it replaces.
    void SetError(std::wstring name, std::wstring description, std::wstring scope,
                  std::wstring interfaceName);

    /// Calls SetError and returns the result of the failing method.
    HRESULT raise(std::wstring name, std::wstring description, std::wstring scope,
                  std::wstring interfaceName);

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
};

} // namespace solvane
