#include "RecordingBag.h"

#include <gtest/gtest.h>

#include <algorithm>

namespace solvane {

std::vector<std::wstring> RecordingBag::keys() const {
    std::vector<std::wstring> keys;
    for (const Entry& entry : entries)
        keys.push_back(entry.key);
    return keys;
}

Variant RecordingBag::value(const std::wstring& key) const {
    const auto entry = std::ranges::find(entries, key, &Entry::key);
    return entry == entries.end() ? Variant() : entry->value;
}

std::vector<std::wstring> RecordingBag::texts(const std::wstring& key) const {
    VariantArray array(value(key));
    std::string error;
    EXPECT_TRUE(readVariantArray(array, VT_BSTR, error)) << error;
    return array.texts();
}

STDMETHODIMP RecordingBag::Read(LPCOLESTR key, VARIANT* result, IErrorLog*) {
    const auto entry = std::ranges::find(entries, std::wstring(key), &Entry::key);
    return entry == entries.end() ? E_INVALIDARG : VariantCopy(result, entry->value.in());
}

STDMETHODIMP RecordingBag::Write(LPCOLESTR key, VARIANT* written) {
    if (entries.size() >= capacity)
        return STG_E_MEDIUMFULL;
    Entry& entry = entries.emplace_back();
    entry.key = key;
    return VariantCopy(entry.value.put(), written);
}

STDMETHODIMP RecordingLog::AddError(LPCOLESTR key, EXCEPINFO* exception) {
    lines.push_back(std::wstring(key) + L": " + std::wstring(viewOf(exception->bstrDescription)));
    source = viewOf(exception->bstrSource);
    return S_OK;
}

} // namespace solvane
