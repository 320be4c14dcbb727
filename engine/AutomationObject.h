/// The object that late-bound clients create.
#pragma once

#include "com/Object.h"

#include <oaidl.h>

#include <span>

namespace solvane::engine {

/// Offers `Execute(text)`, which returns what the command printed and fails if the command raises an error,
/// `Visible`, `Quit`, and the statement that it is dedicated: each server process has one object, and ends
/// with it.
class CAutomationObject : public CComObjectRoot, public IDispatch {
public:
    ~CAutomationObject() override;
    static std::span<const InterfaceEntry> interfaceTable();
    /// Waits for Octave. If there is none, the first command reports it, since the client of a failed
    /// creation gets only a code.
    HRESULT FinalConstruct();

    STDMETHODIMP GetTypeInfoCount(UINT* count) override;
    STDMETHODIMP GetTypeInfo(UINT index, LCID locale, ITypeInfo** result) override;
    STDMETHODIMP GetIDsOfNames(REFIID iid, LPOLESTR* names, UINT count, LCID locale, DISPID* ids) override;
    /// DISP_E_EXCEPTION if a command raised an error, with Octave's text in the exception record, or if there
    /// is no Octave, with what to do. If Octave has ended, the code for that, for which the system's table
    /// has a text; the record says the same in words.
    STDMETHODIMP Invoke(DISPID id, REFIID iid, LCID locale, WORD flags, DISPPARAMS* parameters,
                        VARIANT* result, EXCEPINFO* exception, UINT* argumentError) override;

private:
    HRESULT execute(DISPPARAMS& parameters, VARIANT* result, EXCEPINFO* exception, UINT* argumentError);
    HRESULT visible(WORD flags, DISPPARAMS& parameters, VARIANT* result, UINT* argumentError);
    HRESULT isDedicated(DISPPARAMS& parameters, VARIANT* result);
    HRESULT quit(DISPPARAMS& parameters);

    // Octave has no window here; the value is only stored.
    LONG visible_ = 0;
};

} // namespace solvane::engine
