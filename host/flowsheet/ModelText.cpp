// A model as text for people and as JSON for programs.
#include "ModelDescription.h"
#include "cases/NameList.h"
#include "cases/ParameterRules.h"
#include "cases/UnitOfMeasure.h"
#include "results/TextTable.h"

#include <nlohmann/json.hpp>

namespace solvane::host {

namespace {

using Json = nlohmann::ordered_json;

std::string namesOrNone(const std::vector<std::string>& names) {
    return names.empty() ? "none" : nameList(names);
}

std::string limitsText(const ModelParameter& parameter) {
    std::vector<std::string> parts;
    if (parameter.minimum && parameter.maximum)
        parts.push_back("from " + valueText(parameter.minimum) + " to " + valueText(parameter.maximum));
    else if (parameter.minimum)
        parts.push_back("at least " + valueText(parameter.minimum));
    else if (parameter.maximum)
        parts.push_back("at most " + valueText(parameter.maximum));
    if (parameter.defaultValue)
        parts.push_back("default " + valueText(parameter.defaultValue));
    if (!parameter.options.empty())
        parts.push_back((parameter.restricted ? "one of " : "such as ") + nameList(parameter.options));
    return nameList(parts);
}

std::string section(const char* title, const std::vector<Line>& lines) {
    return lines.empty() ? std::string() : std::string("\n") + title + "\n" + columns(lines, lines[0].size());
}

Json valueJson(const ParameterValue& value) {
    return std::visit([](const auto& held) { return Json(held); }, value);
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

} // namespace

std::string modelText(const ModelDescription& description) {
    const UnitModel& model = description.model;
    std::string text = columns({{"Feeds", namesOrNone(description.feeds)},
                                {"Products", namesOrNone(description.products)},
                                {"Reports", namesOrNone(model.reports)},
                                {"Echo", model.echo ? "each command line of the script" : "none"}},
                               2);
    std::vector<Line> lines;
    for (const ModelParameter& parameter : model.parameters)
        lines.push_back({parameter.name, parameter.isInput ? "input" : "output",
                         std::string(kindName(parameter.kind)), valueText(parameter.value),
                         unitText(parameter.dimensionality), limitsText(parameter)});
    text += section("Parameters", lines);
    lines.clear();
    for (const ModelFile& file : model.files)
        lines.push_back({file.name, std::to_string(file.bytes.size()) + " bytes"});
    text += section("Files", lines) + "\nScript (" + std::to_string(model.script.bytes.size()) + " bytes)\n" +
            model.script.bytes;
    return text.ends_with('\n') ? text : text + "\n";
}

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
    // A script in another code page is not UTF-8.
    return json.dump(2, ' ', false, Json::error_handler_t::replace) + "\n";
}

} // namespace solvane::host
