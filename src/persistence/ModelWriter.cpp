#include "ModelWriter.h"

#include "DocumentEscape.h"
#include "ModelLimits.h"
#include "ModelWords.h"
#include "com/Failure.h"
#include "com/Numbers.h"
#include "com/StdioFile.h"
#include "com/Text.h"
#include "unit/model/ReportNames.h"
#include "unit/model/Unit.h"

#include <algorithm>

namespace solvane {

namespace {

/// Characters of one piece of a text: the reader accepts at most ten million bytes between two tags. Empty
/// comments, which it skips, divide longer texts. Blanks may make a run twice as long.
constexpr std::size_t longestRun = 2'000'000;
constexpr wchar_t blanks[] = L" \t\r\n\b"; // the writer drops backspaces

std::string word(bool value) {
    return value ? "TRUE" : "FALSE";
}

/// Writes elements one after the other. The blanks between attributes never change.
class DocumentWriter {
public:
    explicit DocumentWriter(std::FILE* file) : file_(file) {}

    void begin(const Unit& unit) {
        tag("<?xml version=\"1.0\" standalone=\"yes\"?>\n");
        tag("<UnitOperation>\n");
        tag("<docInfo version=\"1\" infoLevel=\"" + std::to_string(unit.echoLevel) + "\" />\n");
    }

    void report(std::wstring_view name, std::wstring_view text) {
        tag(std::string("<report name=\"") + escape_.EscapeWide(name) + "\">");
        while (text.size() > longestRun) {
            // The reader drops a text of blanks only, so each piece contains another character too.
            const std::size_t solid = text.find_first_not_of(blanks);
            const std::size_t end = std::max(longestRun, solid + 1);
            if (solid == text.npos || text.find_first_not_of(blanks, end) == text.npos)
                break;
            writeRun(text.substr(0, end));
            tag("<!---->");
            text.remove_prefix(end);
        }
        writeRun(text);
        write("</report>\n");
    }

    void ports(const char* element, const std::vector<ComRef<CPort>>& ports) {
        for (const ComRef<CPort>& port : ports)
            named(element, escape_.EscapeWide(port->componentName));
    }

    void file(const std::string& name) { named("file", escape_.EscapeNarrow(name)); }

    void parameter(const CParameter& parameter) {
        const auto kind = static_cast<std::size_t>(parameter.parameterKind);
        line_ = std::string("<parameter name=\"") + escape_.EscapeWide(parameter.componentName) + "\" ";
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
        if (parameter.optionList.empty())
            return tag(line_ + "/>\n");
        tag(line_ + ">\n");
        for (const std::wstring& option : parameter.optionList)
            tag(std::string(" <option value=\"") + escape_.EscapeWide(option) + "\"/>\n");
        write("</parameter>\n");
    }

    void end() { write("</UnitOperation>\n"); }

    /// The reason why the document could not be read again; empty if it can.
    const std::string& fault() const { return fault_; }

private:
    void write(std::string_view text) {
        size_ += text.size();
        if (size_ > modelLimits::document)
            fault_ = "the texts are longer than the " + std::to_string(modelLimits::document) +
                     " bytes that a model file takes";
        std::fwrite(text.data(), 1, text.size(), file_);
    }

    /// An element or its start tag, as on its line; a comment.
    void tag(const std::string& line) {
        constexpr std::size_t shownLength = 60;
        if (line.size() > modelLimits::tag)
            fault_ = "texts of " + std::to_string(line.size()) + " bytes, of which a model file takes " +
                     std::to_string(modelLimits::tag) + ", in " + line.substr(0, shownLength) + "...";
        if (++elements_ > modelLimits::elements)
            fault_ = "a model file takes " + std::to_string(modelLimits::elements) +
                     " ports, parameters, options, reports and files";
        write(line);
    }
    void named(const std::string& element, const char* name) {
        tag("<" + element + " name=\"" + name + "\" />\n");
    }
    void attribute(const char* name, const std::string& value) {
        line_.append(name).append("=\"").append(value).append("\" ");
    }
    void present(const char* name, const CParameter& parameter, const Variant& field) {
        if (!field.isEmpty())
            attribute(name, valueText(parameter, field));
    }

    void writeRun(std::wstring_view text) {
        if (text.size() > 2 * longestRun)
            fault_ = "a report has more blanks in a row than a model file takes";
        write(escape_.EscapeWide(text));
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
    std::string line_;
    std::string fault_;
    std::size_t elements_ = 0;
    std::size_t size_ = 0;
};

} // namespace

bool writeUnitDocument(const Unit& unit, std::string& error) {
    StdioFile file = openFile(unit.workingFolder.pathOf(modelDocument), "wb");
    if (!file)
        return fail(error, "Failed to open temporary data file for writing");
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
    const bool isWritten = closeWritten(std::move(file));
    if (isWritten && document.fault().empty())
        return true;
    return fail(error,
                "Failed to write temporary data file: " + (isWritten ? document.fault() : "write error"));
}

} // namespace solvane
