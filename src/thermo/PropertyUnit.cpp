#include "FeedCommands.h"
#include "HostTexts.h"
#include "PropertyTables.h"
#include "channel/ChannelFrame.h"
#include "com/Text.h"

#include <array>

namespace solvane {

namespace {

/// Feed properties, whose case counts here.
struct StreamUnit {
    std::string_view name;
    const wchar_t* unit;
};

constexpr std::array<StreamUnit, 5> streamUnits{{
    {"temperature", L"K"},
    {"pressure", L"Pa"},
    {"fraction", L""},
    {"flow", L"mol / s"},
    {"totalFlow", L"mol / s"},
}};

struct DerivativeSuffix {
    const wchar_t* name;
    const wchar_t* unit; ///< what it adds to the property's unit
    bool byMoles;
};

constexpr std::array<DerivativeSuffix, 4> derivativeSuffixes{{
    {L"Dtemperature", L" / K", false},
    {L"Dpressure", L" / Pa", false},
    {L"Dmoles", L" / mol", true},
    {L"DmolFraction", L"", false},
}};

/// Null for an unknown suffix.
const DerivativeSuffix* findSuffix(std::wstring_view name) {
    for (const DerivativeSuffix& suffix : derivativeSuffixes)
        if (compareNoCase(name, suffix.name) == 0)
            return &suffix;
    return nullptr;
}

const wchar_t* findBaseUnit(std::wstring_view name) {
    if (const auto* unit = temperatureDependentUnits().find(name))
        return *unit;
    if (const auto* unit = pressureDependentUnits().find(name))
        return *unit;
    if (const auto* property = singlePhaseProperties().find(name))
        return property->unit;
    const auto* unit = twoPhaseUnits().find(name);
    return unit ? *unit : nullptr;
}

/// What the derivative adds to the unit of `name`.
std::wstring addedUnit(const DerivativeSuffix& suffix, std::wstring_view name) {
    const auto* property = singlePhaseProperties().find(name);
    return suffix.byMoles && property && property->molarDerivative ? L"" : suffix.unit;
}

bool findUnit(const std::string& name, std::wstring& unit, std::string& error) {
    for (const StreamUnit& property : streamUnits)
        if (name == property.name) {
            unit = property.unit;
            return true;
        }
    const std::wstring wideName = widen(name, CP_THREAD_ACP);
    if (const auto* constant = compoundConstantUnits().find(wideName)) {
        unit = *constant;
        return true;
    }

    const std::size_t dot = wideName.find(L'.');
    const std::wstring baseName = wideName.substr(0, dot);
    const DerivativeSuffix* suffix = nullptr;
    if (dot != std::wstring::npos) {
        const std::wstring suffixName = wideName.substr(dot + 1);
        suffix = findSuffix(suffixName);
        if (!suffix)
            return fail(error, "Unknown property derivative: " + scriptText(suffixName));
    }
    const wchar_t* baseUnit = findBaseUnit(baseName);
    if (!baseUnit)
        return fail(error, "Unknown property: " + scriptText(baseName));
    unit = baseUnit;
    const std::wstring added = suffix ? addedUnit(*suffix, baseName) : std::wstring();
    if (!added.empty() && unit.empty())
        unit = L"1";
    unit += added;
    return true;
}

} // namespace

bool getPropertyUnit(CalculationRun&, RequestReader& request, ReplyWriter& reply, std::string& error) {
    std::wstring unit;
    if (!findUnit(request.text(), unit, error))
        return false;
    reply.success();
    reply.text(scriptText(unit));
    return true;
}

} // namespace solvane
