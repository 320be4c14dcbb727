#pragma once

#include "unit/CParameter.h"

#include <array>
#include <string>
#include <string_view>

namespace solvane::bagKeys {

inline constexpr wchar_t infoLevel[] = L"info level";
inline constexpr wchar_t reports[] = L"reports";
inline constexpr wchar_t outputReport[] = L"report Matlab Output";
inline constexpr wchar_t feeds[] = L"feeds";
inline constexpr wchar_t products[] = L"products";
inline constexpr wchar_t parameters[] = L"parameters";
inline constexpr wchar_t parameterModes[] = L"parameter modes";
inline constexpr wchar_t parameterTypes[] = L"parameter types";
inline constexpr wchar_t files[] = L"files";

/// Between the words of a composite key.
inline constexpr wchar_t separator[] = L" \\ ";

inline std::wstring report(const std::wstring& name) {
    return std::wstring(L"report") + separator + name;
}
inline std::wstring file(const std::wstring& name) {
    return std::wstring(L"file") + separator + name;
}
inline std::wstring ofParameter(const std::wstring& name, const wchar_t* part) {
    return name + separator + part;
}

inline constexpr wchar_t value[] = L"value";
inline constexpr wchar_t minimum[] = L"minimum";
inline constexpr wchar_t maximum[] = L"maximum";
inline constexpr wchar_t defaultValue[] = L"default";
inline constexpr wchar_t dimensionality[] = L"dimensionality";
inline constexpr wchar_t restricted[] = L"restricted";
inline constexpr wchar_t options[] = L"options";

inline constexpr wchar_t input[] = L"input";
inline constexpr wchar_t output[] = L"output";

/// The words for the kinds, in the order of ParameterKind.
inline constexpr std::array<const wchar_t*, 4> kinds{L"real", L"int", L"string", L"bool"};

/// The user's script; it must be among the files of a bag.
inline constexpr char script[] = "calc.m";

} // namespace solvane::bagKeys
