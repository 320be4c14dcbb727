#include "NumberFields.h"

#include "com/Numbers.h"
#include "com/Text.h"

#include <cmath>
#include <limits>

namespace solvane {

namespace {

/// The lowest double stands for a missing value of the parameter interfaces.
bool isMissing(double value) {
    return value == std::numeric_limits<double>::lowest();
}
bool isMissing(LONG) {
    return false;
}

} // namespace

template <>
std::optional<double> readNumber(const std::wstring& text, _locale_t locale) {
    double value = 0;
    if (!scanReal(narrow(text), locale, value) || std::isnan(value))
        return std::nullopt;
    return value;
}

template <>
std::optional<LONG> readNumber(const std::wstring& text, _locale_t) {
    std::int32_t value = 0;
    if (!scanInteger(narrow(text), value))
        return std::nullopt;
    return LONG{value};
}

template <class T>
const wchar_t* NumberFields<T>::fault() const {
    if (!value || isMissing(*value))
        return L"You must supply a valid current value for the parameter";
    if (minimum && *value < *minimum)
        return L"Value below minimum value";
    if (minimum && defaultValue && *defaultValue < *minimum)
        return L"Default value below minimum value";
    if (maximum && *value > *maximum)
        return L"Value above maximum value";
    if (maximum && defaultValue && *defaultValue > *maximum)
        return L"Default value above maximum value";
    return nullptr;
}

template struct NumberFields<double>;
template struct NumberFields<LONG>;

} // namespace solvane
