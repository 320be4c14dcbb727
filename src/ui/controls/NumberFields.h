#pragma once

#include <clocale>
#include <optional>
#include <string>

namespace solvane {

/// The number at the start of a text, a double or a LONG. Nothing if there is none, or for NaN.
template <class T>
std::optional<T> readNumber(const std::wstring& text, _locale_t locale);

/// What was typed for a real or integer parameter; nothing where a field has no number.
template <class T>
struct NumberFields {
    std::optional<T> value;
    std::optional<T> defaultValue;
    std::optional<T> minimum;
    std::optional<T> maximum;

    /// Why the parameter is invalid; null if it is valid. The limits are allowed values, and are not compared
    /// with each other.
    const wchar_t* fault() const;
};

} // namespace solvane
