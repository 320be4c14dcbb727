/// Constants and properties of the pure compounds as materials of both generations return them.
#pragma once

#include "MaterialFailure.h"
#include "com/VariantArray.h"
#include "thermo/PropertyPackage.h"

#include <span>
#include <string>
#include <vector>

namespace solvane::host {

/// The names that a call asks for, of which pure compounds.
struct PureQuestion {
    std::vector<std::wstring> names;
    std::vector<std::size_t> compounds; ///< indices in the package
};
bool readQuestion(const VARIANT& names, std::wstring_view what, const VARIANT& compounds,
                  const PropertyPackage& package, PureQuestion& question, Failure& failure);

/// Constants as an array of VARIANTs, the values of all `compounds` for the first name,
/// then those for the next. A missing value is VT_EMPTY.
struct ConstantValues {
    VariantArray values;
    std::vector<std::wstring> unknown; ///< names of no constant
    bool isComplete = true;            ///< whether no value is empty
};
ConstantValues readConstants(const PropertyPackage& package, const PureQuestion& question);

std::vector<std::wstring> constantNames();

/// Names of the properties that depend on temperature or pressure alone, with their derivatives'.
std::vector<std::wstring> purePropertyNames(PureArgument argument);

/// Adds the values of such properties at the temperature or pressure to `values`: those of all `compounds`
/// for the first name, then those for the next. Fails for other names, and at values out of range.
bool readPureProperties(const PropertyPackage& package, PureArgument argument, double at,
                        const PureQuestion& question, std::vector<double>& values, Failure& failure);

} // namespace solvane::host
