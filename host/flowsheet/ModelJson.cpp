// A model as JSON: for programs, and as the files of a case.
#include "ModelDescription.h"
#include "UnpackedModel.h"
#include "cases/FilePath.h"
#include "cases/ParameterRules.h"
#include "cases/UnitOfMeasure.h"

#include <nlohmann/json.hpp>

#include <algorithm>
#include <array>
#include <cmath>

namespace solvane::host {

namespace {

using Json = nlohmann::ordered_json;

constexpr char caseFile[] = "case.json";
constexpr char modelFile[] = "model.json";
constexpr char scriptFile[] = "script.m";

/// A script in another code page is not UTF-8.
std::string dump(const Json& json) {
    return json.dump(2, ' ', false, Json::error_handler_t::replace) + "\n";
}

Json valueJson(const ParameterValue& value) {
    return std::visit([](const auto& held) { return Json(held); }, value);
}

/// JSON has no NaN, which is the value of an output before the first run.
bool isNumber(const ParameterValue& value) {
    const double* real = std::get_if<double>(&value);
    return !real || std::isfinite(*real);
}

Json parameterJson(const ModelParameter& parameter) {
    Json json{{"name", parameter.name},
              {"kind", kindName(parameter.kind)},
              {"mode", parameter.isInput ? "input" : "output"}};
    const auto put = [&](const char* key, const std::optional<ParameterValue>& value) {
        if (value)
            json[key] = valueJson(*value);
    };
    put("value", parameter.value);
    put("minimum", parameter.minimum);
    put("maximum", parameter.maximum);
    put("default", parameter.defaultValue);
    if (!parameter.dimensionality.empty())
        json["dimensionality"] = parameter.dimensionality;
    if (!parameter.options.empty()) {
        json["options"] = parameter.options;
        json["restricted"] = parameter.restricted;
    }
    return json;
}

/// As a case has it, with a unit that people read if it stands for the same exponents.
Json caseParameterJson(const ModelParameter& parameter) {
    Json json = parameterJson(parameter);
    if (parameter.value && !isNumber(*parameter.value))
        json.erase("value");
    const std::string unit = unitText(parameter.dimensionality);
    const auto parsed = parseUnit(unit);
    if (!unit.empty() && parsed && parsed->isSi() && parsed->exponents == parameter.dimensionality)
        json["dimensionality"] = unit;
    if (parameter.restricted)
        json["restricted"] = true;
    return json;
}

/// A model's file keeps its name, unless unpacking writes another one under it.
std::string placeOf(const std::string& name) {
    const std::array own{caseFile, modelFile, scriptFile};
    const bool isTaken = std::ranges::any_of(own, [&](const char* taken) { return isSameName(taken, name); });
    return isTaken ? "files/" + name : name;
}

std::string modelFileText(const UnitModel& model) {
    Json json{{"parameters", Json::array()}, {"reports", model.reports}};
    for (const ModelParameter& parameter : model.parameters)
        json["parameters"].push_back(caseParameterJson(parameter));
    json["script"] = scriptFile;
    json["files"] = Json::array();
    for (const ModelFile& file : model.files)
        json["files"].push_back(placeOf(file.name));
    json["echo"] = model.echo;
    if (!model.reportTexts.empty())
        json["reportTexts"] = model.reportTexts;
    return dump(json);
}

/// A model file has no streams: these are examples.
std::string caseFileText(const ModelDescription& description) {
    Json json{{"compounds", {"methane"}}, {"feeds", Json::array()}};
    for (const std::string& feed : description.feeds)
        json["feeds"].push_back({{"name", feed},
                                 {"temperature", 300},
                                 {"pressure", 1e5},
                                 {"flow", 1},
                                 {"composition", {{"methane", 1}}}});
    json["products"] = description.products;
    json["model"] = modelFile;
    return dump(json);
}

} // namespace

std::string modelJson(const ModelDescription& description) {
    const UnitModel& model = description.model;
    Json json{{"feeds", description.feeds},  {"products", description.products},
              {"parameters", Json::array()}, {"reports", model.reports},
              {"files", Json::array()},      {"script", model.script.bytes},
              {"echo", model.echo}};
    for (const ModelParameter& parameter : model.parameters)
        json["parameters"].push_back(parameterJson(parameter));
    for (const ModelFile& file : model.files)
        json["files"].push_back({{"name", file.name}, {"size", file.bytes.size()}});
    return dump(json);
}

std::vector<ModelFile> unpackModel(const ModelDescription& description) {
    const UnitModel& model = description.model;
    std::vector<ModelFile> files{{scriptFile, model.script.bytes},
                                 {modelFile, modelFileText(model)},
                                 {caseFile, caseFileText(description)}};
    for (const ModelFile& file : model.files)
        files.push_back({placeOf(file.name), file.bytes});
    return files;
}

} // namespace solvane::host
