#include "FeedCommands.h"
#include "channel/ChannelFrame.h"
#include "channel/PropertyTables.h"
#include "com/Failure.h"
#include "com/Text.h"

#include <array>

namespace solvane {

namespace {

/// Feed properties; case-sensitive here.
struct StreamUnit {
    std::string_view name;
    const char* unit;
};

constexpr auto streamUnits = std::to_array<StreamUnit>({
    {"temperature", "K"},
    {"pressure", "Pa"},
    {"fraction", ""},
    {"flow", "mol / s"},
    {"totalFlow", "mol / s"},
});

struct DerivativeSuffix {
    const wchar_t* name;
    const char* unit; ///< what it adds to the property's unit
    bool byMoles;
};

constexpr auto derivativeSuffixes = std::to_array<DerivativeSuffix>({
    {L"Dtemperature", " / K", false},
    {L"Dpressure", " / Pa", false},
    {L"Dmoles", " / mol", true},
    {L"DmolFraction", "", false},
});

/// Null for an unknown suffix.
const DerivativeSuffix* findSuffix(std::wstring_view name) {
    for (const DerivativeSuffix& suffix : derivativeSuffixes)
        if (compareNoCase(name, suffix.name) == 0)
            return &suffix;
    return nullptr;
}

const char* findBaseUnit(std::wstring_view name) {
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
const char* addedUnit(const DerivativeSuffix& suffix, std::wstring_view name) {
    const auto* property = singlePhaseProperties().find(name);
    return suffix.byMoles && property && property->molarDerivative ? "" : suffix.unit;
}

/// The tables have wide names.
std::wstring tableName(std::string_view name) {
    return widen(name, CP_THREAD_ACP);
}

bool findUnit(std::string_view name, std::string& unit, std::string& error) {
    for (const StreamUnit& property : streamUnits)
        if (name == property.name) {
            unit = property.unit;
            return true;
        }
    if (const auto* constant = compoundConstantUnits().find(tableName(name))) {
        unit = *constant;
        return true;
    }

    const std::size_t dot = name.find('.');
    const std::string baseName(name.substr(0, dot));
    const DerivativeSuffix* suffix = nullptr;
    if (dot != std::string_view::npos) {
        const std::string suffixName(name.substr(dot + 1));
        suffix = findSuffix(tableName(suffixName));
        if (!suffix)
            return fail(error, "Unknown property derivative: " + suffixName);
    }
    const std::wstring wideBaseName = tableName(baseName);
    const char* baseUnit = findBaseUnit(wideBaseName);
    if (!baseUnit)
        return fail(error, "Unknown property: " + baseName);
    unit = baseUnit;
    const std::string added = suffix ? addedUnit(*suffix, wideBaseName) : "";
    if (!added.empty() && unit.empty())
        unit = "1";
    unit += added;
    return true;
}

} // namespace

bool getPropertyUnit(CalculationRun&, RequestReader& request, ReplyWriter& reply, std::string& error) {
    std::string unit;
    if (!findUnit(request.text(), unit, error))
        return false;
    reply.success();
    reply.text(unit);
    return true;
}

} // namespace solvane
