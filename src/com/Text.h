/// Text between the host (wide) and files, Matlab and the channel (narrow, in an ANSI code page).
#pragma once

#include <windows.h>

#include <string>
#include <string_view>

namespace solvane {

/// Characters that the code page lacks become its default character.
std::wstring widen(std::string_view text, UINT codePage = CP_ACP);
std::string narrow(std::wstring_view text, UINT codePage = CP_ACP);

/// Less than, equal to or greater than 0, like wcscmp, but ignores the case of the letters A to Z, and of no
/// others.
int compareNoCase(std::wstring_view left, std::wstring_view right);

/// For tables with look-up by names that compareNoCase compares.
struct NoCaseHash {
    std::size_t operator()(const std::wstring& name) const;
};
struct NoCaseEqual {
    bool operator()(const std::wstring& left, const std::wstring& right) const {
        return compareNoCase(left, right) == 0;
    }
};

/// Uses the C library's locale, unlike compareNoCase.
std::wstring toLower(std::wstring_view text);

} // namespace solvane
