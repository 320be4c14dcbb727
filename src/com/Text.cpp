#include "Text.h"

#include <algorithm>
#include <cwctype>
#include <functional>

namespace solvane {

namespace {

/// Such a text is the same in every code page, and most texts of a run are such.
bool isAscii(const auto& text) {
    return std::ranges::all_of(text, [](auto c) { return static_cast<unsigned>(c) < 0x80; });
}

wchar_t lowerAscii(wchar_t c) {
    return c >= L'A' && c <= L'Z' ? static_cast<wchar_t>(c + 32) : c;
}

} // namespace

std::wstring widen(std::string_view text, UINT codePage) {
    if (isAscii(text))
        return {text.begin(), text.end()};
    const int length =
        MultiByteToWideChar(codePage, 0, text.data(), static_cast<int>(text.size()), nullptr, 0);
    std::wstring wide(static_cast<std::size_t>(length), L'\0');
    MultiByteToWideChar(codePage, 0, text.data(), static_cast<int>(text.size()), wide.data(), length);
    return wide;
}

std::string narrow(std::wstring_view text, UINT codePage) {
    if (isAscii(text)) {
        std::string result(text.size(), '\0');
        std::ranges::transform(text, result.begin(), [](wchar_t c) { return static_cast<char>(c); });
        return result;
    }
    const int length = WideCharToMultiByte(codePage, 0, text.data(), static_cast<int>(text.size()), nullptr,
                                           0, nullptr, nullptr);
    std::string result(static_cast<std::size_t>(length), '\0');
    WideCharToMultiByte(codePage, 0, text.data(), static_cast<int>(text.size()), result.data(), length,
                        nullptr, nullptr);
    return result;
}

int compareNoCase(std::wstring_view left, std::wstring_view right) {
    const std::size_t common = std::min(left.size(), right.size());
    for (std::size_t i = 0; i < common; ++i) {
        const int difference = lowerAscii(left[i]) - lowerAscii(right[i]);
        if (difference != 0)
            return difference;
    }
    return left.size() == right.size() ? 0 : left.size() < right.size() ? -1 : 1;
}

std::size_t NoCaseHash::operator()(const std::wstring& name) const {
    std::wstring lower(name);
    std::ranges::transform(lower, lower.begin(), lowerAscii);
    return std::hash<std::wstring>()(lower);
}

std::wstring toLower(std::wstring_view text) {
    std::wstring lower(text);
    for (wchar_t& c : lower)
        c = static_cast<wchar_t>(std::towlower(c));
    return lower;
}

} // namespace solvane
