#include "BagKeys.h"
#include "BagPersistence.h"
#include "ModelWords.h"
#include "WorkingFileName.h"

#include "com/StdioFile.h"
#include "com/Text.h"
#include "com/VariantArray.h"
#include "unit/model/ReportNames.h"
#include "unit/model/Unit.h"

#include <limits>
#include <optional>

namespace solvane {

namespace {

/// Reads keys by the expected type; a failure goes to the host's log.
class BagReader {
public:
    BagReader(IPropertyBag* bag, IErrorLog* errorLog) : bag_(bag), errorLog_(errorLog) {}

    /// `type` VT_EMPTY accepts any. Empty if the key can't be read or converted.
    std::optional<Variant> scalar(const std::wstring& key, VARTYPE type) const {
        std::optional<Variant> value = read(key, type);
        if (!value || type == VT_EMPTY || value->type() == type)
            return value;
        Variant converted;
        if (FAILED(VariantChangeType(converted.put(), value->in(), 0, type)))
            return std::nullopt;
        return converted;
    }

    std::optional<std::wstring> text(const std::wstring& key) const {
        const std::optional<Variant> value = scalar(key, VT_BSTR);
        return value ? std::optional(std::wstring(value->text())) : std::nullopt;
    }

    /// An empty list is VT_EMPTY.
    std::optional<VariantArray> array(const std::wstring& key, VARTYPE elementType) const {
        std::optional<Variant> value = read(key, VT_EMPTY);
        if (!value)
            return std::nullopt;
        VariantArray array(std::move(*value));
        std::string error;
        return readVariantArray(array, elementType, error) ? std::optional(std::move(array)) : std::nullopt;
    }

    std::optional<std::vector<std::wstring>> texts(const std::wstring& key) const {
        const std::optional<VariantArray> value = array(key, VT_BSTR);
        return value ? std::optional(value->texts()) : std::nullopt;
    }

    void log(const std::wstring& key, const std::wstring& text) const {
        if (!errorLog_)
            return;
        EXCEPINFO exception{};
        const Bstr source(L"Solvane CAPE-OPEN Unit Operation");
        const Bstr description(text);
        exception.bstrSource = source.get();
        exception.bstrDescription = description.get();
        exception.scode = E_FAIL;
        errorLog_->AddError(key.c_str(), &exception);
    }

private:
    /// The host's value, or the variable that it refers to.
    std::optional<Variant> read(const std::wstring& key, VARTYPE type) const {
        Variant given;
        given.put()->vt = type;
        if (FAILED(bag_->Read(key.c_str(), given.in(), errorLog_)))
            return std::nullopt;
        if ((given.type() & VT_BYREF) == 0)
            return given;
        Variant value;
        return SUCCEEDED(VariantCopyInd(value.put(), given.in())) ? std::optional(value) : std::nullopt;
    }

    IPropertyBag* bag_;
    IErrorLog* errorLog_;
};

void loadReports(const BagReader& bag, Unit& unit) {
    for (const std::wstring& name : bag.texts(bagKeys::reports).value_or(std::vector<std::wstring>())) {
        if (name.empty())
            continue;
        if (isOutputReport(name)) {
            unit.outputText = bag.text(bagKeys::outputReport).value_or(L"");
        } else {
            unit.reportNames.push_back(name);
            unit.reportTexts.push_back(bag.text(bagKeys::report(name)).value_or(L""));
        }
    }
}

void loadPorts(const BagReader& bag, Unit& unit, bool areFeeds) {
    const wchar_t* key = areFeeds ? bagKeys::feeds : bagKeys::products;
    for (const std::wstring& name : bag.texts(key).value_or(std::vector<std::wstring>()))
        if (!name.empty())
            (areFeeds ? unit.feedPorts : unit.productPorts).push_back(unit.CreatePort(areFeeds, name));
}

// ---- parameters

Variant initialValue(ParameterKind kind) {
    switch (kind) {
    case ParameterKind::real:
        return Variant(std::numeric_limits<double>::quiet_NaN());
    case ParameterKind::integer:
        return Variant(LONG{0});
    case ParameterKind::boolean:
        return Variant(false);
    case ParameterKind::string:
        break;
    }
    return Variant::textOrNull({});
}

void loadParameterFields(const BagReader& bag, CParameter& parameter) {
    const auto key = [&](const wchar_t* part) { return bagKeys::ofParameter(parameter.componentName, part); };
    const auto replace = [&](const wchar_t* part, Variant& field) {
        if (std::optional<Variant> value = bag.scalar(key(part), variantTypeOf(parameter.parameterKind)))
            field = std::move(*value);
    };
    parameter.currentValue = initialValue(parameter.parameterKind);
    replace(bagKeys::value, parameter.currentValue);
    replace(bagKeys::defaultValue, parameter.defaultValue);
    if (parameter.parameterKind == ParameterKind::real || parameter.parameterKind == ParameterKind::integer) {
        replace(bagKeys::minimum, parameter.minimumValue);
        replace(bagKeys::maximum, parameter.maximumValue);
    }
    if (parameter.parameterKind == ParameterKind::real) {
        if (const auto dimensions = bag.array(key(bagKeys::dimensionality), VT_R8))
            parameter.dimensionality = dimensions->reals();
    }
    if (parameter.parameterKind == ParameterKind::string) {
        if (const auto restricted = bag.scalar(key(bagKeys::restricted), VT_BOOL))
            parameter.restrictedToList = restricted->boolean() != VARIANT_FALSE;
        if (auto options = bag.texts(key(bagKeys::options)))
            parameter.optionList = std::move(*options);
    }
}

std::optional<ParameterKind> kindOf(const std::wstring& word) {
    for (std::size_t i = 0; i < modelWords::kinds.size(); ++i)
        if (compareNoCase(word, modelWords::kinds[i]) == 0)
            return static_cast<ParameterKind>(i);
    return std::nullopt;
}

void loadParameter(const BagReader& bag, Unit& unit, const std::wstring& name, const std::wstring& type,
                   const std::wstring& mode) {
    const bool isInput = compareNoCase(mode, modelWords::input) == 0;
    if (!isInput && compareNoCase(mode, modelWords::output) != 0) {
        bag.log(bagKeys::parameterModes, L"Invalid model \"" + mode + L"\" for parameter \"" + name + L"\"");
        return;
    }
    const std::optional<ParameterKind> kind = kindOf(type);
    if (!kind) {
        bag.log(bagKeys::parameterTypes,
                L"Invalid data type \"" + type + L"\" for parameter \"" + name + L"\"");
        return;
    }
    unit.parameters.push_back(unit.CreateParameter(*kind, isInput, name));
    loadParameterFields(bag, *unit.parameters.back());
}

void loadParameters(const BagReader& bag, Unit& unit) {
    const auto names = bag.texts(bagKeys::parameters);
    const auto types = bag.texts(bagKeys::parameterTypes);
    const auto modes = bag.texts(bagKeys::parameterModes);
    if (!names || !types || !modes)
        return;
    if (types->size() != names->size()) {
        bag.log(bagKeys::parameterTypes, L"array size mismatch");
        return;
    }
    if (modes->size() != names->size()) {
        bag.log(bagKeys::parameterModes, L"array size mismatch");
        return;
    }
    for (std::size_t i = 0; i < names->size(); ++i)
        if (!(*names)[i].empty())
            loadParameter(bag, unit, (*names)[i], (*types)[i], (*modes)[i]);
}

// ---- files

/// Reads the bytes of a file's value; false for a value of another type. An empty value leaves `bytes` as the
/// previous file left them.
bool fileBytes(Variant value, std::vector<unsigned char>& bytes) {
    if (value.isEmpty())
        return true;
    if (value.type() == VT_BSTR) {
        const std::string text = narrow(value.text(), CP_THREAD_ACP);
        bytes.assign(text.begin(), text.end());
        return true;
    }
    VariantArray array(std::move(value));
    std::string error;
    if (!readVariantArray(array, VT_UI1, error) || array.lowerBound() != 0)
        return false;
    bytes = array.bytes();
    return true;
}

HRESULT restoreFile(Unit& unit, const std::string& name, std::span<const unsigned char> bytes) {
    const auto refused = [&](const char* fault) {
        return unit.raise(L"load error", widen("Failed to restore \"" + name + "\": " + fault), L"Load",
                          L"IPersistPropertyBag");
    };
    const char* fault = workingFileNameFault(name);
    if (fault)
        return refused(fault);
    const std::string path = unit.workingFolder.pathOf(name);
    StdioFile file = openWorkingFile(path, fault);
    if (fault)
        return refused(fault);
    if (!file) // prescribed text, though this is a load
        return unit.raise(L"save error", widen("Failed to create \"" + path + "\": unable to open file"),
                          L"Load", L"IPersistPropertyBag");
    const bool isWritten = std::fwrite(bytes.data(), 1, bytes.size(), file.get()) == bytes.size();
    if (!closeOverwritten(std::move(file)) || !isWritten)
        return unit.raise(L"load error", widen("Failed to restore \"" + path + "\": write error"), L"Load",
                          L"IPersistPropertyBag");
    return S_OK;
}

HRESULT loadFiles(const BagReader& bag, Unit& unit) {
    bool foundScript = false;
    std::vector<unsigned char> bytes;
    for (const std::wstring& wideName : bag.texts(bagKeys::files).value_or(std::vector<std::wstring>())) {
        if (wideName.empty())
            continue;
        const std::wstring key = bagKeys::file(wideName);
        std::optional<Variant> value = bag.scalar(key, VT_EMPTY);
        if (!value)
            continue;
        if (!fileBytes(std::move(*value), bytes)) {
            bag.log(key, L"invalid file data");
            continue;
        }
        const std::string name = narrow(wideName);
        const HRESULT restored = restoreFile(unit, name, bytes);
        if (FAILED(restored))
            return restored;
        if (name == userScriptName)
            foundScript = true;
        else
            unit.additionalFiles.push_back(name);
    }
    if (!foundScript) {
        bag.log(bagKeys::files, L"calc.m not found");
        return E_FAIL;
    }
    return S_OK;
}

} // namespace

HRESULT loadFromBag(Unit& unit, IPropertyBag* bag, IErrorLog* errorLog) {
    if (!bag)
        return E_POINTER;
    const BagReader reader(bag, errorLog);
    unit.clear();
    // Keeps the reports, so a load into a used unit adds to them.
    if (const std::optional<Variant> level = reader.scalar(bagKeys::infoLevel, VT_I4))
        unit.echoLevel = level->integer();
    loadReports(reader, unit);
    loadPorts(reader, unit, true);
    loadPorts(reader, unit, false);
    loadParameters(reader, unit);
    return loadFiles(reader, unit);
}

} // namespace solvane
