#include "DocumentEscape.h"

#include <array>
#include <cstdio>

namespace solvane {

namespace {

struct NamedReference {
    char character;
    std::string_view reference;
};
constexpr std::array<NamedReference, 5> namedReferences{{
    {'"', "&quot;"},
    {'&', "&amp;"},
    {'\'', "&apos;"},
    {'<', "&lt;"},
    {'>', "&gt;"},
}};

} // namespace

void DocumentEscape::append(unsigned code) {
    for (const NamedReference& named : namedReferences)
        if (code == static_cast<unsigned char>(named.character)) {
            ioBuffer += named.reference;
            return;
        }
    if (code >= 0x20 && code <= 0x7F) {
        ioBuffer += static_cast<char>(code);
        return;
    }
    std::array<char, 16> digits;
    const int length = std::snprintf(digits.data(), digits.size(), "&#x%X;", code);
    ioBuffer.append(digits.data(), static_cast<std::size_t>(length));
}

const char* DocumentEscape::EscapeWide(std::wstring_view text) {
    constexpr wchar_t backspace = 0x08;
    ioBuffer.clear();
    for (const wchar_t character : text)
        if (character != backspace)
            append(character);
    return ioBuffer.c_str();
}

const char* DocumentEscape::EscapeNarrow(std::string_view text) {
    ioBuffer.clear();
    for (const char character : text)
        append(static_cast<unsigned char>(character));
    return ioBuffer.c_str();
}

} // namespace solvane
