#include "ModelDescription.h"

#include "ParameterCalls.h"
#include "PropertyBag.h"
#include "UnitCalls.h"
#include "com/Text.h"
#include "com/VariantArray.h"

#include <ocidl.h>

#include <algorithm>

namespace solvane::host {

namespace {

constexpr wchar_t scriptName[] = L"calc.m";

/// The bytes of a file as a unit writes it into a bag: text, or bytes and one more at the end.
std::string fileBytes(Variant value) {
    if (value.type() == VT_BSTR)
        return narrow(value.text(), CP_UTF8);
    VariantArray array(std::move(value));
    std::string error;
    if (!readVariantArray(array, VT_UI1, error) || array.count() == 0)
        return {};
    const auto bytes = array.bytes();
    return {bytes.begin(), bytes.end() - 1};
}

/// The files, the script and the texts of reports, which no other interface shows without a run.
bool readFiles(ICapeUnit* unit, UnitModel& model, std::string& error) {
    const auto persistence = queryInterface<IPersistPropertyBag>(unit);
    if (!persistence) {
        error = "The unit's files cannot be read: it has no IPersistPropertyBag";
        return false;
    }
    const auto bag = createBag();
    const HRESULT result = persistence->Save(bag.get(), FALSE, TRUE);
    if (FAILED(result))
        return callFailed(error, "Save", unit, result);
    const auto read = [&](const std::wstring& key) {
        Variant value;
        bag->Read(key.c_str(), value.put(), nullptr);
        return value;
    };
    const Variant level = read(L"info level");
    model.echo = level.type() == VT_I4 && level.integer() == 1;
    const auto readText = [&](const std::string& report, const std::wstring& key) {
        const Variant value = read(key);
        if (value.type() == VT_BSTR && !value.text().empty())
            model.reportTexts[report] = narrow(value.text(), CP_UTF8);
    };
    readText(std::string(outputReport), L"report Matlab Output");
    for (const std::string& report : model.reports)
        readText(report, L"report \\ " + widen(report, CP_UTF8));
    VariantArray names(read(L"files"));
    std::string fault;
    if (!readVariantArray(names, VT_BSTR, fault)) {
        error = "The unit's list of files is invalid: " + fault;
        return false;
    }
    for (const std::wstring& name : names.texts()) {
        ModelFile file{narrow(name, CP_UTF8), fileBytes(read(L"file \\ " + name))};
        if (name == scriptName)
            model.script = std::move(file);
        else
            model.files.push_back(std::move(file));
    }
    return true;
}

} // namespace

bool describeModel(ICapeUnit* unit, ModelDescription& description, std::string& error) {
    if (!readPorts(unit, description.feeds, description.products, error) ||
        !readParameters(unit, description.model.parameters, error) ||
        !readReportNames(unit, description.model.reports, error))
        return false;
    std::erase(description.model.reports, outputReport);
    return readFiles(unit, description.model, error);
}

} // namespace solvane::host
