#include "ParameterRules.h"

#include "CaseParts.h"
#include "com/Text.h"

#include <algorithm>
#include <array>

namespace solvane::host {

namespace {

struct KindName {
    std::string_view name;
    ParameterKind kind;
};

constexpr std::array kindNames{
    KindName{"real", ParameterKind::real},
    KindName{"integer", ParameterKind::integer},
    KindName{"boolean", ParameterKind::boolean},
    KindName{"string", ParameterKind::text},
};

} // namespace

std::string_view kindName(ParameterKind kind) {
    return std::ranges::find(kindNames, kind, &KindName::kind)->name;
}

bool read(const CasePlace& place, ParameterKind& result) {
    std::string name;
    if (!read(place, name))
        return false;
    const auto known = std::ranges::find(kindNames, name, &KindName::name);
    if (known == kindNames.end())
        return place.fail("\"real\", \"integer\", \"boolean\" or \"string\" is expected");
    result = known->kind;
    return true;
}

bool isSameName(std::string_view left, std::string_view right) {
    return compareNoCase(widen(left, CP_UTF8), widen(right, CP_UTF8)) == 0;
}

const char* limitFault(const ModelParameter& parameter, const ParameterValue& value) {
    if (parameter.minimum && value < *parameter.minimum)
        return "the value lies below the minimum";
    if (parameter.maximum && value > *parameter.maximum)
        return "the value lies above the maximum";
    const auto* text = std::get_if<std::string>(&value);
    if (text && parameter.restricted &&
        std::ranges::find(parameter.options, *text) == parameter.options.end())
        return "the value is not one of the options";
    return nullptr;
}

} // namespace solvane::host
