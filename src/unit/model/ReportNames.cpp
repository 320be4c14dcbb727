#include "ReportNames.h"

#include "Unit.h"
#include "com/Text.h"

namespace solvane {

bool isOutputReport(std::wstring_view name) {
    return compareNoCase(name, outputReportName) == 0;
}

std::optional<std::size_t> findReport(const Unit& unit, std::wstring_view name) {
    for (std::size_t i = 0; i < unit.reportNames.size(); ++i)
        if (compareNoCase(unit.reportNames[i], name) == 0)
            return i;
    return std::nullopt;
}

std::vector<std::wstring> allReportNames(const Unit& unit) {
    std::vector<std::wstring> names{outputReportName};
    names.insert(names.end(), unit.reportNames.begin(), unit.reportNames.end());
    return names;
}

} // namespace solvane
