#include "ModelReader.h"

#include "DocumentGuard.h"
#include "ModelLimits.h"
#include "ModelWords.h"
#include "ModelWriter.h"
#include "com/Failure.h"
#include "com/Handle.h"
#include "com/Numbers.h"
#include "com/Text.h"
#include "unit/model/ReportNames.h"
#include "unit/model/Unit.h"

#include <libxml/xmlreader.h>

#include <algorithm>
#include <array>
#include <optional>

namespace solvane {

namespace {

constexpr int readerOptions = XML_PARSE_RECOVER | XML_PARSE_NOBLANKS | XML_PARSE_NONET;

struct TextReaderPolicy {
    using Type = xmlTextReader*;
    static Type empty() { return nullptr; }
    static void close(Type reader) { xmlFreeTextReader(reader); }
};

std::wstring wide(const std::string& text) {
    return widen(text, CP_THREAD_ACP);
}

/// One reading of a document into a unit.
class DocumentReader {
public:
    DocumentReader(Unit& unit, xmlTextReader* reader) : unit_(unit), reader_(reader) {}

    /// Takes the node that the reader is at.
    void HandleModelNode();

    /// Closes the list of warnings, which ends early where there are more than anybody reads.
    void finishWarnings() {
        if (warningsLeftOut_ > 0)
            unit_.loadWarnings += "and " + std::to_string(warningsLeftOut_) + " more\r\n";
    }

private:
    using Attribute = std::optional<std::string>;

    struct Element {
        std::string_view name;
        void (DocumentReader::*begin)();
    };
    static const std::array<Element, 8> elements;

    void beginElement(std::string_view name);
    void endElement(std::string_view name);
    void beginRoot() {}
    void beginInformation();
    void beginReport();
    void beginFeed() { beginPort(true, unit_.feedPorts, "Feed port is missing name\r\n"); }
    void beginProduct() { beginPort(false, unit_.productPorts, "Product port is missing name\r\n"); }
    void beginPort(bool isFeed, std::vector<ComRef<CPort>>& ports, const char* missing);
    void beginFile();
    void beginOption();
    void beginParameter();
    void readParameter(CParameter& parameter);
    void readDimensionality(CParameter& parameter, const std::string& list);

    /// A value of the parameter's kind. A text that is none gives the warning and nothing.
    std::optional<Variant> valueFrom(const CParameter& parameter, const std::string& text,
                                     const char* invalid);

    Attribute attribute(const char* name) const {
        xmlChar* value = xmlTextReaderGetAttribute(reader_, reinterpret_cast<const xmlChar*>(name));
        if (!value)
            return std::nullopt;
        std::string text(reinterpret_cast<const char*>(value));
        xmlFree(value);
        return text;
    }
    /// With a warning where there is none.
    Attribute required(const char* name, const char* missing) {
        Attribute value = attribute(name);
        if (!value)
            warn(missing);
        return value;
    }
    void warn(const std::string& line) {
        if (warningsLeftOut_ > 0 || unit_.loadWarnings.size() + line.size() > modelLimits::warnings)
            ++warningsLeftOut_;
        else
            unit_.loadWarnings += line;
    }

    Unit& unit_;
    xmlTextReader* reader_;
    CParameter* openOptionParameter = nullptr; ///< whose options are being read
    std::wstring* textTarget = nullptr;        ///< the report whose text is being read
    std::size_t warningsLeftOut_ = 0;
};

const std::array<DocumentReader::Element, 8> DocumentReader::elements{{
    {"UnitOperation", &DocumentReader::beginRoot},
    {"docInfo", &DocumentReader::beginInformation},
    {"report", &DocumentReader::beginReport},
    {"feed", &DocumentReader::beginFeed},
    {"product", &DocumentReader::beginProduct},
    {"file", &DocumentReader::beginFile},
    {"parameter", &DocumentReader::beginParameter},
    {"option", &DocumentReader::beginOption},
}};

void DocumentReader::HandleModelNode() {
    const auto text = [](const xmlChar* value) {
        return std::string(value ? reinterpret_cast<const char*>(value) : "");
    };
    switch (xmlTextReaderNodeType(reader_)) {
    case XML_READER_TYPE_ELEMENT:
        beginElement(text(xmlTextReaderConstName(reader_)));
        return;
    case XML_READER_TYPE_END_ELEMENT:
        endElement(text(xmlTextReaderConstName(reader_)));
        return;
    case XML_READER_TYPE_TEXT:
        if (textTarget)
            *textTarget += wide(text(xmlTextReaderConstValue(reader_)));
        return;
    default:
        return;
    }
}

void DocumentReader::beginElement(std::string_view name) {
    const auto element = std::ranges::find(elements, name, &Element::name);
    if (element != elements.end())
        (this->*element->begin)();
    else
        warn("Unknown node type in file: " + std::string(name) + "\r\n");
}

void DocumentReader::endElement(std::string_view name) {
    if (name == "parameter") {
        if (!openOptionParameter)
            warn("Unexpected parameter close tag\r\n");
        openOptionParameter = nullptr;
    } else if (name == "report") {
        if (!textTarget)
            warn("Unexpected report close tag\r\n");
        textTarget = nullptr;
    } else if (name != "UnitOperation") {
        warn("Unexpected parameter close tag: " + std::string(name) + "\r\n");
    }
}

void DocumentReader::beginInformation() {
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

void DocumentReader::beginReport() {
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

void DocumentReader::beginPort(bool isFeed, std::vector<ComRef<CPort>>& ports, const char* missing) {
    if (const Attribute name = required("name", missing))
        ports.push_back(unit_.CreatePort(isFeed, wide(*name)));
}

void DocumentReader::beginFile() {
    if (const Attribute name = required("name", "External file is missing name\r\n"))
        unit_.additionalFiles.push_back(*name);
}

void DocumentReader::beginOption() {
    if (!openOptionParameter)
        warn("Unexpected option node\r\n");
    else if (const Attribute value = required("value", "option node missing value\r\n"))
        openOptionParameter->optionList.push_back(wide(*value));
}

// ---- parameters

void DocumentReader::beginParameter() {
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

std::optional<Variant> DocumentReader::valueFrom(const CParameter& parameter, const std::string& text,
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

void DocumentReader::readParameter(CParameter& parameter) {
    struct Bound {
        const char* attribute;
        Variant CParameter::*field;
        const char* invalid;
    };
    static constexpr std::array<Bound, 3> bounds{{
        {"min", &CParameter::minimumValue, "Parameter has invalid minimum value\r\n"},
        {"max", &CParameter::maximumValue, "Parameter has invalid maximum value\r\n"},
        {"def", &CParameter::defaultValue, "Parameter has invalid default value\r\n"},
    }};
    const ParameterKind kind = parameter.parameterKind;
    const bool isNumber = kind == ParameterKind::real || kind == ParameterKind::integer;

    constexpr char nothing[] = "0"; // no text, FALSE or zero
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

/// What stands behind the last comma counts only if it is a number; what stands before one always counts.
void DocumentReader::readDimensionality(CParameter& parameter, const std::string& list) {
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

/// For what the library would print on the host's console.
void ignoreMessage(void*, const char*, ...) {}

std::string parseError(int line, const char* message) {
    return "Parse error in xml data file, line " + std::to_string(line) + ": " + message;
}

/// The last fault is the one that is told.
void ParseErrorHandler(void* error, const char* message, xmlParserSeverities,
                       xmlTextReaderLocatorPtr locator) {
    *static_cast<std::string*>(error) =
        parseError(locator ? xmlTextReaderLocatorLineNumber(locator) : -1, message);
}

void keepFault(void* text, xmlError* fault) {
    *static_cast<std::string*>(text) = parseError(fault->line, fault->message);
}

/// What is wrong with the first bytes is found before the reader can have a handler: it goes to `fault`.
Unique<TextReaderPolicy> openReader(const std::string& path, std::string& fault) {
    xmlSetGenericErrorFunc(nullptr, ignoreMessage);
    xmlSetStructuredErrorFunc(&fault, keepFault);
    Unique<TextReaderPolicy> reader(xmlReaderForFile(path.c_str(), nullptr, readerOptions));
    xmlSetStructuredErrorFunc(nullptr, nullptr);
    return reader;
}

} // namespace

bool readUnitDocument(Unit& unit, std::string& error) {
    const std::string path = unit.workingFolder.pathOf(modelDocument);
    if (!prepareDocument(path, error))
        return false;
    std::string firstFault;
    const Unique<TextReaderPolicy> reader = openReader(path, firstFault);
    if (!reader)
        return fail(error, "Failed to open XML data file in zipped file for reading");
    xmlTextReaderSetErrorHandler(reader.get(), ParseErrorHandler, &error);
    error.clear();
    DocumentReader document(unit, reader.get());
    int state = 0;
    while ((state = xmlTextReaderRead(reader.get())) == 1)
        document.HandleModelNode();
    if (state < 0 && error.empty())
        error = firstFault.empty() ? parseError(1, "the document can't be read") : firstFault;
    document.finishWarnings();
    return error.empty();
}

} // namespace solvane
