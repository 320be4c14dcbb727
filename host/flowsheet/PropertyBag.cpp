#include "PropertyBag.h"

#include "ParameterCalls.h"
#include "UnitCalls.h"
#include "com/Border.h"
#include "com/Object.h"
#include "com/Text.h"
#include "com/VariantArray.h"

#include <algorithm>
#include <array>
#include <map>

namespace solvane::host {

namespace {

using Values = std::map<std::wstring, Variant>;

class PropertyBag : public IPropertyBag, public CComObjectRoot {
public:
    Values values;

    static std::span<const InterfaceEntry> interfaceTable() {
        static constexpr std::array table{interfaceEntry<PropertyBag, IPropertyBag>()};
        return table;
    }

    /// On entry the variant's type is the requested one; VT_EMPTY accepts any.
    STDMETHODIMP Read(LPCOLESTR name, VARIANT* value, IErrorLog*) override {
        return border([&]() -> HRESULT {
            if (!name || !value)
                return E_POINTER;
            const VARTYPE requested = value->vt;
            *value = VARIANT{};
            const auto found = values.find(name);
            if (found == values.end())
                return E_INVALIDARG;
            Variant copy = found->second;
            if (requested != VT_EMPTY && requested != copy.type()) {
                const HRESULT changed = VariantChangeType(copy.put(), found->second.in(), 0, requested);
                if (FAILED(changed))
                    return changed;
            }
            *value = copy.release();
            return S_OK;
        });
    }

    STDMETHODIMP Write(LPCOLESTR name, VARIANT* value) override {
        return border([&]() -> HRESULT {
            if (!name || !value)
                return E_POINTER;
            return VariantCopy(values[name].put(), value);
        });
    }
};

class ErrorLog : public IErrorLog, public CComObjectRoot {
public:
    std::vector<std::string>* entries = nullptr;

    static std::span<const InterfaceEntry> interfaceTable() {
        static constexpr std::array table{interfaceEntry<ErrorLog, IErrorLog>()};
        return table;
    }

    STDMETHODIMP AddError(LPCOLESTR name, EXCEPINFO* exception) override {
        return border([&]() -> HRESULT {
            if (!name || !exception)
                return E_POINTER;
            entries->push_back(narrow(name, CP_UTF8) + ": " +
                               narrow(viewOf(exception->bstrDescription), CP_UTF8));
            return S_OK;
        });
    }
};

constexpr wchar_t keySeparator[] = L" \\ ";
constexpr wchar_t scriptName[] = L"calc.m";

std::wstring wide(std::string_view text) {
    return widen(text, CP_UTF8);
}

Variant listOf(const std::vector<std::string>& texts) {
    std::vector<std::wstring> list;
    std::ranges::transform(texts, std::back_inserter(list), wide);
    return VariantArray::of(std::span<const std::wstring>(list));
}

struct TypeWord {
    ParameterKind kind;
    const char* word;
};

constexpr std::array typeWords{
    TypeWord{ParameterKind::real, "real"},
    TypeWord{ParameterKind::integer, "int"},
    TypeWord{ParameterKind::boolean, "bool"},
    TypeWord{ParameterKind::text, "string"},
};

void putParameter(Values& values, const ModelParameter& parameter) {
    const auto key = [&](const wchar_t* word) { return wide(parameter.name) + keySeparator + word; };
    const auto put = [&](const wchar_t* word, const std::optional<ParameterValue>& value) {
        if (value)
            values[key(word)] = variantOf(*value);
    };
    put(L"value", parameter.value);
    put(L"minimum", parameter.minimum);
    put(L"maximum", parameter.maximum);
    put(L"default", parameter.defaultValue);
    if (!parameter.dimensionality.empty())
        values[key(L"dimensionality")] = VariantArray::of(std::span<const double>(parameter.dimensionality));
    if (parameter.kind == ParameterKind::text) {
        values[key(L"restricted")] = Variant(parameter.restricted);
        values[key(L"options")] = listOf(parameter.options);
    }
}

void putParameters(Values& values, const std::vector<ModelParameter>& parameters) {
    std::vector<std::string> names, modes, types;
    for (const ModelParameter& parameter : parameters) {
        names.push_back(parameter.name);
        modes.emplace_back(parameter.isInput ? "input" : "output");
        types.emplace_back(std::ranges::find(typeWords, parameter.kind, &TypeWord::kind)->word);
        putParameter(values, parameter);
    }
    values[L"parameters"] = listOf(names);
    values[L"parameter modes"] = listOf(modes);
    values[L"parameter types"] = listOf(types);
}

/// Plain text is stored as text, everything else as bytes.
Variant fileContent(const std::string& bytes) {
    const bool isText = std::ranges::all_of(
        bytes, [](char c) { return (c >= 0x20 && c < 0x7F) || c == '\r' || c == '\n' || c == '\t'; });
    if (isText)
        return Variant(std::wstring_view(wide(bytes)));
    return VariantArray::ofBytes(
        std::span(reinterpret_cast<const unsigned char*>(bytes.data()), bytes.size()));
}

void putFiles(Values& values, const UnitModel& model) {
    std::vector<std::string> names;
    for (const ModelFile& file : model.files) {
        names.push_back(file.name);
        values[std::wstring(L"file") + keySeparator + wide(file.name)] = fileContent(file.bytes);
    }
    names.push_back(narrow(scriptName, CP_UTF8));
    values[std::wstring(L"file") + keySeparator + scriptName] = fileContent(model.script.bytes);
    values[L"files"] = listOf(names);
}

std::vector<std::string> portsOf(const std::vector<PortConnection>& connections) {
    std::vector<std::string> ports;
    for (const PortConnection& connection : connections)
        ports.push_back(connection.port);
    return ports;
}

} // namespace

ComRef<IPropertyBag> createBag() {
    return ComRef<IPropertyBag>(ComRef(new CComObject<PropertyBag>()).get());
}

ComRef<IPropertyBag> createModelBag(const UnitModel& model, const UnitCase& unit) {
    const ComRef bag(new CComObject<PropertyBag>());
    Values& values = bag->values;
    values[L"info level"] = Variant(static_cast<LONG>(model.echo ? 1 : 0));
    values[L"reports"] = listOf(model.reports);
    for (const auto& [name, text] : model.reportTexts)
        values[name == outputReport ? std::wstring(L"report Matlab Output")
                                    : std::wstring(L"report") + keySeparator + wide(name)] =
            Variant(std::wstring_view(wide(text)));
    values[L"feeds"] = listOf(portsOf(unit.feeds));
    values[L"products"] = listOf(portsOf(unit.products));
    putParameters(values, model.parameters);
    putFiles(values, model);
    return ComRef<IPropertyBag>(bag.get());
}

ComRef<IErrorLog> createErrorLog(std::vector<std::string>& entries) {
    const ComRef log(new CComObject<ErrorLog>());
    log->entries = &entries;
    return ComRef<IErrorLog>(log.get());
}

} // namespace solvane::host
