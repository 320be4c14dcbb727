#include "KnownNames.h"

#include "channel/FlashProperties.h"
#include "channel/Hints.h"
#include "channel/PropertyTables.h"

#include <algorithm>
#include <iterator>
#include <vector>

namespace solvane::gateway {

namespace {

using Names = std::vector<std::string>;

/// The tables' names are ASCII.
Names narrowed(const std::vector<std::wstring>& names) {
    Names result;
    for (const std::wstring& name : names) {
        std::string& text = result.emplace_back();
        std::ranges::transform(name, std::back_inserter(text),
                               [](wchar_t c) { return static_cast<char>(c); });
    }
    return result;
}

Names flashNames(bool (*isMeant)(FlashProperty)) {
    Names names = narrowed(flashPropertyNames());
    std::erase_if(names, [=](const std::string& name) {
        return !isMeant(flashPropertyCode(std::wstring(name.begin(), name.end())));
    });
    return names;
}

Names namesOf(NameKind kind) {
    switch (kind) {
    case NameKind::feedProperty:
        return flashNames([](FlashProperty code) { return code != FlashProperty::vaporFraction; });
    case NameKind::flashCondition:
        return flashNames(isFlashConstraint);
    case NameKind::overallProperty:
        return {overallProperties.begin(), overallProperties.end()};
    case NameKind::singlePhaseProperty:
        return narrowed(singlePhaseProperties().names());
    case NameKind::twoPhaseProperty:
        return narrowed(twoPhaseUnits().names());
    case NameKind::compoundConstant:
        return narrowed(compoundConstantUnits().names());
    case NameKind::temperatureDependent:
        return narrowed(temperatureDependentUnits().names());
    case NameKind::pressureDependent:
        return narrowed(pressureDependentUnits().names());
    case NameKind::property: {
        Names all;
        for (const auto one :
             {NameKind::feedProperty, NameKind::singlePhaseProperty, NameKind::twoPhaseProperty,
              NameKind::compoundConstant, NameKind::temperatureDependent, NameKind::pressureDependent})
            std::ranges::move(namesOf(one), std::back_inserter(all));
        return all;
    }
    default:
        return {};
    }
}

/// Ignoring the case of ASCII letters.
bool isSame(std::string_view a, std::string_view b) {
    const auto lower = [](char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c; };
    return std::ranges::equal(a, b, {}, lower, lower);
}

} // namespace

std::string meantName(NameKind kind, std::string_view name) {
    const Names known = namesOf(kind);
    std::string closest = closestName(known, name);
    // Only the names of overall properties must have the right case.
    const bool isKnown = kind == NameKind::overallProperty ? closest == name : isSame(closest, name);
    return isKnown ? std::string() : closest;
}

} // namespace solvane::gateway
