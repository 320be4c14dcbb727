#include "DocumentGuard.h"

#include "ModelLimits.h"
#include "com/Failure.h"
#include "com/StdioFile.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cstdint>
#include <string_view>

namespace solvane {

namespace {

/// Reads one byte more than allowed to detect a document that is too long.
std::string readWhole(std::FILE* file) {
    std::string bytes;
    std::array<char, 0x10000> piece;
    while (const std::size_t count = std::fread(piece.data(), 1, piece.size(), file)) {
        bytes.append(piece.data(), count);
        if (bytes.size() > modelLimits::document)
            break;
    }
    return bytes;
}

/// Converts a document from UTF-16 to one byte per unit, with a question mark for non-ASCII characters.
std::string asciiOf(std::string_view document, bool isLittleEndian) {
    std::string ascii;
    ascii.reserve(document.size() / 2);
    for (std::size_t i = 0; i + 1 < document.size(); i += 2) {
        const char low = document[isLittleEndian ? i : i + 1];
        const char high = document[isLittleEndian ? i + 1 : i];
        ascii += high == '\0' && static_cast<unsigned char>(low) < 0x80 ? low : '?';
    }
    return ascii;
}

/// The part of a tag outside quotes, up to its end.
struct TagContent {
    std::size_t attributes = 0;
    bool hasBracket = false;
};
TagContent contentOf(std::string_view tag) {
    TagContent content;
    for (std::size_t i = 0; i < tag.size() && tag[i] != '>'; ++i) {
        if (tag[i] == '"' || tag[i] == '\'')
            i = std::min(tag.find(tag[i], i + 1), tag.size());
        else if (tag[i] == '=')
            ++content.attributes;
        else if (tag[i] == '[')
            content.hasBracket = true;
    }
    return content;
}

/// Counts references to entities that the library does not define: rejecting each takes it a long time.
std::size_t unknownReferences(std::string_view document) {
    constexpr std::array<std::string_view, 6> known{"&#", "&quot;", "&amp;", "&apos;", "&lt;", "&gt;"};
    std::size_t count = 0;
    for (std::size_t place = 0; (place = document.find('&', place)) != std::string_view::npos; ++place)
        if (std::ranges::none_of(known, [rest = document.substr(place)](std::string_view reference) {
                return rest.starts_with(reference);
            }))
            ++count;
    return count;
}

/// Counts tags and references, also inside comments, and the comments themselves: counting too much is safer
/// than too little, since the library continues after errors.
const char* documentFault(std::string_view document) {
    constexpr std::string_view type = "<!DOCTYPE";
    if (const std::size_t place = document.find(type); place != std::string_view::npos)
        if (contentOf(document.substr(place)).hasBracket ||
            document.find(type, place + type.size()) != std::string_view::npos)
            return "The document type in xml data file has declarations; a model must not have any";
    if (unknownReferences(document) > modelLimits::unknownReferences)
        return "Too many unknown references in xml data file";
    std::size_t elements = 0;
    for (std::size_t place = document.find('<'); place != std::string_view::npos;) {
        // A value contains no '<', so a tag ends before the next one.
        const std::size_t next = document.find('<', place + 1);
        const std::string_view tag = document.substr(place + 1, next - place - 1);
        place = next;
        if (tag.starts_with('/'))
            continue;
        if (++elements > modelLimits::elements)
            return "More elements in xml data file than a model can have";
        const bool isElement = !tag.starts_with('!') && !tag.starts_with('?');
        if (isElement && contentOf(tag).attributes > modelLimits::attributes)
            return "More attributes of one element in xml data file than a model can have";
    }
    return nullptr;
}

/// The declaration at the beginning may change the encoding of the rest, whatever the first bytes were, so
/// this checks the document in each encoding of the library. ASCII in UTF-16 has a zero byte in each unit.
const char* faultInAnyEncoding(std::string_view document) {
    const char* fault = documentFault(document);
    if (document.find('\0') == std::string_view::npos)
        return fault;
    for (const bool isLittleEndian : {true, false})
        fault = fault ? fault : documentFault(asciiOf(document, isLittleEndian));
    return fault;
}

/// Whether XML 1.0 allows the character.
bool isCharacter(std::uint32_t code) {
    return code == '\t' || code == '\n' || code == '\r' || (code >= 0x20 && code <= 0xD7FF) ||
           (code >= 0xE000 && code <= 0xFFFD) || (code >= 0x10000 && code <= 0x10FFFF);
}

/// The length of a numeric reference to an invalid character at the text's beginning; 0 for anything else.
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
    if (document.size() > modelLimits::document)
        return fail(error, "The xml data file is longer than a model's can be");
    // A removed reference may have been in the middle of a tag.
    const std::string kept = withoutEmptyReferences(document);
    if (const char* fault = faultInAnyEncoding(kept))
        return fail(error, fault);
    if (kept.size() == document.size())
        return true;
    file = openFile(path, "wb");
    if (file && std::fwrite(kept.data(), 1, kept.size(), file.get()) == kept.size() &&
        closeWritten(std::move(file)))
        return true;
    return fail(error, "Failed to prepare XML data file for reading: write error");
}

} // namespace solvane
