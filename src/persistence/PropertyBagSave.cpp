#include "BagKeys.h"
#include "BagPersistence.h"
#include "ModelWords.h"
#include "WorkingFileName.h"

#include "com/Handle.h"
#include "com/Text.h"
#include "com/VariantArray.h"
#include "unit/model/ReportNames.h"
#include "unit/model/Unit.h"

#include <algorithm>

namespace solvane {

namespace {

/// Writes keys until one fails.
class BagWriter {
public:
    explicit BagWriter(IPropertyBag* bag) : bag_(bag) {}

    bool write(const std::wstring& key, const Variant& value) {
        return SUCCEEDED(bag_->Write(key.c_str(), value.in()));
    }
    bool write(const std::wstring& key, const std::vector<std::wstring>& texts) {
        return write(key, VariantArray::of(texts));
    }

private:
    IPropertyBag* bag_;
};

Variant text(std::wstring_view value) {
    return Variant(value);
}

bool writeReports(BagWriter& bag, const Unit& unit) {
    if (!bag.write(bagKeys::reports, allReportNames(unit)) ||
        !bag.write(bagKeys::outputReport, text(unit.outputText)))
        return false;
    for (std::size_t i = 0; i < unit.reportNames.size(); ++i)
        if (!bag.write(bagKeys::report(unit.reportNames[i]), text(unit.reportTexts[i])))
            return false;
    return true;
}

template <class T>
std::vector<std::wstring> namesOf(const std::vector<ComRef<T>>& objects) {
    std::vector<std::wstring> names;
    for (const ComRef<T>& object : objects)
        names.push_back(object->componentName);
    return names;
}

/// Writes bounds and defaults whether present or not: an absent one is 0.
template <class Number>
bool writeBounded(BagWriter& bag, const CParameter& parameter, Number (Variant::*number)() const) {
    const auto write = [&](const wchar_t* part, const Variant& field) {
        return bag.write(bagKeys::ofParameter(parameter.componentName, part), Variant((field.*number)()));
    };
    return write(bagKeys::value, parameter.currentValue) && write(bagKeys::minimum, parameter.minimumValue) &&
           write(bagKeys::maximum, parameter.maximumValue) &&
           write(bagKeys::defaultValue, parameter.defaultValue);
}

/// A text that may be null stays null.
Variant textOrNull(const Variant& field) {
    Variant result;
    result.put()->vt = VT_BSTR;
    return field.get().bstrVal ? text(field.text()) : result;
}

bool writeParameter(BagWriter& bag, const CParameter& parameter) {
    const auto key = [&](const wchar_t* part) { return bagKeys::ofParameter(parameter.componentName, part); };
    switch (parameter.parameterKind) {
    case ParameterKind::real:
        return writeBounded(bag, parameter, &Variant::real) &&
               bag.write(key(bagKeys::dimensionality), VariantArray::of(parameter.dimensionality));
    case ParameterKind::integer:
        return writeBounded(bag, parameter, &Variant::integer);
    case ParameterKind::boolean:
        return bag.write(key(bagKeys::value), Variant(parameter.currentValue.boolean() != VARIANT_FALSE)) &&
               bag.write(key(bagKeys::defaultValue),
                         Variant(parameter.defaultValue.boolean() != VARIANT_FALSE));
    case ParameterKind::string:
        // Does not write a default's text: a present default becomes an empty text, an absent one a null.
        return bag.write(key(bagKeys::value), textOrNull(parameter.currentValue)) &&
               bag.write(key(bagKeys::defaultValue),
                         parameter.defaultValue.isEmpty() ? textOrNull(parameter.defaultValue) : text(L"")) &&
               bag.write(key(bagKeys::restricted), Variant(parameter.restrictedToList)) &&
               bag.write(key(bagKeys::options), parameter.optionList);
    }
    return false;
}

bool writeParameters(BagWriter& bag, const Unit& unit) {
    // A host that serves messages while it writes lets the user remove one in the unit's window.
    const std::vector<ComRef<CParameter>> parameters = unit.parameters;
    std::vector<std::wstring> modes;
    std::vector<std::wstring> types;
    for (const ComRef<CParameter>& parameter : parameters) {
        const auto kind = static_cast<std::size_t>(parameter->parameterKind);
        if (kind >= modelWords::kinds.size())
            return false;
        modes.emplace_back(parameter->isInput ? modelWords::input : modelWords::output);
        types.emplace_back(modelWords::kinds[kind]);
    }
    return bag.write(bagKeys::parameters, namesOf(parameters)) && bag.write(bagKeys::parameterModes, modes) &&
           bag.write(bagKeys::parameterTypes, types) &&
           std::ranges::all_of(parameters, [&](const ComRef<CParameter>& parameter) {
               return writeParameter(bag, *parameter);
           });
}

// ---- files

/// Reads a whole file. Returns the reason of a failure, null on success.
const char* readFile(const std::string& path, std::vector<unsigned char>& bytes) {
    const FileHandle file(CreateFileA(path.c_str(), GENERIC_READ, FILE_SHARE_READ, nullptr, OPEN_EXISTING,
                                      FILE_ATTRIBUTE_NORMAL, nullptr));
    if (!file)
        return "unable to re-open file";
    bytes.resize(GetFileSize(file.get(), nullptr));
    DWORD read = 0;
    if (!ReadFile(file.get(), bytes.data(), static_cast<DWORD>(bytes.size()), &read, nullptr))
        return "read error";
    bytes.resize(read);
    return nullptr;
}

bool isPlainText(std::span<const unsigned char> bytes) {
    return std::ranges::all_of(bytes, [](unsigned char c) {
        return (c >= 0x20 && c <= 0x7F) || c == '\r' || c == '\t' || c == '\n';
    });
}

/// Writes plain text as text, and anything else as bytes followed by a zero byte.
Variant fileValue(std::vector<unsigned char> bytes) {
    if (isPlainText(bytes))
        return text(widen({reinterpret_cast<const char*>(bytes.data()), bytes.size()}, CP_THREAD_ACP));
    bytes.push_back(0);
    return VariantArray::ofBytes(bytes);
}

HRESULT writeFiles(BagWriter& bag, Unit& unit) {
    std::vector<std::string> names = unit.additionalFiles;
    names.push_back(userScriptName);
    std::vector<std::wstring> wideNames;
    for (const std::string& name : names)
        wideNames.push_back(widen(name));
    if (!bag.write(bagKeys::files, wideNames))
        return E_FAIL;
    for (std::size_t i = 0; i < names.size(); ++i) {
        const std::string path = unit.workingFolder.pathOf(names[i]);
        std::vector<unsigned char> bytes;
        const char* reason = workingFileNameFault(names[i]);
        if (!reason)
            reason = readFile(path, bytes);
        if (reason)
            return unit.raise(L"save error", widen("Failed to add \"" + path + "\": " + reason), L"Save",
                              L"IPersistPropertyBag");
        if (!bag.write(bagKeys::file(wideNames[i]), fileValue(std::move(bytes))))
            return E_FAIL;
    }
    return S_OK;
}

} // namespace

HRESULT saveToBag(Unit& unit, IPropertyBag* bag) {
    if (!bag)
        return E_POINTER;
    BagWriter writer(bag);
    if (!writer.write(bagKeys::infoLevel, Variant(LONG{unit.echoLevel})) || !writeReports(writer, unit) ||
        !writer.write(bagKeys::feeds, namesOf(unit.feedPorts)) ||
        !writer.write(bagKeys::products, namesOf(unit.productPorts)) || !writeParameters(writer, unit))
        return E_FAIL;
    return writeFiles(writer, unit);
}

} // namespace solvane
