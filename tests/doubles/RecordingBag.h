#pragma once

#include "com/VariantArray.h"

#include <ocidl.h>

#include <string>
#include <vector>

namespace solvane {

/// A bag that remembers what was written, in order, and can be full.
class RecordingBag final : public IPropertyBag {
public:
    virtual ~RecordingBag() = default;

    struct Entry {
        std::wstring key;
        Variant value;
    };
    std::vector<Entry> entries;
    std::size_t capacity = static_cast<std::size_t>(-1); ///< the next write fails

    std::vector<std::wstring> keys() const;
    /// VT_EMPTY for a key that was not written.
    Variant value(const std::wstring& key) const;
    std::vector<std::wstring> texts(const std::wstring& key) const;

    STDMETHODIMP QueryInterface(REFIID, void**) override { return E_NOINTERFACE; }
    STDMETHODIMP_(ULONG) AddRef() override { return 1; }
    STDMETHODIMP_(ULONG) Release() override { return 1; }
    STDMETHODIMP Read(LPCOLESTR key, VARIANT* value, IErrorLog* errorLog) override;
    STDMETHODIMP Write(LPCOLESTR key, VARIANT* value) override;
};

/// The host's log, each line "key: description".
class RecordingLog final : public IErrorLog {
public:
    virtual ~RecordingLog() = default;

    std::vector<std::wstring> lines;
    std::wstring source; ///< of the last line

    STDMETHODIMP QueryInterface(REFIID, void**) override { return E_NOINTERFACE; }
    STDMETHODIMP_(ULONG) AddRef() override { return 1; }
    STDMETHODIMP_(ULONG) Release() override { return 1; }
    STDMETHODIMP AddError(LPCOLESTR key, EXCEPINFO* exception) override;
};

} // namespace solvane
