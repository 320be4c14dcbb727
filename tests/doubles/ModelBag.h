#pragma once

#include "com/VariantArray.h"

#include <oaidl.h>
#include <ocidl.h>

#include <functional>
#include <map>
#include <string>
#include <vector>

namespace solvane {

/// A host's property bag with a unit's model in it, on the test's frame: it is not counted. A key that nobody
/// set can't be read. It remembers what was written, and can be full.
class ModelBag final : public IPropertyBag {
public:
    virtual ~ModelBag() = default;

    std::map<std::wstring, Variant> values;
    std::vector<std::wstring> written; ///< keys, in their order
    std::size_t capacity = static_cast<std::size_t>(-1);
    std::function<void()> onRead;  ///< what the host does inside each Read
    std::function<void()> onWrite; ///< and inside each Write

    /// VT_EMPTY for a key that nobody set.
    Variant value(const std::wstring& key) const;
    std::vector<std::wstring> texts(const std::wstring& key) const;

    ModelBag& feeds(const std::vector<std::wstring>& names);
    ModelBag& products(const std::vector<std::wstring>& names);
    ModelBag& reports(const std::vector<std::wstring>& names);
    /// calc.m, which a model can't do without.
    ModelBag& script(const std::string& text) { return file("calc.m", text); }
    ModelBag& file(const std::string& name, const std::string& bytes);
    /// A parameter of type "real", "int", "bool" or "string".
    ModelBag& parameter(const std::wstring& name, const std::wstring& type, const Variant& value);
    /// Another field of a parameter, as "minimum" or "options".
    ModelBag& with(const std::wstring& parameter, const std::wstring& field, const Variant& value);

    STDMETHODIMP QueryInterface(REFIID iid, void** result) override;
    STDMETHODIMP_(ULONG) AddRef() override { return 1; }
    STDMETHODIMP_(ULONG) Release() override { return 1; }
    STDMETHODIMP Read(LPCOLESTR key, VARIANT* value, IErrorLog* errorLog) override;
    STDMETHODIMP Write(LPCOLESTR key, VARIANT* value) override;

private:
    void append(const std::wstring& key, const std::wstring& entry);

    std::map<std::wstring, std::vector<std::wstring>> lists_;
};

} // namespace solvane
