/// One-dimensional arrays in VARIANTs, made for a host and read from one.
#pragma once

#include "Variant.h"

#include <span>
#include <string>
#include <vector>

namespace solvane {

/// A VARIANT that holds, or is to receive, a one-dimensional SAFEARRAY. The arrays that it makes start at 0;
/// an array without elements stays VT_EMPTY.
class VariantArray : public Variant {
public:
    VariantArray() = default;
    explicit VariantArray(Variant value) : Variant(std::move(value)) {}

    static VariantArray of(std::span<const double> values);
    static VariantArray of(std::span<const LONG> values);
    static VariantArray of(std::span<const std::wstring> values);
    /// `values` may hold nulls, which stay null.
    static VariantArray ofTexts(std::initializer_list<const wchar_t*> values);
    static VariantArray ofBytes(std::span<const unsigned char> values);

    // Valid once readVariantArray has accepted the array.
    std::size_t count() const { return count_; }
    LONG lowerBound() const { return lowerBound_; }

    /// Copies of the elements of an array that readVariantArray has accepted as that type.
    std::vector<double> reals() const;
    std::vector<LONG> integers() const;
    std::vector<std::wstring> texts() const;
    std::vector<unsigned char> bytes() const;
    /// The elements in place, valid as long as the array.
    std::span<const VARIANT> variants() const;
    std::span<const double> realsInPlace() const;
    /// Whether the element at `index`, from 0, is a null BSTR.
    bool isNullText(std::size_t index) const;

private:
    friend bool readVariantArray(VariantArray& array, VARTYPE elementType, std::string& error);

    static VariantArray create(VARTYPE elementType, std::size_t count);
    template <class T>
    std::span<const T> elements() const;

    LONG lowerBound_ = 0;
    std::size_t count_ = 0;
};

/// Checks that the variant holds a one-dimensional array of `elementType`, and stores its bounds. VT_EMPTY
/// counts as an array without elements. False with a text that says what was expected.
[[nodiscard]] bool readVariantArray(VariantArray& array, VARTYPE elementType, std::string& error);

} // namespace solvane
