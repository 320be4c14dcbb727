/// Values that a host should not give in place of a list, and now and then does.
#pragma once

#include "com/Variant.h"

namespace solvane {

Variant twoDimensional(VARTYPE elementType);
/// A list of two reals that starts at `lowerBound`.
Variant realsFrom(LONG lowerBound, double first, double second);
/// A list of VARIANTs where one of reals or strings is due.
Variant listOfVariants();
/// Texts, where a null pointer stays a null string.
Variant texts(std::initializer_list<const wchar_t*> values);
/// Values of any kind in one list.
Variant variants(std::initializer_list<Variant> values);
Variant reals(std::initializer_list<double> values);

} // namespace solvane
