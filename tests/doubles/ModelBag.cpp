#include "ModelBag.h"

#include "com/Text.h"

#include <gtest/gtest.h>

namespace solvane {

ModelBag& ModelBag::feeds(const std::vector<std::wstring>& names) {
    values[L"feeds"] = VariantArray::of(names);
    return *this;
}

ModelBag& ModelBag::products(const std::vector<std::wstring>& names) {
    values[L"products"] = VariantArray::of(names);
    return *this;
}

ModelBag& ModelBag::reports(const std::vector<std::wstring>& names) {
    values[L"reports"] = VariantArray::of(names);
    return *this;
}

ModelBag& ModelBag::file(const std::string& name, const std::string& bytes) {
    append(L"files", widen(name));
    values[L"file \\ " + widen(name)] =
        VariantArray::ofBytes({reinterpret_cast<const unsigned char*>(bytes.data()), bytes.size()});
    return *this;
}

ModelBag& ModelBag::parameter(const std::wstring& name, const std::wstring& type, const Variant& value) {
    append(L"parameters", name);
    append(L"parameter types", type);
    append(L"parameter modes", L"input");
    return with(name, L"value", value);
}

ModelBag& ModelBag::with(const std::wstring& parameter, const std::wstring& field, const Variant& value) {
    values[parameter + L" \\ " + field] = value;
    return *this;
}

void ModelBag::append(const std::wstring& key, const std::wstring& entry) {
    lists_[key].push_back(entry);
    values[key] = VariantArray::of(lists_[key]);
}

Variant ModelBag::value(const std::wstring& key) const {
    const auto found = values.find(key);
    return found == values.end() ? Variant() : found->second;
}

std::vector<std::wstring> ModelBag::texts(const std::wstring& key) const {
    VariantArray array(value(key));
    std::string error;
    EXPECT_TRUE(readVariantArray(array, VT_BSTR, error)) << error;
    return array.texts();
}

STDMETHODIMP ModelBag::QueryInterface(REFIID iid, void** result) {
    const bool isKnown = iid == IID_IUnknown || iid == IID_IPropertyBag;
    *result = isKnown ? this : nullptr;
    return isKnown ? S_OK : E_NOINTERFACE;
}

STDMETHODIMP ModelBag::Read(LPCOLESTR key, VARIANT* value, IErrorLog*) {
    if (onRead)
        onRead();
    const auto found = values.find(key);
    return found == values.end() ? E_INVALIDARG : VariantCopy(value, found->second.in());
}

STDMETHODIMP ModelBag::Write(LPCOLESTR key, VARIANT* value) {
    if (onWrite)
        onWrite();
    if (written.size() >= capacity)
        return STG_E_MEDIUMFULL;
    written.emplace_back(key);
    return VariantCopy(values[key].put(), value);
}

} // namespace solvane
