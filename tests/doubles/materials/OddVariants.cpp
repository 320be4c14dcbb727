#include "OddVariants.h"

#include "com/VariantArray.h"

#include <vector>

namespace solvane {

namespace {

Variant own(VARTYPE elementType, SAFEARRAY* array) {
    Variant value;
    VARIANT* place = value.put();
    place->vt = static_cast<VARTYPE>(VT_ARRAY | elementType);
    place->parray = array;
    return value;
}

} // namespace

Variant twoDimensional(VARTYPE elementType) {
    SAFEARRAYBOUND bounds[] = {{2, 0}, {2, 0}};
    return own(elementType, SafeArrayCreate(elementType, 2, bounds));
}

Variant realsFrom(LONG lowerBound, double first, double second) {
    SAFEARRAY* array = SafeArrayCreateVector(VT_R8, lowerBound, 2);
    auto* elements = static_cast<double*>(array->pvData);
    elements[0] = first;
    elements[1] = second;
    return own(VT_R8, array);
}

Variant listOfVariants() {
    return own(VT_VARIANT, SafeArrayCreateVector(VT_VARIANT, 0, 1));
}

Variant variants(std::initializer_list<Variant> values) {
    SAFEARRAY* array = SafeArrayCreateVector(VT_VARIANT, 0, static_cast<ULONG>(values.size()));
    auto* element = static_cast<VARIANT*>(array->pvData);
    for (const Variant& value : values)
        *element++ = Variant(value).release();
    return own(VT_VARIANT, array);
}

Variant texts(std::initializer_list<const wchar_t*> values) {
    return VariantArray::ofTexts(values);
}

Variant reals(std::initializer_list<double> values) {
    return VariantArray::of(std::vector<double>(values));
}

} // namespace solvane
