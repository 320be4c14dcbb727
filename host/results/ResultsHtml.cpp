#include "ResultsHtml.h"

#include "FlowsheetDrawing.h"
#include "HtmlText.h"
#include "ResultTables.h"
#include "ScriptError.h"

#include <algorithm>

namespace solvane::host {

namespace {

constexpr char style[] = R"(
body { margin: 24px; color: #222; font: 14px/1.5 "Segoe UI", "Liberation Sans", Arial, sans-serif; }
h1 { font-size: 22px; font-weight: normal; color: #1f4e79; }
h2 { font-size: 17px; font-weight: normal; color: #1f4e79; margin-top: 28px; }
table { border-collapse: collapse; margin: 8px 0 16px; }
th, td { border: 1px solid #d5dbe1; padding: 2px 10px; text-align: right; }
th { background: #eaf0f5; }
.label { text-align: left; }
pre { background: #f4f6f8; border: 1px solid #d5dbe1; padding: 8px 10px; overflow: auto; }
.warning { background: #fdf8e7; border: 1px solid #eadfb4; padding: 4px 10px; margin: 4px 0; }
.error { background: #fbeaea; border: 1px solid #d9a3a3; padding: 4px 10px; margin: 4px 0; }
.drawing { overflow: auto; }
svg text { font-size: 13px; }
.stream { fill: none; stroke: #1f5fa8; stroke-width: 1.5; marker-end: url(#arrow); }
#arrow path { fill: #1f5fa8; }
.unit { fill: #eaf0f5; stroke: #1f4e79; stroke-width: 1.5; }
.warned { fill: #fdf3cf; }
.failed { fill: #f6cfcf; }
)";

std::string element(const std::string& name, const std::string& text) {
    return "<" + name + ">" + htmlText(text) + "</" + name.substr(0, name.find(' ')) + ">\n";
}

std::string tableHtml(const Table& table) {
    if (table.lines.empty())
        return {};
    std::string html = "<table>\n";
    for (const Line& line : table.lines) {
        const std::string cell = &line == &table.lines.front() ? "th" : "td";
        html += "<tr>";
        for (std::size_t i = 0; i < line.size(); ++i)
            html += element(cell + (i < table.labels ? " class=\"label\"" : ""), line[i]);
        html += "</tr>\n";
    }
    return html + "</table>\n";
}

std::string unitHtml(const UnitResult& unit, const RunResults& results, const TableUnits& units) {
    std::string html = element("h2", unit.name);
    if (unit.status == UnitStatus::notCalculated)
        return html + element("p", "This unit was not calculated.");
    const auto balance = std::ranges::find(results.balances, unit.name, &Balance::unit);
    if (balance != results.balances.end()) {
        html += tableHtml(balanceTable(*balance, units));
        for (const std::string& note : balanceNotes(*balance, unit, units))
            html += element("p", note);
    }
    html += tableHtml(parameterTable(unit, units));
    for (const ReportResult& report : unit.reports)
        html += element("h3", report.name) + element("pre", report.text);
    return html;
}

} // namespace

std::string resultsHtml(const RunResults& results, const TableUnits& units, const std::string& title) {
    std::string html = "<!DOCTYPE html>\n<html lang=\"en\">\n<head>\n<meta charset=\"utf-8\"/>\n" +
                       element("title", title) + "<style>" + style + "</style>\n</head>\n<body>\n" +
                       element("h1", title);
    if (results.failure) {
        html +=
            element("p class=\"error\"", results.failure->unit + (results.failure->unit.empty() ? "" : ": ") +
                                             results.failure->message);
        if (results.failure->scriptError)
            html += element("p class=\"error\"", scriptErrorLine(*results.failure->scriptError));
    }
    for (const Warning& warning : results.warnings)
        html += element("p class=\"warning\"", subjectText(warning) + ": " + warning.text);
    html += "<div class=\"drawing\">" + flowsheetSvg(results) + "</div>\n";
    if (!results.streams.empty())
        html += element("h2", "Streams") + tableHtml(streamTable(results, units)) +
                tableHtml(phaseTable(results));
    if (results.convergence)
        html += element("h2", "Convergence") + tableHtml(convergenceTable(*results.convergence));
    if (results.adjustment)
        html += element("h2", "Target") + tableHtml(trialTable(*results.adjustment));
    for (const UnitResult& unit : results.units)
        html += unitHtml(unit, results, units);
    return html + "</body>\n</html>\n";
}

} // namespace solvane::host
