/// Words that the model document and the property bag share.
#pragma once

#include <array>

namespace solvane::modelWords {

inline constexpr wchar_t input[] = L"input";
inline constexpr wchar_t output[] = L"output";

/// The names of the kinds, in the order of ParameterKind.
inline constexpr std::array<const wchar_t*, 4> kinds{L"real", L"int", L"string", L"bool"};

} // namespace solvane::modelWords
