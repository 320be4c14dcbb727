#include "DocumentGuard.h"

#include "com/StdioFile.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cstdint>
#include <string_view>

namespace solvane {

namespace {

std::string readWhole(std::FILE* file) {
    std::string bytes;
    std::array<char, 0x10000> piece;
    while (const std::size_t count = std::fread(piece.data(), 1, piece.size(), file))
        bytes.append(piece.data(), count);
    return bytes;
}

bool declaresEntities(std::string_view document) {
    constexpr std::string_view declaration = "<!ENTITY";
    std::size_t matched = 0;
    for (const char c : document) {
        if (c == '\0') // the other half of a wide character
            continue;
        matched = c == declaration[matched] ? matched + 1 : c == declaration[0] ? 1 : 0;
        if (matched == declaration.size())
            return true;
    }
    return false;
}

/// As XML 1.0 defines a character.
bool isCharacter(std::uint32_t code) {
    return code == '\t' || code == '\n' || code == '\r' || (code >= 0x20 && code <= 0xD7FF) ||
           (code >= 0xE000 && code <= 0xFFFD) || (code >= 0x10000 && code <= 0x10FFFF);
}

/// The length of a numeric reference to no character at the beginning of the text; 0 for anything else.
std::size_t emptyReferenceLength(std::string_view text) {
    constexpr std::string_view mark = "&#";
    if (!text.starts_with(mark))
        return 0;
    const bool isHexadecimal = text.size() > mark.size() && text[mark.size()] == 'x';
    const char* const digits = text.data() + mark.size() + (isHexadecimal ? 1 : 0);
    const char* const end = text.data() + text.size();
    std::uint32_t code = 0;
    const auto [behind, fault] = std::from_chars(digits, end, code, isHexadecimal ? 16 : 10);
    if (fault == std::errc::invalid_argument || behind == end || *behind != ';')
        return 0;
    const bool isEmpty = fault == std::errc::result_out_of_range || !isCharacter(code);
    return isEmpty ? static_cast<std::size_t>(behind + 1 - text.data()) : 0;
}

std::string withoutEmptyReferences(std::string_view document) {
    std::string kept;
    kept.reserve(document.size());
    while (!document.empty()) {
        if (const std::size_t length = emptyReferenceLength(document)) {
            document.remove_prefix(length);
            continue;
        }
        const std::size_t next = std::min(document.find('&', 1), document.size());
        kept.append(document.substr(0, next));
        document.remove_prefix(next);
    }
    return kept;
}

} // namespace

bool prepareDocument(const std::string& path, std::string& error) {
    StdioFile file = openFile(path, "rb");
    if (!file)
        return true;
    const std::string document = readWhole(file.get());
    file.reset();
    if (declaresEntities(document)) {
        error = "Entities are declared in xml data file; a model has none";
        return false;
    }
    const std::string kept = withoutEmptyReferences(document);
    if (kept.size() == document.size())
        return true;
    file = openFile(path, "wb");
    if (file && std::fwrite(kept.data(), 1, kept.size(), file.get()) == kept.size() &&
        closeWritten(std::move(file)))
        return true;
    error = "Failed to prepare XML data file for reading: write error";
    return false;
}

} // namespace solvane
