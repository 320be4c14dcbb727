#include "ParameterRules.h"

#include "CaseParts.h"
#include "NameList.h"
#include "NumberText.h"
#include "UnitOfMeasure.h"

#include <algorithm>
#include <array>
#include <cctype>
#include <cmath>

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

struct ToText {
    std::string operator()(double value) const { return shortNumber(value, 6); }
    std::string operator()(std::int32_t value) const { return std::to_string(value); }
    std::string operator()(bool value) const { return value ? "true" : "false"; }
    std::string operator()(const std::string& value) const { return value; }
};

} // namespace

std::string valueText(const std::optional<ParameterValue>& value) {
    return value ? std::visit(ToText(), *value) : "?";
}

bool isSet(const ModelParameter& parameter) {
    if (!parameter.value)
        return false;
    const auto* real = std::get_if<double>(&*parameter.value);
    return !real || !std::isnan(*real);
}

std::string_view kindName(ParameterKind kind) {
    return std::ranges::find(kindNames, kind, &KindName::kind)->name;
}

bool read(const CasePlace& place, ParameterKind& result) {
    std::string name;
    if (!read(place, name))
        return false;
    const auto known = std::ranges::find(kindNames, name, &KindName::name);
    if (known == kindNames.end())
        return place.fail("expected \"real\", \"integer\", \"boolean\" or \"string\"");
    result = known->kind;
    return true;
}

bool hasWord(std::string_view name, std::span<const std::string_view> words) {
    const auto isSame = [](char any, char lower) {
        return std::tolower(static_cast<unsigned char>(any)) == lower;
    };
    return std::ranges::any_of(
        words, [&](std::string_view word) { return !std::ranges::search(name, word, isSame).empty(); });
}

std::string limitFault(const ModelParameter& parameter, const ParameterValue& value) {
    const std::string unit = unitText(parameter.dimensionality);
    const auto limit = [&](const std::optional<ParameterValue>& one) {
        return valueText(one) + (unit.empty() ? "" : " " + unit);
    };
    if (parameter.minimum && value < *parameter.minimum)
        return "the value lies below the minimum, " + limit(parameter.minimum);
    if (parameter.maximum && value > *parameter.maximum)
        return "the value lies above the maximum, " + limit(parameter.maximum);
    const auto* text = std::get_if<std::string>(&value);
    if (!text || !parameter.restricted ||
        std::ranges::find(parameter.options, *text) != parameter.options.end())
        return {};
    return "the value is not one of the options (case-sensitive): " + nameList(parameter.options);
}

} // namespace solvane::host
