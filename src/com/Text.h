/// Text between the host (wide) and files, Matlab and the channel (narrow, in an ANSI code page).
#pragma once

#include <windows.h>

#include <string>
#include <string_view>

namespace solvane {

/// Characters that the code page does not know become its default character.
std::wstring widen(std::string_view text, UINT codePage = CP_ACP);
std::string narrow(std::wstring_view text, UINT codePage = CP_ACP);

/// Less than, equal to or greater than 0, as wcscmp, where the letters A to Z equal a to z. No other letter
/// has a case here.
int compareNoCase(std::wstring_view left, std::wstring_view right);

/// By the C library's locale, unlike compareNoCase.
std::wstring toLower(std::wstring_view text);

} // namespace solvane
