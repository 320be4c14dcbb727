#include "CodePage.h"

#include <windows.h>

namespace solvane::gateway {

namespace {

std::wstring widen(UINT codePage, std::string_view bytes) {
    const int size = static_cast<int>(bytes.size());
    std::wstring text(
        static_cast<std::size_t>(MultiByteToWideChar(codePage, 0, bytes.data(), size, nullptr, 0)), L'\0');
    MultiByteToWideChar(codePage, 0, bytes.data(), size, text.data(), static_cast<int>(text.size()));
    return text;
}

std::string narrow(UINT codePage, std::wstring_view text) {
    const int size = static_cast<int>(text.size());
    std::string bytes(static_cast<std::size_t>(
                          WideCharToMultiByte(codePage, 0, text.data(), size, nullptr, 0, nullptr, nullptr)),
                      '\0');
    WideCharToMultiByte(codePage, 0, text.data(), size, bytes.data(), static_cast<int>(bytes.size()), nullptr,
                        nullptr);
    return bytes;
}

/// The way back tells what the code page could not hold: Windows puts a similar letter or a question mark.
bool toCodePage(std::wstring_view text, std::string& bytes) {
    bytes = narrow(CP_ACP, text);
    return widen(CP_ACP, bytes) == text;
}

} // namespace

bool utf8ToCodePage(std::string_view text, std::string& bytes) {
    const std::wstring wide = widen(CP_UTF8, text);
    return narrow(CP_UTF8, wide) == text && toCodePage(wide, bytes);
}

std::string codePageToUtf8(std::string_view bytes) {
    return narrow(CP_UTF8, widen(CP_ACP, bytes));
}

bool utf16ToCodePage(std::u16string_view text, std::string& bytes) {
    return toCodePage(std::wstring(text.begin(), text.end()), bytes);
}

std::u16string codePageToUtf16(std::string_view bytes) {
    const std::wstring wide = widen(CP_ACP, bytes);
    return {wide.begin(), wide.end()};
}

} // namespace solvane::gateway
