#include "ModelElements.h"

#include "ModelLimits.h"
#include "ModelWords.h"
#include "com/Handle.h"
#include "com/Numbers.h"
#include "com/Text.h"
#include "unit/model/ReportNames.h"

#include <algorithm>
#include <span>

namespace solvane {

namespace {

struct XmlTextPolicy {
    using Type = xmlChar*;
    static Type empty() { return nullptr; }
    static void close(Type text) { xmlFree(text); }
};

std::string textOf(const xmlChar* text) {
    return text ? reinterpret_cast<const char*>(text) : "";
}

std::wstring wide(const std::string& text) {
    return widen(text, CP_THREAD_ACP);
}

} // namespace

const std::array<ModelElements::Element, 8> ModelElements::elements{{
    {"UnitOperation", &ModelElements::beginRoot},
    {"docInfo", &ModelElements::beginInformation},
    {"report", &ModelElements::beginReport},
    {"feed", &ModelElements::beginFeed},
    {"product", &ModelElements::beginProduct},
    {"file", &ModelElements::beginFile},
    {"parameter", &ModelElements::beginParameter},
    {"option", &ModelElements::beginOption},
}};

void ModelElements::HandleModelNode() {
    switch (xmlTextReaderNodeType(reader_)) {
    case XML_READER_TYPE_ELEMENT:
        beginElement(textOf(xmlTextReaderConstName(reader_)));
        return;
    case XML_READER_TYPE_END_ELEMENT:
        endElement(textOf(xmlTextReaderConstName(reader_)));
        return;
    case XML_READER_TYPE_TEXT:
        if (textTarget)
            *textTarget += wide(textOf(xmlTextReaderConstValue(reader_)));
        return;
    default:
        return;
    }
}

void ModelElements::finishWarnings() {
    if (warningsLeftOut_ > 0)
        unit_.loadWarnings += "and " + std::to_string(warningsLeftOut_) + " more\r\n";
}

void ModelElements::warn(const std::string& line) {
    if (warningsLeftOut_ > 0 || unit_.loadWarnings.size() + line.size() > modelLimits::warnings)
        ++warningsLeftOut_;
    else
        unit_.loadWarnings += line;
}

ModelElements::Attribute ModelElements::attribute(const char* name) const {
    const Unique<XmlTextPolicy> value(
        xmlTextReaderGetAttribute(reader_, reinterpret_cast<const xmlChar*>(name)));
    return value ? Attribute(textOf(value.get())) : std::nullopt;
}

ModelElements::Attribute ModelElements::required(const char* name, const char* missing) {
    Attribute value = attribute(name);
    if (!value)
        warn(missing);
    return value;
}

void ModelElements::beginElement(std::string_view name) {
    const auto element = std::ranges::find(elements, name, &Element::name);
    if (element != elements.end())
        (this->*element->begin)();
    else
        warn("Unknown node type in file: " + std::string(name) + "\r\n");
}

void ModelElements::endElement(std::string_view name) {
    if (name == "parameter") {
        if (!openOptionParameter)
            warn("Unexpected parameter close tag\r\n");
        openOptionParameter = nullptr;
    } else if (name == "report") {
        if (!textTarget)
            warn("Unexpected report close tag\r\n");
        textTarget = nullptr;
    } else if (name != "UnitOperation") {
        // Prescribed text, which says "parameter" of every element.
        warn("Unexpected parameter close tag: " + std::string(name) + "\r\n");
    }
}

void ModelElements::beginInformation() {
    if (const Attribute version = attribute("version")) {
        std::uint32_t number = 0;
        if (!scanUnsigned(*version, number))
            warn("Invalid format for file version\r\n");
        else if (number > 1)
            warn(
                "File was stored with newer version of Solvane unit operation; not all saved elements may be "
                "recovered\r\n");
    }
    if (const Attribute infoLevel = attribute("infoLevel")) {
        constexpr std::array<std::int32_t, 4> levels{-1, 0, 1, 3};
        std::int32_t level = 0;
        if (!scanInteger(*infoLevel, level))
            warn("Invalid format for info level\r\n");
        else if (std::ranges::find(levels, level) == levels.end())
            warn("Invalid value for info level\r\n");
        else
            unit_.echoLevel = level;
    }
}

void ModelElements::beginReport() {
    const Attribute given = required("name", "Report is missing name\r\n");
    const std::wstring name = wide(given.value_or("Unnamed"));
    if (isOutputReport(name)) {
        unit_.outputText.clear();
        textTarget = &unit_.outputText;
    } else {
        unit_.reportNames.push_back(name);
        textTarget = &unit_.reportTexts.emplace_back();
    }
}

void ModelElements::beginPort(bool isFeed, std::vector<ComRef<CPort>>& ports, const char* missing) {
    if (const Attribute name = required("name", missing))
        ports.push_back(unit_.CreatePort(isFeed, wide(*name)));
}

void ModelElements::beginFile() {
    if (const Attribute name = required("name", "External file is missing name\r\n"))
        unit_.additionalFiles.push_back(*name);
}

void ModelElements::beginOption() {
    if (!openOptionParameter)
        warn("Unexpected option node\r\n");
    else if (const Attribute value = required("value", "option node missing value\r\n"))
        openOptionParameter->optionList.push_back(wide(*value));
}

// ---- parameters

void ModelElements::beginParameter() {
    openOptionParameter = nullptr;
    const Attribute name = required("name", "Parameter is missing name\r\n");
    if (!name)
        return;
    const Attribute mode = required("mode", "Parameter is missing mode\r\n");
    const Attribute type = required("type", "Parameter is missing type\r\n");
    if (!type)
        return;
    const auto kind = std::ranges::find(modelWords::kinds, wide(*type),
                                        [](const wchar_t* word) { return std::wstring_view(word); });
    if (kind == modelWords::kinds.end()) {
        warn("Parameter has unknown type\r\n");
        return;
    }
    const bool isInput = !mode || wide(*mode) != modelWords::output;
    const ComRef<CParameter> parameter = unit_.CreateParameter(
        static_cast<ParameterKind>(kind - modelWords::kinds.begin()), isInput, wide(*name));
    readParameter(*parameter);
    unit_.parameters.push_back(parameter);
}

std::optional<Variant> ModelElements::valueFrom(const CParameter& parameter, const std::string& text,
                                                const char* invalid) {
    switch (parameter.parameterKind) {
    case ParameterKind::real:
        if (double value = 0; scanReal(text, unit_.numericLocale.get(), value))
            return Variant(value);
        break;
    case ParameterKind::integer:
        if (std::int32_t value = 0; scanInteger(text, value))
            return Variant(LONG{value});
        break;
    case ParameterKind::boolean:
        return Variant(text == "TRUE");
    case ParameterKind::string:
        return Variant::textOrNull(wide(text));
    }
    warn(invalid);
    return std::nullopt;
}

void ModelElements::readParameter(CParameter& parameter) {
    struct Bound {
        const char* attribute;
        Variant CParameter::* field;
        const char* invalid;
    };
    static constexpr std::array<Bound, 3> bounds{{
        {"min", &CParameter::minimumValue, "Parameter has invalid minimum value\r\n"},
        {"max", &CParameter::maximumValue, "Parameter has invalid maximum value\r\n"},
        {"def", &CParameter::defaultValue, "Parameter has invalid default value\r\n"},
    }};
    const ParameterKind kind = parameter.parameterKind;
    const bool isNumber = kind == ParameterKind::real || kind == ParameterKind::integer;

    constexpr char nothing[] = "0"; // FALSE or zero
    const Attribute value = required("value", "Parameter is missing value\r\n");
    const std::string text = value.value_or(kind == ParameterKind::string ? "" : nothing);
    if (auto read = valueFrom(parameter, text, "Parameter has invalid value\r\n"))
        parameter.currentValue = std::move(*read);
    else
        parameter.currentValue = *valueFrom(parameter, nothing, "");

    for (const Bound& bound : isNumber ? std::span(bounds) : std::span(bounds).last(1))
        if (const Attribute given = attribute(bound.attribute))
            if (auto read = valueFrom(parameter, *given, bound.invalid))
                parameter.*bound.field = std::move(*read);

    if (kind == ParameterKind::real) {
        if (const Attribute list = attribute("uom"))
            readDimensionality(parameter, *list);
    } else if (kind == ParameterKind::string) {
        parameter.restrictedToList = attribute("restricted") == "TRUE";
        openOptionParameter = &parameter;
    }
}

/// Text after the last comma counts only if it is a number; text before a comma always counts.
void ModelElements::readDimensionality(CParameter& parameter, const std::string& list) {
    std::size_t start = 0;
    for (std::size_t comma; (comma = list.find(',', start)) != std::string::npos; start = comma + 1) {
        double exponent = 0;
        if (!scanReal(list.substr(start, comma - start), unit_.numericLocale.get(), exponent))
            warn("Parameter has invalid dimensionality\r\n");
        parameter.dimensionality.push_back(exponent);
    }
    if (double exponent = 0; scanReal(list.substr(start), unit_.numericLocale.get(), exponent))
        parameter.dimensionality.push_back(exponent);
}

} // namespace solvane
