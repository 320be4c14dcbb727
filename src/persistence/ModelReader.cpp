#include "ModelReader.h"

#include "DocumentGuard.h"
#include "ModelElements.h"
#include "ModelWriter.h"
#include "com/Failure.h"
#include "com/Handle.h"
#include "unit/model/Unit.h"

#include <libxml/xmlreader.h>

namespace solvane {

namespace {

constexpr int readerOptions = XML_PARSE_RECOVER | XML_PARSE_NOBLANKS | XML_PARSE_NONET;

struct TextReaderPolicy {
    using Type = xmlTextReader*;
    static Type empty() { return nullptr; }
    static void close(Type reader) { xmlFreeTextReader(reader); }
};

/// Discards messages that the library would print on the host's console.
void ignoreMessage(void*, const char*, ...) {}

std::string parseError(int line, const char* message) {
    return "Parse error in xml data file, line " + std::to_string(line) + ": " + message;
}

/// Keeps the last fault.
void ParseErrorHandler(void* error, const char* message, xmlParserSeverities,
                       xmlTextReaderLocatorPtr locator) {
    *static_cast<std::string*>(error) =
        parseError(locator ? xmlTextReaderLocatorLineNumber(locator) : -1, message);
}

void keepFault(void* text, xmlError* fault) {
    *static_cast<std::string*>(text) = parseError(fault->line, fault->message);
}

/// The library parses the first bytes before the reader can have a handler: their faults go to `fault`.
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
    ModelElements elements(unit, reader.get());
    int state = 0;
    while ((state = xmlTextReaderRead(reader.get())) == 1)
        elements.HandleModelNode();
    if (state < 0 && error.empty())
        error = firstFault.empty() ? parseError(1, "the document can't be read") : firstFault;
    elements.finishWarnings();
    return error.empty();
}

} // namespace solvane
