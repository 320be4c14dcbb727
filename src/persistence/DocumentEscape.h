#pragma once

#include <string>
#include <string_view>

namespace solvane {

/// Escapes text for the model document: plain ASCII, with references for all other characters. A result is
/// valid until the next call.
class DocumentEscape {
public:
    DocumentEscape() { ioBuffer.reserve(0x200); }

    /// Escapes each UTF-16 code unit by itself. Drops backspaces, which a document cannot contain.
    const char* EscapeWide(std::wstring_view text);
    /// Escapes each byte by itself.
    const char* EscapeNarrow(std::string_view text);

private:
    void append(unsigned code);

    std::string ioBuffer;
};

} // namespace solvane
