/// Tables with look-up by name, ignoring case.
#pragma once

#include <algorithm>
#include <array>
#include <cwchar>
#include <cwctype>
#include <map>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace solvane {

/// A key of such a table: a name in lower case.
class StringMapKey {
public:
    virtual ~StringMapKey() = default;
    virtual const wchar_t* text() const { return text_.c_str(); }

    friend bool operator<(const StringMapKey& left, const StringMapKey& right) {
        return std::wcscmp(left.text(), right.text()) < 0;
    }

protected:
    StringMapKey() = default;
    explicit StringMapKey(std::wstring text) : text_(std::move(text)) {}

private:
    std::wstring text_;
};

/// The key that an entry of the table holds.
class StringMapKeyString final : public StringMapKey {
public:
    explicit StringMapKeyString(std::wstring text) : StringMapKey(std::move(text)) {}
};

/// The key of a look-up, whose text is stored elsewhere.
class StringMapKeyPtr final : public StringMapKey {
public:
    explicit StringMapKeyPtr(const wchar_t* text) : pointer_(text) {}
    const wchar_t* text() const override { return pointer_; }

private:
    const wchar_t* pointer_;
};

template <class Value>
class StringMap {
public:
    void add(std::wstring_view name, Value value) {
        std::wstring lower(name);
        lowerInto(name, lower.data());
        entries_.emplace(StringMapKeyString(std::move(lower)), Entry{std::wstring(name), std::move(value)});
    }

    /// All names, as they were added.
    std::vector<std::wstring> names() const {
        std::vector<std::wstring> result;
        for (const auto& [key, entry] : entries_)
            result.push_back(entry.name);
        return result;
    }

    /// Null for an unknown name. A name of up to 127 characters is looked up without an allocation.
    const Value* find(std::wstring_view name) const {
        std::array<wchar_t, 128> buffer;
        std::wstring longName;
        wchar_t* lower = buffer.data();
        if (name.size() >= buffer.size()) {
            longName.resize(name.size());
            lower = longName.data();
        }
        lowerInto(name, lower);
        lower[name.size()] = L'\0';
        const auto entry = entries_.find(StringMapKeyPtr(lower));
        return entry == entries_.end() ? nullptr : &entry->second.value;
    }

private:
    struct Entry {
        std::wstring name;
        Value value;
    };

    static void lowerInto(std::wstring_view name, wchar_t* lower) {
        std::transform(name.begin(), name.end(), lower, [](wchar_t c) {
            if (c < 0x80) // the C library's way takes as long as the rest of a look-up
                return c >= L'A' && c <= L'Z' ? static_cast<wchar_t>(c - L'A' + L'a') : c;
            return static_cast<wchar_t>(std::towlower(c));
        });
    }

    std::map<StringMapKeyString, Entry, std::less<>> entries_;
};

} // namespace solvane
