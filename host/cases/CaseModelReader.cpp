#include "CaseParts.h"
#include "FilePath.h"
#include "ParameterRules.h"
#include "Quantity.h"

#include <algorithm>
#include <array>
#include <span>

namespace solvane::host {

namespace {

/// Names that the unit reserves.
constexpr std::array<std::string_view, 7> reservedFileNames{
    "calc.m", "unitCalc.m", "runUnit.m", "initRun.m", "report.txt", "unit.xml", "_unitOperationModel_.svm"};
constexpr std::array<std::string_view, 1> reservedReports{"Matlab Output"};

constexpr std::size_t mostExponents = 9; // with that which marks a difference

template <class T>
bool readAs(const CasePlace& place, ParameterValue& result) {
    return read(place, result.emplace<T>());
}

/// A number in SI units, or a quantity with its unit.
bool readReal(const CasePlace& place, std::span<const double> dimensionality, ParameterValue& result) {
    if (!place.value().is_string())
        return readAs<double>(place, result);
    Quantity quantity;
    std::string error;
    if (!parseQuantity(place.value().get_ref<const std::string&>(), dimensionality, quantity, error))
        return place.fail(error);
    result = quantity.value;
    return true;
}

bool readValue(const CasePlace& place, const ModelParameter& parameter, ParameterValue& result) {
    switch (parameter.kind) {
    case ParameterKind::real:
        return readReal(place, parameter.dimensionality, result);
    case ParameterKind::integer:
        return readAs<std::int32_t>(place, result);
    case ParameterKind::boolean:
        return readAs<bool>(place, result);
    case ParameterKind::text:
        // Only here may a text be empty.
        result = std::string();
        return place.value() == "" || readAs<std::string>(place, result);
    }
    return false;
}

bool readOptionalValue(const CasePlace& place, const char* key, const ModelParameter& parameter,
                       std::optional<ParameterValue>& result) {
    return !place.value().contains(key) || readValue(place.member(key), parameter, result.emplace());
}

bool hasKnownKeys(const CasePlace& place, ParameterKind kind) {
    switch (kind) {
    case ParameterKind::real:
        return place.isObject(
            {"name", "kind", "mode", "value", "default", "minimum", "maximum", "dimensionality"});
    case ParameterKind::integer:
        return place.isObject({"name", "kind", "mode", "value", "default", "minimum", "maximum"});
    case ParameterKind::boolean:
        return place.isObject({"name", "kind", "mode", "value", "default"});
    case ParameterKind::text:
        return place.isObject({"name", "kind", "mode", "value", "default", "options", "restricted"});
    }
    return false;
}

bool readMode(const CasePlace& parameter, bool& isInput) {
    std::string mode;
    if (!parameter.required("mode", mode))
        return false;
    isInput = mode == "input";
    return isInput || mode == "output" || parameter.member("mode").fail("expected \"input\" or \"output\"");
}

/// A unit such as "W", or the list of exponents.
bool readDimensionality(const CasePlace& place, std::vector<double>& exponents) {
    if (!place.value().is_string())
        return read(place, exponents) &&
               (exponents.size() <= mostExponents || place.fail("there are more than 9 exponents"));
    const auto parsed = parseUnit(place.value().get_ref<const std::string&>());
    if (!parsed || !parsed->isSi())
        return place.fail("the unit is unknown, or is not an SI unit; write SI units as \"J/mol/K\", or a "
                          "list of exponents of m, kg, "
                          "s, A, K, mol, cd, rad");
    exponents = parsed->exponents;
    return true;
}

bool isWithinLimits(const CasePlace& place, const ModelParameter& parameter, const char* key,
                    const std::optional<ParameterValue>& value) {
    const std::string fault = value ? limitFault(parameter, *value) : std::string();
    return fault.empty() || place.member(key).fail(fault);
}

bool readParameter(const CasePlace& place, ModelParameter& parameter) {
    if (!place.value().is_object())
        return place.isObject({});
    if (!place.required("kind", parameter.kind) || !hasKnownKeys(place, parameter.kind) ||
        !place.required("name", parameter.name) || !readMode(place, parameter.isInput))
        return false;
    if (place.value().contains("dimensionality") &&
        !readDimensionality(place.member("dimensionality"), parameter.dimensionality))
        return false;
    if (!readOptionalValue(place, "value", parameter, parameter.value) ||
        !readOptionalValue(place, "default", parameter, parameter.defaultValue) ||
        !readOptionalValue(place, "minimum", parameter, parameter.minimum) ||
        !readOptionalValue(place, "maximum", parameter, parameter.maximum) ||
        !place.optional("options", parameter.options))
        return false;
    parameter.restricted = !parameter.options.empty();
    if (!place.optional("restricted", parameter.restricted) ||
        !isWithinLimits(place, parameter, "value", parameter.value) ||
        !isWithinLimits(place, parameter, "default", parameter.defaultValue))
        return false;
    const char* const key = parameter.value ? "value" : "default";
    parameter.isPlainNumber = place.value().contains(key) && place.value().at(key).is_number();
    if (!parameter.value)
        parameter.value = parameter.defaultValue;
    return parameter.value || !parameter.isInput || place.fail("an input needs a \"value\" or a \"default\"");
}

bool readParameters(const CasePlace& model, std::vector<ModelParameter>& parameters) {
    if (!model.value().contains("parameters"))
        return true;
    const CasePlace list = model.member("parameters");
    if (!list.value().is_array())
        return list.fail("expected a list");
    std::vector<std::string> names;
    for (std::size_t i = 0; i < list.value().size(); ++i) {
        const CasePlace place = list.element(i);
        if (!readParameter(place, parameters.emplace_back()) ||
            !isNewName(place, parameters.back().name, names))
            return false;
    }
    return true;
}

/// Whether the unit does not reserve the name.
bool isFree(const CasePlace& place, const std::string& name, std::span<const std::string_view> reserved) {
    return std::ranges::none_of(reserved, [&](std::string_view own) { return isSameName(name, own); }) ||
           place.fail("the unit reserves the name \"" + name + "\"; choose another one");
}

bool readReports(const CasePlace& model, std::vector<std::string>& reports) {
    if (!model.optional("reports", reports))
        return false;
    std::vector<std::string> names;
    for (std::size_t i = 0; i < reports.size(); ++i) {
        const CasePlace place = model.member("reports").element(i);
        if (!isFree(place, reports[i], reservedReports) || !isNewName(place, reports[i], names))
            return false;
    }
    return true;
}

/// What the reports contain after a former run.
bool readReportTexts(const CasePlace& model, UnitModel& result) {
    if (!model.value().contains("reportTexts"))
        return true;
    const CasePlace texts = model.member("reportTexts");
    if (!texts.value().is_object())
        return texts.fail("expected an object of texts by report");
    for (const auto& [name, text] : texts.value().items()) {
        if (!text.is_string())
            return texts.member(name).fail("expected a text in quotes");
        result.reportTexts[name] = text.get<std::string>();
    }
    return true;
}

/// The script's file, or its lines.
bool readScript(const CasePlace& place, const std::filesystem::path& folder, ModelFile& script) {
    if (place.value().is_string())
        return readModelFile(place, folder, script);
    if (!place.value().is_array())
        return place.fail("expected the path of the script or the list of its lines");
    for (std::size_t i = 0; i < place.value().size(); ++i) {
        const CasePlace line = place.element(i);
        if (!line.value().is_string())
            return line.fail("expected a line in quotes");
        script.bytes += line.value().get<std::string>() + "\r\n";
    }
    return true;
}

bool readFiles(const CasePlace& model, const std::filesystem::path& folder, std::vector<ModelFile>& files) {
    if (!model.value().contains("files"))
        return true;
    const CasePlace list = model.member("files");
    if (!list.value().is_array())
        return list.fail("expected a list of paths");
    std::vector<std::string> names;
    for (std::size_t i = 0; i < list.value().size(); ++i) {
        const CasePlace place = list.element(i);
        if (!readModelFile(place, folder, files.emplace_back()) ||
            !isFree(place, files.back().name, reservedFileNames) ||
            !isNewName(place, files.back().name, names))
            return false;
    }
    return true;
}

} // namespace

bool isNewName(const CasePlace& place, const std::string& name, std::vector<std::string>& names) {
    const auto isSame = [&](const std::string& other) { return isSameName(name, other); };
    if (std::ranges::any_of(names, isSame))
        return place.fail("the name \"" + name + "\" is already taken");
    names.push_back(name);
    return true;
}

bool readModelFile(const CasePlace& place, const std::filesystem::path& folder, ModelFile& file) {
    std::string path, error;
    if (!read(place, path))
        return false;
    file.path = folder / filePath(path);
    file.name = pathText(file.path.filename());
    return readFile(file.path, file.bytes, error) || place.fail(error);
}

bool readModel(const CasePlace& place, const std::filesystem::path& folder, UnitModel& model) {
    if (!place.isObject({"parameters", "reports", "reportTexts", "script", "files", "echo"}) ||
        !readParameters(place, model.parameters) || !readReports(place, model.reports) ||
        !readReportTexts(place, model) || !readFiles(place, folder, model.files) ||
        !place.optional("echo", model.echo))
        return false;
    if (!place.value().contains("script"))
        return place.fail("the key \"script\" is missing");
    return readScript(place.member("script"), folder, model.script);
}

} // namespace solvane::host
