/// The keys of the property bag. Saved flowsheets contain them, so they never change.
#pragma once

#include <string>

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

// Parts of a parameter, after its name.
inline constexpr wchar_t value[] = L"value";
inline constexpr wchar_t minimum[] = L"minimum";
inline constexpr wchar_t maximum[] = L"maximum";
inline constexpr wchar_t defaultValue[] = L"default";
inline constexpr wchar_t dimensionality[] = L"dimensionality";
inline constexpr wchar_t restricted[] = L"restricted";
inline constexpr wchar_t options[] = L"options";

} // namespace solvane::bagKeys
