/// The object that late-bound clients create.
#pragma once

#include "com/Object.h"

#include <oaidl.h>

#include <span>

namespace solvane::engine {

/// Offers `Execute(text)`, which returns what the command printed and fails where it raises an error,
/// `Visible`, and `Quit`, and says that it is dedicated: there is one a server process, and its end is the
/// process's end.
class CAutomationObject : public CComObjectRoot, public IDispatch {
public:
    ~CAutomationObject() override;
    static std::span<const InterfaceEntry> interfaceTable();
    /// Waits for Octave. Its absence is the first command's to tell: the client of a failed creation gets no
    /// more than a code.
    HRESULT FinalConstruct();

    STDMETHODIMP GetTypeInfoCount(UINT* count) override;
    STDMETHODIMP GetTypeInfo(UINT index, LCID locale, ITypeInfo** result) override;
    STDMETHODIMP GetIDsOfNames(REFIID iid, LPOLESTR* names, UINT count, LCID locale, DISPID* ids) override;
    /// DISP_E_EXCEPTION where a command raised an error, with Octave's text in the exception record, and
    /// where there is no Octave, with what to do. Where Octave has ended, the code of that, since it has a
    /// text of its own in the system's table; the record says the same in words.
    STDMETHODIMP Invoke(DISPID id, REFIID iid, LCID locale, WORD flags, DISPPARAMS* parameters,
                        VARIANT* result, EXCEPINFO* exception, UINT* argumentError) override;

private:
    HRESULT execute(DISPPARAMS& parameters, VARIANT* result, EXCEPINFO* exception, UINT* argumentError);
    HRESULT visible(WORD flags, DISPPARAMS& parameters, VARIANT* result, UINT* argumentError);
    HRESULT isDedicated(DISPPARAMS& parameters, VARIANT* result);
    HRESULT quit(DISPPARAMS& parameters);

    // Octave has no window here; the value is only remembered.
    LONG visible_ = 0;
};

} // namespace solvane::engine
