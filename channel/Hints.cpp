#include "Hints.h"

#include <algorithm>
#include <cstdint>
#include <cstring>
#include <numeric>
#include <vector>

namespace solvane {

namespace {

constexpr std::size_t shortestName = 3;
constexpr std::string_view mark = "\x1ameant ";

char lower(char c) {
    return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
}

/// How many letters must be added, removed, changed or exchanged with their neighbours.
std::size_t distance(std::string_view a, std::string_view b) {
    std::vector<std::size_t> beforeLast, last(b.size() + 1), row(b.size() + 1);
    std::iota(last.begin(), last.end(), std::size_t{0});
    for (std::size_t i = 1; i <= a.size(); ++i) {
        row[0] = i;
        for (std::size_t j = 1; j <= b.size(); ++j) {
            const bool isSame = lower(a[i - 1]) == lower(b[j - 1]);
            row[j] = std::min({last[j] + 1, row[j - 1] + 1, last[j - 1] + (isSame ? 0 : 1)});
            if (i > 1 && j > 1 && lower(a[i - 1]) == lower(b[j - 2]) && lower(a[i - 2]) == lower(b[j - 1]))
                row[j] = std::min(row[j], beforeLast[j - 2] + 1);
        }
        beforeLast = last;
        std::swap(last, row);
    }
    return last.back();
}

/// In lower case; letters beyond ASCII count as such.
std::vector<std::string> wordsOf(std::string_view name) {
    std::vector<std::string> words;
    bool isInside = false;
    for (const char c : name) {
        const char letter = lower(c);
        const bool isLetter = (letter >= 'a' && letter <= 'z') || (c >= '0' && c <= '9') ||
                              static_cast<unsigned char>(c) >= 0x80;
        if (isLetter && !isInside)
            words.emplace_back();
        if (isLetter)
            words.back() += letter;
        isInside = isLetter;
    }
    return words;
}

bool isShortForm(const std::vector<std::string>& words, const std::vector<std::string>& known) {
    return !words.empty() && std::ranges::all_of(words, [&](const std::string& word) {
        return std::ranges::any_of(known, [&](const std::string& one) { return one.starts_with(word); });
    });
}

std::string begunAbout(std::string_view subject) {
    return std::string(mark).append(subject).append(1, '\0');
}

} // namespace

std::string closestName(std::span<const std::string> known, std::string_view name, std::size_t mostWrong) {
    constexpr std::size_t longestName = 100;
    if (name.size() < shortestName || name.size() > longestName)
        return {};
    std::string_view closest;
    std::size_t least = std::min(std::max<std::size_t>(name.size() / 4, 1), mostWrong) + 1;
    for (const std::string& one : known) {
        const std::size_t apart = one.size() > longestName ? least : distance(name, one);
        if (apart < least) {
            least = apart;
            closest = one;
        }
    }
    return std::string(closest);
}

std::string probableName(std::span<const std::string> known, std::string_view name) {
    std::string probable = closestName(known, name);
    if (!probable.empty() || name.size() < shortestName)
        return probable;
    const std::vector<std::string> words = wordsOf(name);
    const auto isLong = [&](const std::string& one) { return isShortForm(words, wordsOf(one)); };
    const auto longer = std::ranges::find_if(known, isLong);
    return longer == known.end() || std::any_of(longer + 1, known.end(), isLong) ? std::string() : *longer;
}

void writeHint(std::span<std::byte> block, std::string_view about, std::string_view hint) {
    const char* const begin = reinterpret_cast<const char*>(block.data());
    const auto* const end = std::find(begin + sizeof(std::uint32_t), begin + block.size(), '\0');
    const std::string bytes = begunAbout(about).append(hint).append(1, '\0');
    const auto offset = static_cast<std::size_t>(end - begin) + 1;
    if (bytes.size() <= hintSize && offset + bytes.size() <= block.size())
        std::memcpy(block.data() + offset, bytes.data(), bytes.size());
}

std::string readHint(std::string_view afterRecord, std::string_view about) {
    const std::string begun = begunAbout(about);
    if (!afterRecord.starts_with(begun))
        return {};
    afterRecord.remove_prefix(begun.size());
    const std::size_t end = afterRecord.find('\0');
    return std::string(end == afterRecord.npos ? std::string_view() : afterRecord.substr(0, end));
}

} // namespace solvane
