#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace solvane {

class Unit;

/// The report that every unit has: what Matlab printed. It is listed first and never is in `reportNames`.
inline constexpr wchar_t outputReportName[] = L"Matlab Output";

// Names are compared ignoring the case of ASCII letters.
bool isOutputReport(std::wstring_view name);
/// The place of a user report in `reportNames`; the first of several.
std::optional<std::size_t> findReport(const Unit& unit, std::wstring_view name);
std::vector<std::wstring> allReportNames(const Unit& unit);

} // namespace solvane
