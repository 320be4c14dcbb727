#include "ModelDifference.h"

#include "cases/NameList.h"
#include "cases/ParameterRules.h"
#include "cases/UnitOfMeasure.h"

#include <nlohmann/json.hpp>

#include <algorithm>
#include <cstdint>
#include <cstring>

namespace solvane::host {

namespace {

/// Beyond this product of two counts of lines, all differing lines count as changed.
constexpr std::size_t mostCells = 16'000'000;

/// All digits, so that any difference shows.
std::string exactText(const ParameterValue& value) {
    return std::visit([](const auto& held) { return nlohmann::json(held).dump(); }, value);
}

std::string parameterLine(const ModelParameter& parameter) {
    std::string line = parameter.name + ": " + (parameter.isInput ? "input " : "output ") +
                       std::string(kindName(parameter.kind));
    const auto add = [&](const char* word, const std::optional<ParameterValue>& value) {
        if (value && exactText(*value) != "null") // NaN: no value yet
            line.append(", ").append(word).append(" ").append(exactText(*value));
    };
    if (const std::string unit = unitText(parameter.dimensionality); !unit.empty())
        line += " in " + unit;
    add("value", parameter.value);
    add("minimum", parameter.minimum);
    add("maximum", parameter.maximum);
    add("default", parameter.defaultValue);
    if (!parameter.options.empty())
        line += (parameter.restricted ? ", one of " : ", such as ") + nameList(parameter.options);
    return line;
}

std::vector<std::string> linesOf(const std::string& text) {
    std::vector<std::string> lines;
    for (std::size_t start = 0; start < text.size();) {
        const std::size_t end = std::min(text.find('\n', start), text.size());
        std::string& line = lines.emplace_back(text, start, end - start);
        if (line.ends_with('\r'))
            line.pop_back();
        start = end + 1;
    }
    return lines;
}

/// FNV-1a.
std::string checksum(const std::string& bytes) {
    std::uint64_t sum = 0xcbf29ce484222325;
    for (const char byte : bytes)
        sum = (sum ^ static_cast<unsigned char>(byte)) * 0x100000001b3;
    constexpr char digits[] = "0123456789abcdef";
    std::string text;
    for (int shift = 60; shift >= 0; shift -= 4)
        text += digits[sum >> shift & 0xf];
    return text;
}

bool isText(const std::string& bytes) {
    return std::ranges::none_of(
        bytes, [](char c) { return static_cast<unsigned char>(c) < 0x20 && !std::strchr("\t\r\n\f", c); });
}

/// How the lines of a text end, which the lines themselves do not show.
std::string lineEnds(const std::string& text) {
    const auto all = std::ranges::count(text, '\n');
    std::ptrdiff_t withReturn = 0;
    for (std::size_t at = text.find("\r\n"); at != std::string::npos; at = text.find("\r\n", at + 1))
        ++withReturn;
    std::string ends = withReturn == 0 ? "LF" : withReturn == all ? "CR LF" : "CR LF and LF";
    if (!text.ends_with('\n'))
        ends += ", none at the end";
    return ends;
}

ModelSection fileSection(std::string title, const ModelFile& file) {
    const std::string size = std::to_string(file.bytes.size()) + " bytes";
    if (isText(file.bytes))
        return {std::move(title), linesOf(file.bytes)};
    return {std::move(title), {size + ", checksum " + checksum(file.bytes)}};
}

/// Pairs of equal lines, in order: a longest common subsequence.
class Comparison {
public:
    Comparison(const std::vector<std::string>& left, const std::vector<std::string>& right)
        : left_(left), right_(right) {
        while (start_ < std::min(left.size(), right.size()) && left[start_] == right[start_])
            ++start_;
        while (end_ < std::min(left.size(), right.size()) - start_ &&
               left[left.size() - 1 - end_] == right[right.size() - 1 - end_])
            ++end_;
        rows_ = left.size() - start_ - end_;
        columns_ = right.size() - start_ - end_;
        if (rows_ * columns_ <= mostCells)
            fillLengths();
    }

    /// The differing lines with their numbers.
    std::string text() const {
        std::string result;
        std::size_t row = 0, column = 0;
        while (row < rows_ || column < columns_) {
            if (row < rows_ && column < columns_ && isEqual(row, column) && !lengths_.empty()) {
                ++row;
                ++column;
            } else if (column == columns_ ||
                       (row < rows_ && length(row + 1, column) >= length(row, column + 1))) {
                result += line('-', left_, row++);
            } else {
                result += line('+', right_, column++);
            }
        }
        return result;
    }

private:
    bool isEqual(std::size_t row, std::size_t column) const {
        return left_[start_ + row] == right_[start_ + column];
    }
    std::uint32_t length(std::size_t row, std::size_t column) const {
        return lengths_.empty() ? 0 : lengths_[row * (columns_ + 1) + column];
    }
    void fillLengths() {
        lengths_.assign((rows_ + 1) * (columns_ + 1), 0);
        for (std::size_t row = rows_; row-- > 0;)
            for (std::size_t column = columns_; column-- > 0;)
                lengths_[row * (columns_ + 1) + column] =
                    isEqual(row, column) ? length(row + 1, column + 1) + 1
                                         : std::max(lengths_[(row + 1) * (columns_ + 1) + column],
                                                    lengths_[row * (columns_ + 1) + column + 1]);
    }
    std::string line(char sign, const std::vector<std::string>& lines, std::size_t index) const {
        return sign + std::to_string(start_ + index + 1) + ": " + lines[start_ + index] + "\n";
    }

    const std::vector<std::string>& left_;
    const std::vector<std::string>& right_;
    std::size_t start_ = 0; ///< equal lines before the difference
    std::size_t end_ = 0;   ///< equal lines after it
    std::size_t rows_ = 0;
    std::size_t columns_ = 0;
    std::vector<std::uint32_t> lengths_; ///< of the common subsequences from each pair of lines on
};

const std::vector<std::string>& linesOf(const std::vector<ModelSection>& sections, const std::string& title) {
    static const std::vector<std::string> none;
    const auto found = std::ranges::find(sections, title, &ModelSection::title);
    return found == sections.end() ? none : found->lines;
}

} // namespace

std::vector<ModelSection> modelSections(const ModelDescription& description) {
    const UnitModel& model = description.model;
    std::vector<ModelSection> sections{{"Feeds", description.feeds},
                                       {"Products", description.products},
                                       {"Parameters", {}},
                                       {"Reports", model.reports},
                                       {"Files", {}}};
    for (const ModelParameter& parameter : model.parameters)
        sections[2].lines.push_back(parameterLine(parameter));
    for (const ModelFile& file : model.files)
        sections[4].lines.push_back(file.name);
    sections.push_back({"Echo", {model.echo ? "each command line of the script" : "none"}});
    sections.push_back(fileSection("Script", model.script));
    for (const ModelFile& file : model.files)
        sections.push_back(fileSection("File " + file.name, file));
    sections.push_back({"Ends of lines", {"Script: " + lineEnds(model.script.bytes)}});
    ModelSection& ends = sections.back();
    for (const ModelFile& file : model.files)
        if (isText(file.bytes))
            ends.lines.push_back("File " + file.name + ": " + lineEnds(file.bytes));
    return sections;
}

std::string sectionsText(const std::vector<ModelSection>& sections) {
    std::string text;
    for (const ModelSection& section : sections) {
        text += (text.empty() ? "== " : "\n== ") + section.title + "\n";
        for (const std::string& line : section.lines)
            text += line + "\n";
    }
    return text;
}

std::string modelDifference(const std::vector<ModelSection>& left, const std::vector<ModelSection>& right) {
    std::vector<std::string> titles;
    for (const std::vector<ModelSection>* sections : {&left, &right})
        for (const ModelSection& section : *sections)
            if (std::ranges::find(titles, section.title) == titles.end())
                titles.push_back(section.title);
    std::string text;
    for (const std::string& title : titles) {
        const std::string lines = Comparison(linesOf(left, title), linesOf(right, title)).text();
        if (!lines.empty())
            text += "== " + title + "\n" + lines;
    }
    return text;
}

} // namespace solvane::host
