#pragma once

#include <string>

namespace solvane::engine {

/// The text as Octave reads it between apostrophes: those within are doubled.
inline std::wstring octaveText(const std::wstring& text) {
    std::wstring doubled;
    for (const wchar_t c : text)
        doubled.append(c == L'\'' ? 2 : 1, c);
    return doubled;
}

} // namespace solvane::engine
