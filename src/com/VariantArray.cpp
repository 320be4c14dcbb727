#include "VariantArray.h"

#include "Failure.h"

#include <algorithm>
#include <new>

namespace solvane {

namespace {

const char* elementTypeWord(VARTYPE type) {
    switch (type) {
    case VT_VARIANT:
        return "VARIANT";
    case VT_BSTR:
        return "string";
    case VT_R8:
        return "double precision";
    case VT_I4:
        return "long";
    case VT_I2:
        return "short";
    default:
        return "<unknown>";
    }
}

template <class T>
void fill(const VARIANT& array, std::span<const T> values) {
    if (!values.empty())
        std::copy(values.begin(), values.end(), static_cast<T*>(array.parray->pvData));
}

} // namespace

bool readVariantArray(VariantArray& array, VARTYPE elementType, std::string& error) {
    array.count_ = 0;
    array.lowerBound_ = 0;
    if (array.isEmpty())
        return true;
    if (array.type() != (VT_ARRAY | elementType))
        return fail(error, std::string("Expected an array of type ") + elementTypeWord(elementType));
    SAFEARRAY* safeArray = array.get().parray;
    if (SafeArrayGetDim(safeArray) != 1)
        return fail(error, "unexpected dimension; 1-dimensional array expected");
    if (FAILED(SafeArrayGetLBound(safeArray, 1, &array.lowerBound_)))
        return fail(error, "failed to get lower bound");
    LONG upperBound = 0;
    if (FAILED(SafeArrayGetUBound(safeArray, 1, &upperBound)))
        return fail(error, "failed to get upper bound");
    array.count_ = static_cast<std::size_t>(static_cast<long long>(upperBound) - array.lowerBound_ + 1);
    return true;
}

VariantArray VariantArray::create(VARTYPE elementType, std::size_t count) {
    VariantArray array;
    if (count == 0)
        return array;
    SAFEARRAY* safeArray = SafeArrayCreateVector(elementType, 0, static_cast<ULONG>(count));
    if (!safeArray)
        throw std::bad_alloc();
    VARIANT* place = array.put();
    place->vt = static_cast<VARTYPE>(VT_ARRAY | elementType);
    place->parray = safeArray;
    array.count_ = count;
    return array;
}

VariantArray VariantArray::of(std::span<const double> values) {
    VariantArray array = create(VT_R8, values.size());
    fill(array.get(), values);
    return array;
}

VariantArray VariantArray::of(std::span<const LONG> values) {
    VariantArray array = create(VT_I4, values.size());
    fill(array.get(), values);
    return array;
}

VariantArray VariantArray::ofBytes(std::span<const unsigned char> values) {
    VariantArray array = create(VT_UI1, values.size());
    fill(array.get(), values);
    return array;
}

VariantArray VariantArray::of(std::span<const std::wstring> values) {
    VariantArray array = create(VT_BSTR, values.size());
    for (std::size_t i = 0; i < values.size(); ++i)
        static_cast<BSTR*>(array.get().parray->pvData)[i] = newBstr(values[i]);
    return array;
}

VariantArray VariantArray::ofTexts(std::initializer_list<const wchar_t*> values) {
    VariantArray array = create(VT_BSTR, values.size());
    std::size_t i = 0;
    for (const wchar_t* value : values)
        static_cast<BSTR*>(array.get().parray->pvData)[i++] = value ? newBstr(value) : nullptr;
    return array;
}

template <class T>
std::span<const T> VariantArray::elements() const {
    return isEmpty() ? std::span<const T>() : std::span(static_cast<const T*>(get().parray->pvData), count_);
}

std::vector<double> VariantArray::reals() const {
    const auto values = elements<double>();
    return {values.begin(), values.end()};
}

std::span<const double> VariantArray::realsInPlace() const {
    return elements<double>();
}

std::vector<LONG> VariantArray::integers() const {
    const auto values = elements<LONG>();
    return {values.begin(), values.end()};
}

std::vector<unsigned char> VariantArray::bytes() const {
    const auto values = elements<unsigned char>();
    return {values.begin(), values.end()};
}

std::span<const VARIANT> VariantArray::variants() const {
    return elements<VARIANT>();
}

std::vector<std::wstring> VariantArray::texts() const {
    std::vector<std::wstring> result;
    for (const BSTR text : elements<BSTR>())
        result.emplace_back(viewOf(text));
    return result;
}

bool VariantArray::isNullText(std::size_t index) const {
    return elements<BSTR>()[index] == nullptr;
}

} // namespace solvane
