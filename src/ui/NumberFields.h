#pragma once

#include <clocale>
#include <optional>
#include <string>

namespace solvane {

/// The number with which a text begins: a double or a LONG. Nothing where it begins with none, or with what
/// is not a number.
template <class T>
std::optional<T> readNumber(const std::wstring& text, _locale_t locale);

/// What was typed for a real or integer parameter; nothing where a field has no number.
template <class T>
struct NumberFields {
    std::optional<T> value;
    std::optional<T> defaultValue;
    std::optional<T> minimum;
    std::optional<T> maximum;

    /// Why the parameter cannot be so; null where it can. The limits themselves are allowed values, and are
    /// not compared with each other.
    const wchar_t* fault() const;
};

} // namespace solvane
