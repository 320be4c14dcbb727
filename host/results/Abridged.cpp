#include "Abridged.h"

#include <algorithm>
#include <cstdlib>

namespace solvane::host {

namespace {

constexpr std::size_t keptBytes = 1'000'000; // at either end
constexpr std::size_t keptLines = 5'000;     // of the log, likewise
constexpr std::size_t spareLines = 1'000;    // until some are left out
constexpr std::string_view leftOut = " left out]";

bool isInsideCharacter(char c) {
    return (static_cast<unsigned char>(c) & 0xC0) == 0x80;
}

/// After the last line end up to there, or before the character there if the line is too long.
std::size_t endOfBeginning(std::string_view text, std::size_t size) {
    const std::size_t lineEnd = text.rfind('\n', size - 1);
    if (lineEnd != text.npos && 2 * lineEnd > size)
        return lineEnd + 1;
    while (isInsideCharacter(text[size]))
        --size;
    return size;
}

/// After the next line end, likewise.
std::size_t beginOfEnd(std::string_view text, std::size_t size) {
    std::size_t begin = text.size() - size;
    const std::size_t lineEnd = text.find('\n', begin);
    if (lineEnd != text.npos && lineEnd - begin < size / 2)
        return lineEnd + 1;
    while (isInsideCharacter(text[begin]))
        ++begin;
    return begin;
}

/// With those that were left out of it before.
long linesIn(std::string_view text) {
    const auto lines = static_cast<long>(std::ranges::count(text, '\n'));
    const std::size_t end = text.rfind(leftOut);
    const std::size_t begin = end == text.npos ? end : text.rfind('[', end);
    return begin == text.npos ? lines : lines - 1 + std::atol(text.data() + begin + 1);
}

} // namespace

std::string abridged(std::string_view text, std::size_t first, std::size_t last) {
    if (text.size() <= first + last)
        return std::string(text);
    const std::size_t end = endOfBeginning(text, first), begin = beginOfEnd(text, last);
    const std::string_view middle = text.substr(end, begin - end);
    const long lines = linesIn(middle);
    std::string shown(text.substr(0, end));
    shown += shown.ends_with('\n') ? "[" : "\n[";
    shown += lines > 0 ? std::to_string(lines) + (lines == 1 ? " line" : " lines")
                       : std::to_string(middle.size()) + " bytes";
    return shown.append(leftOut).append("\n").append(text.substr(begin));
}

std::string abridged(std::string_view text) {
    return abridged(text, keptBytes, keptBytes);
}

void addLogLine(std::vector<LogLine>& log, LogLine line) {
    log.push_back(std::move(line));
    if (log.size() <= 2 * keptLines + spareLines)
        return;
    const auto middle = log.begin() + keptLines;
    const bool isAgain = middle->text.ends_with(leftOut);
    const long before = isAgain ? std::atol(middle->text.c_str() + 1) : 0;
    const auto count = static_cast<long>(spareLines);
    middle->text = "[" + std::to_string(before + count + (isAgain ? 0 : 1)) + " lines" + std::string(leftOut);
    log.erase(middle + 1, middle + 1 + count);
}

} // namespace solvane::host
