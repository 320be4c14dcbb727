#pragma once

#include "com/Variant.h"

#include <oaidl.h>

#include <string>
#include <vector>

namespace solvane {

/// The host's log, each line "key: description", on the test's frame.
class RecordingLog final : public IErrorLog {
public:
    virtual ~RecordingLog() = default;

    std::vector<std::wstring> lines;
    std::wstring source; ///< of the last line

    STDMETHODIMP QueryInterface(REFIID, void**) override { return E_NOINTERFACE; }
    STDMETHODIMP_(ULONG) AddRef() override { return 1; }
    STDMETHODIMP_(ULONG) Release() override { return 1; }
    STDMETHODIMP AddError(LPCOLESTR key, EXCEPINFO* exception) override {
        lines.push_back(std::wstring(key) + L": " + std::wstring(viewOf(exception->bstrDescription)));
        source = viewOf(exception->bstrSource);
        return S_OK;
    }
};

} // namespace solvane
