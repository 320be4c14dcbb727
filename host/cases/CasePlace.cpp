#include "CasePlace.h"

#include "NameList.h"

#include <algorithm>
#include <limits>

namespace solvane::host {

CasePlace CasePlace::element(std::size_t index) const {
    const CaseJson& element = value_.at(index);
    const auto name = element.is_object() ? element.find("name") : element.end();
    const bool isNamed = name != element.end() && name->is_string();
    const std::string key = isNamed ? "\"" + name->get<std::string>() + "\"" : std::to_string(index);
    return {element, path_ + "[" + key + "]", error_};
}

bool CasePlace::isObject(std::initializer_list<std::string_view> keys) const {
    if (!value_.is_object())
        return fail("expected an object with keys in braces");
    for (const auto& [key, value] : value_.items()) {
        if (std::ranges::find(keys, key) == keys.end())
            return fail("the key \"" + key + "\" is unknown; known keys: " + nameList(keys));
    }
    return true;
}

bool read(const CasePlace& place, double& result) {
    if (!place.value().is_number())
        return place.fail("expected a number");
    result = place.value().get<double>();
    return true;
}

bool read(const CasePlace& place, std::int32_t& result) {
    using Limits = std::numeric_limits<std::int32_t>;
    if (!place.value().is_number_integer() || place.value() > Limits::max() || place.value() < Limits::min())
        return place.fail("expected a whole number of at most 32 bits");
    result = place.value().get<std::int32_t>();
    return true;
}

bool read(const CasePlace& place, bool& result) {
    if (!place.value().is_boolean())
        return place.fail("expected true or false");
    result = place.value().get<bool>();
    return true;
}

bool read(const CasePlace& place, std::string& result) {
    if (!place.value().is_string() || place.value().get_ref<const std::string&>().empty())
        return place.fail("expected a non-empty text in quotes");
    result = place.value().get<std::string>();
    return true;
}

} // namespace solvane::host
