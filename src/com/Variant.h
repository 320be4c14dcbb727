/// Owners of BSTR and VARIANT.
#pragma once

#include <windows.h>

#include <oleauto.h>

#include <concepts>
#include <string>
#include <string_view>
#include <utility>

namespace solvane {

/// The text of a BSTR, where a null one counts as empty.
inline std::wstring_view viewOf(BSTR text) {
    return text ? std::wstring_view(text, SysStringLen(text)) : std::wstring_view();
}

/// The text that a caller passed as a BSTR. A plain wide literal has no length before its text: where that
/// can be recognized, the text ends at its terminator.
std::wstring_view callersText(BSTR text);

/// A new BSTR for the caller to free. Throws std::bad_alloc.
BSTR newBstr(std::wstring_view text);

/// Frees the BSTR in `place`, which may be null, and puts a new one there. Throws std::bad_alloc.
void replaceBstr(BSTR& place, std::wstring_view text);

/// Owns a BSTR, which may be null.
class Bstr {
public:
    Bstr() = default;
    explicit Bstr(std::wstring_view text) : text_(newBstr(text)) {}
    Bstr(const Bstr&) = delete;
    Bstr(Bstr&& other) noexcept : text_(other.release()) {}
    Bstr& operator=(Bstr other) noexcept {
        std::swap(text_, other.text_);
        return *this;
    }
    ~Bstr() { SysFreeString(text_); }

    BSTR get() const { return text_; }
    BSTR* put() {
        SysFreeString(std::exchange(text_, nullptr));
        return &text_;
    }
    BSTR release() { return std::exchange(text_, nullptr); }
    std::wstring_view view() const { return viewOf(text_); }

private:
    BSTR text_ = nullptr;
};

/// Owns a VARIANT, VT_EMPTY at first. The storage starts zeroed, so that the number in a variant that was
/// never given a value reads 0.
class Variant {
public:
    Variant() = default;
    explicit Variant(double value) { set(value); }
    explicit Variant(LONG value) { set(value); }
    /// A template, so that no pointer is taken for a bool.
    explicit Variant(std::same_as<bool> auto value) { set(value); }
    explicit Variant(std::wstring_view value) { set(newBstr(value)); }
    /// Stores an empty text as null.
    static Variant textOrNull(std::wstring_view value) {
        Variant text;
        text.set(value.empty() ? nullptr : newBstr(value));
        return text;
    }
    Variant(const Variant& other) { VariantCopy(&value_, other.in()); }
    Variant(Variant&& other) noexcept : value_(other.release()) {}
    Variant& operator=(Variant other) noexcept {
        std::swap(value_, other.value_);
        return *this;
    }
    ~Variant() { VariantClear(&value_); }

    const VARIANT& get() const { return value_; }
    /// For functions that only read a VARIANT but lack the const.
    VARIANT* in() const { return const_cast<VARIANT*>(&value_); }
    VARTYPE type() const { return value_.vt; }
    bool isEmpty() const { return value_.vt == VT_EMPTY; }

    /// Empties the variant and returns the place where a function stores its result.
    VARIANT* put() {
        VariantClear(&value_);
        value_ = VARIANT{};
        return &value_;
    }
    /// Passes the contents to the caller.
    VARIANT release() { return std::exchange(value_, VARIANT{}); }

    // Each requires a variant of exactly that type.
    double real() const { return value_.dblVal; }
    LONG integer() const { return value_.lVal; }
    VARIANT_BOOL boolean() const { return value_.boolVal; }
    std::wstring_view text() const { return viewOf(value_.bstrVal); }

private:
    void set(double value) {
        value_.vt = VT_R8;
        value_.dblVal = value;
    }
    void set(LONG value) {
        value_.vt = VT_I4;
        value_.lVal = value;
    }
    void set(bool value) {
        value_.vt = VT_BOOL;
        value_.boolVal = value ? VARIANT_TRUE : VARIANT_FALSE;
    }
    void set(BSTR value) {
        value_.vt = VT_BSTR;
        value_.bstrVal = value;
    }

    VARIANT value_{};
};

/// Copies a caller's argument, which may be a reference to a variable, as late-bound callers pass it. A null
/// text stays null. False for a null reference.
[[nodiscard]] bool readArgument(const VARIANT& given, Variant& value);

} // namespace solvane
