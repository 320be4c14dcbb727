#include "OutputNames.h"

#include <algorithm>
#include <array>
#include <cctype>
#include <string>
#include <vector>

namespace solvane::host {

namespace {

using Words = std::vector<std::string>;

constexpr std::array<std::string_view, 15> quantityWords{
    "mass", "molar", "mole",     "flow", "flowrate", "rate", "total", "temperature",
    "temp", "t",     "pressure", "p",    "of",       "the",  "stream"};
/// "feed" and "product" may also be compounds that react.
constexpr std::array<std::string_view, 3> inletWords{"inlet", "in", "suction"};
constexpr std::array<std::string_view, 4> outletWords{"outlet", "out", "exit", "discharge"};

/// In lower case.
Words wordsOf(std::string_view name) {
    Words words(1);
    for (const unsigned char c : name)
        if (std::isalnum(c) || c >= 0x80)
            words.back() += static_cast<char>(std::tolower(c));
        else if (!words.back().empty())
            words.emplace_back();
    if (words.back().empty())
        words.pop_back();
    return words;
}

bool areQuantities(const Words& words) {
    return std::ranges::all_of(words, [](const std::string& word) {
        return std::ranges::find(quantityWords, word) != quantityWords.end();
    });
}

bool hasPart(const Words& name, const Words& part) {
    return !std::ranges::search(name, part).empty();
}

/// Whether the name has these words in this order, and only quantities beside them.
bool isNameOf(const Words& name, const Words& words) {
    const auto found = std::ranges::search(name, words);
    return !found.empty() && !areQuantities(words) && areQuantities({name.begin(), found.begin()}) &&
           areQuantities({found.end(), name.end()});
}

bool isNameOfAny(const Words& name, std::span<const std::string_view> words) {
    return std::ranges::any_of(
        words, [&](std::string_view word) { return isNameOf(name, Words{std::string(word)}); });
}

/// "water flow" may be that of the compound, in any stream.
bool isCompound(const Words& stream, const UnitReview& review) {
    return std::ranges::any_of(
        review.compounds, [&](const Compound* compound) { return hasPart(wordsOf(compound->name), stream); });
}

} // namespace

const StreamResult* namedStream(std::string_view output, const UnitReview& review) {
    const Words name = wordsOf(output);
    const StreamResult* named = nullptr;
    for (const auto& streams : {review.feeds, review.products})
        for (const StreamResult* stream : streams)
            if (const Words words = wordsOf(stream->name); isNameOf(name, words)) {
                if (named || isCompound(words, review))
                    return nullptr;
                named = stream;
            }
    if (!named && review.feeds.size() == 1 && isNameOfAny(name, inletWords))
        named = review.feeds.front();
    if (!named && review.products.size() == 1 && isNameOfAny(name, outletWords))
        named = review.products.front();
    return named;
}

bool isPartOfName(const StreamResult& stream, const StreamResult& other) {
    return hasPart(wordsOf(other.name), wordsOf(stream.name));
}

bool isBareQuantity(std::string_view output) {
    return areQuantities(wordsOf(output));
}

} // namespace solvane::host
