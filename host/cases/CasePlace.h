/// Reads JSON values by type, with messages that name the place.
#pragma once

#include <nlohmann/json.hpp>

#include <cstdint>
#include <initializer_list>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace solvane::host {

/// Keeps the order of an object's keys, which is that of the ports.
using CaseJson = nlohmann::ordered_json;

/// A value of a case file with its path, such as `feeds["Feed"].composition.methane`. The value and the
/// error text must outlive it.
class CasePlace {
public:
    CasePlace(const CaseJson& value, std::string path, std::string& error)
        : value_(value), path_(std::move(path)), error_(error) {}

    const CaseJson& value() const { return value_; }

    /// For `return place.fail(...)`: always false.
    bool fail(const std::string& text) const {
        error_ = path_.empty() ? text : path_ + ": " + text;
        return false;
    }

    CasePlace member(const std::string& key) const {
        return {value_.at(key), path_.empty() ? key : path_ + "." + key, error_};
    }
    /// In the path an element appears by its "name" or, without one, by its index from 0.
    CasePlace element(std::size_t index) const;

    /// Whether the value is an object with no keys but these.
    bool isObject(std::initializer_list<std::string_view> keys) const;

    /// Reads the value of a key into `result`; a missing key leaves it unchanged.
    template <class T>
    bool optional(const char* key, T& result) const {
        return !value_.contains(key) || read(member(key), result);
    }
    template <class T>
    bool required(const char* key, T& result) const {
        if (!value_.contains(key))
            return fail(std::string("the key \"") + key + "\" is missing");
        return read(member(key), result);
    }

private:
    const CaseJson& value_;
    std::string path_;
    std::string& error_;
};

// Each reads the value as its type; false with a text that names the place.
bool read(const CasePlace& place, double& result);
bool read(const CasePlace& place, std::int32_t& result);
bool read(const CasePlace& place, bool& result);
/// The text must not be empty.
bool read(const CasePlace& place, std::string& result);

template <class T>
bool read(const CasePlace& place, std::optional<T>& result) {
    return read(place, result.emplace());
}

template <class T>
bool read(const CasePlace& place, std::vector<T>& result) {
    if (!place.value().is_array())
        return place.fail("expected a list");
    for (std::size_t i = 0; i < place.value().size(); ++i)
        if (!read(place.element(i), result.emplace_back()))
            return false;
    return true;
}

} // namespace solvane::host
