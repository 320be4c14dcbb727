#include "CsvText.h"

namespace solvane::host {

std::string csvCell(const std::string& text) {
    if (text.find_first_of(",\"\r\n") == std::string::npos)
        return text;
    std::string result = "\"";
    for (const char c : text)
        result.append(c == '"' ? 2 : 1, c);
    return result + "\"";
}

std::string csvLine(const std::vector<std::string>& cells) {
    std::string line;
    for (std::size_t i = 0; i < cells.size(); ++i)
        line.append(i ? "," : "").append(csvCell(cells[i]));
    return line;
}

std::vector<std::vector<std::string>> readCsv(std::string_view text) {
    if (text.starts_with("\xEF\xBB\xBF")) // spreadsheets write it
        text.remove_prefix(3);
    std::vector<std::vector<std::string>> lines;
    std::vector<std::string> cells(1);
    bool isQuoted = false;
    const auto endLine = [&] {
        if (cells.size() > 1 || !cells[0].empty())
            lines.push_back(cells);
        cells.assign(1, {});
    };
    for (std::size_t i = 0; i < text.size(); ++i) {
        const char c = text[i];
        if (c == '"' && isQuoted && text.substr(i + 1).starts_with('"'))
            cells.back() += text[++i];
        else if (c == '"')
            isQuoted = !isQuoted;
        else if (isQuoted || (c != ',' && c != '\r' && c != '\n'))
            cells.back() += c;
        else if (c == ',')
            cells.emplace_back();
        else if (c == '\n')
            endLine();
    }
    endLine();
    return lines;
}

} // namespace solvane::host
