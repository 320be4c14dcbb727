#include "ModelWriter.h"

#include "DocumentEscape.h"
#include "ModelWords.h"
#include "com/Numbers.h"
#include "com/StdioFile.h"
#include "com/Text.h"
#include "unit/CSolvaneUnitOp.h"
#include "unit/ReportNames.h"

namespace solvane {

namespace {

/// Characters of a text in one piece: the reader takes no more than ten million bytes between two tags.
/// Longer texts are divided by empty comments, which it passes over.
constexpr std::size_t longestRun = 2'000'000;

std::string word(bool value) {
    return value ? "TRUE" : "FALSE";
}

/// Writes elements one after the other. The blanks between attributes are as they have always been.
class DocumentWriter {
public:
    explicit DocumentWriter(std::FILE* file) : file_(file) {}

    void begin(const CSolvaneUnitOp& unit) {
        write("<?xml version=\"1.0\" standalone=\"yes\"?>\n<UnitOperation>\n");
        std::fprintf(file_, "<docInfo version=\"1\" infoLevel=\"%d\" />\n", static_cast<int>(unit.echoLevel));
    }

    void report(std::wstring_view name, std::wstring_view text) {
        std::fprintf(file_, "<report name=\"%s\">", escape_.EscapeWide(name));
        while (text.size() > longestRun) {
            write(escape_.EscapeWide(text.substr(0, longestRun)));
            write("<!---->");
            text.remove_prefix(longestRun);
        }
        write(escape_.EscapeWide(text));
        write("</report>\n");
    }

    void ports(const char* element, const std::vector<ComRef<CPort>>& ports) {
        for (const ComRef<CPort>& port : ports)
            named(element, escape_.EscapeWide(port->componentName));
    }

    void file(const std::string& name) { named("file", escape_.EscapeNarrow(name)); }

    void parameter(const CParameter& parameter) {
        const auto kind = static_cast<std::size_t>(parameter.parameterKind);
        std::fprintf(file_, "<parameter name=\"%s\" ", escape_.EscapeWide(parameter.componentName));
        attribute("mode", narrow(parameter.isInput ? modelWords::input : modelWords::output));
        attribute("type", narrow(modelWords::kinds[kind]));
        attribute("value", valueText(parameter, parameter.currentValue));
        present("min", parameter, parameter.minimumValue);
        present("max", parameter, parameter.maximumValue);
        present("def", parameter, parameter.defaultValue);
        if (!parameter.dimensionality.empty())
            attribute("uom", list(parameter.dimensionality));
        if (parameter.restrictedToList)
            attribute("restricted", "TRUE");
        if (parameter.optionList.empty()) {
            write("/>\n");
            return;
        }
        write(">\n");
        for (const std::wstring& option : parameter.optionList)
            std::fprintf(file_, " <option value=\"%s\"/>\n", escape_.EscapeWide(option));
        write("</parameter>\n");
    }

    void end() { write("</UnitOperation>\n"); }

private:
    void write(const char* text) { std::fputs(text, file_); }
    void named(const char* element, const char* name) {
        std::fprintf(file_, "<%s name=\"%s\" />\n", element, name);
    }
    void attribute(const char* name, const std::string& value) {
        std::fprintf(file_, "%s=\"%s\" ", name, value.c_str());
    }
    void present(const char* name, const CParameter& parameter, const Variant& field) {
        if (!field.isEmpty())
            attribute(name, valueText(parameter, field));
    }

    std::string valueText(const CParameter& parameter, const Variant& field) {
        switch (parameter.parameterKind) {
        case ParameterKind::real:
            return printReal(field.real());
        case ParameterKind::integer:
            return std::to_string(field.integer());
        case ParameterKind::boolean:
            return word(field.boolean() != VARIANT_FALSE);
        case ParameterKind::string:
            break;
        }
        return escape_.EscapeWide(field.text());
    }

    static std::string list(const std::vector<double>& numbers) {
        std::string text;
        for (const double number : numbers)
            text.append(text.empty() ? "" : ",").append(printReal(number));
        return text;
    }

    std::FILE* file_;
    DocumentEscape escape_;
};

} // namespace

bool writeUnitDocument(const CSolvaneUnitOp& unit, std::string& error) {
    StdioFile file = openFile(unit.workingFolder + modelDocument, "wb");
    if (!file) {
        error = "Failed to open temporary data file for writing";
        return false;
    }
    DocumentWriter document(file.get());
    document.begin(unit);
    document.report(outputReportName, unit.outputText);
    for (std::size_t i = 0; i < unit.reportNames.size(); ++i)
        document.report(unit.reportNames[i], unit.reportTexts[i]);
    document.ports("feed", unit.feedPorts);
    document.ports("product", unit.productPorts);
    for (const ComRef<CParameter>& parameter : unit.parameters)
        document.parameter(*parameter);
    for (const std::string& name : unit.additionalFiles)
        document.file(name);
    document.end();
    if (closeWritten(std::move(file)))
        return true;
    error = "Failed to write temporary data file: write error";
    return false;
}

} // namespace solvane
