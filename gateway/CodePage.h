/// Conversion between the unit's ANSI code page and the characters of an interpreter.
#pragma once

#include <string>
#include <string_view>

namespace solvane::gateway {

/// False if a character has no place in the code page, or if the text isn't well-formed.
bool utf8ToCodePage(std::string_view text, std::string& bytes);
std::string codePageToUtf8(std::string_view bytes);

#ifdef _WIN32
bool utf16ToCodePage(std::u16string_view text, std::string& bytes);
std::u16string codePageToUtf16(std::string_view bytes);
#endif

} // namespace solvane::gateway
