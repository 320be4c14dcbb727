#pragma once

#include <string>
#include <string_view>

namespace solvane {

/// Makes text fit for the model document: plain ASCII, with references for all else. What it gives is good
/// until its next use.
class DocumentEscape {
public:
    DocumentEscape() { ioBuffer.reserve(0x200); }

    /// Each UTF-16 code unit by itself. Backspaces vanish: they are no characters of a document.
    const char* EscapeWide(std::wstring_view text);
    /// Each byte by itself.
    const char* EscapeNarrow(std::string_view text);

private:
    void append(unsigned code);

    std::string ioBuffer;
};

} // namespace solvane
