#pragma once

#include "CapeOpen.h"
#include "com/Dispatch.h"
#include "com/Variant.h"

#include <functional>
#include <string>
#include <vector>

namespace solvane {

/// A host's simulation context with its log, on the test's frame: it is not counted.
class DiagnosticContext final : public DispatchImpl<ICapeDiagnostic> {
public:
    bool hasLog = true;
    std::vector<std::wstring> lines;
    /// What else the host does while it logs.
    std::function<void()> onLog;

    STDMETHODIMP QueryInterface(REFIID iid, void** result) override {
        const bool isKnown =
            iid == IID_IUnknown || iid == IID_IDispatch || (hasLog && iid == __uuidof(ICapeDiagnostic));
        *result = isKnown ? this : nullptr;
        return isKnown ? S_OK : E_NOINTERFACE;
    }
    STDMETHODIMP_(ULONG) AddRef() override { return 1; }
    STDMETHODIMP_(ULONG) Release() override { return 1; }

    STDMETHODIMP PopUpMessage(BSTR) override { return E_NOTIMPL; }
    STDMETHODIMP LogMessage(BSTR text) override {
        lines.emplace_back(viewOf(text));
        if (onLog)
            onLog();
        return E_FAIL; // of no interest to the unit
    }
};

} // namespace solvane
