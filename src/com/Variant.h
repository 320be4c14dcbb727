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

/// The text that a caller passed as a BSTR. A plain wide literal has no length before its text: as far as
/// that shows, it is read up to its terminator.
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
    /// A text, of which an empty one is stored as null.
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
    /// For functions that read a VARIANT and forgot to say so.
    VARIANT* in() const { return const_cast<VARIANT*>(&value_); }
    VARTYPE type() const { return value_.vt; }
    bool isEmpty() const { return value_.vt == VT_EMPTY; }

    /// The place for a function that returns a VARIANT, emptied first.
    VARIANT* put() {
        VariantClear(&value_);
        value_ = VARIANT{};
        return &value_;
    }
    /// Gives the contents to the caller.
    VARIANT release() { return std::exchange(value_, VARIANT{}); }

    // Each for a variant of just that type.
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

/// Copies what a caller passed, be it a reference to a variable of its own, as late-bound callers pass. A
/// null text stays null. False where a reference leads nowhere.
[[nodiscard]] bool readArgument(const VARIANT& given, Variant& value);

} // namespace solvane
