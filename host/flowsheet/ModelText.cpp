// A model as text for people.
#include "ModelDescription.h"
#include "cases/NameList.h"
#include "cases/ParameterRules.h"
#include "cases/UnitOfMeasure.h"
#include "results/TextTable.h"

namespace solvane::host {

namespace {

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
                         std::string(kindName(parameter.kind)),
                         parameter.isInput || isSet(parameter) ? valueText(parameter.value) : "not set",
                         unitText(parameter.dimensionality), limitsText(parameter)});
    text += section("Parameters", lines);
    lines.clear();
    for (const ModelFile& file : model.files)
        lines.push_back({file.name, std::to_string(file.bytes.size()) + " bytes"});
    text += section("Files", lines) + "\nScript (" + std::to_string(model.script.bytes.size()) + " bytes)\n" +
            model.script.bytes;
    return text.ends_with('\n') ? text : text + "\n";
}

} // namespace solvane::host
