/// What the materials of both generations take and give: names, labels, bases and arrays.
#pragma once

#include "Failure.h"
#include "StreamState.h"
#include "com/Border.h"
#include "com/VariantArray.h"

#include <initializer_list>
#include <string>
#include <string_view>
#include <vector>

namespace solvane::host {

/// An array of strings; VT_EMPTY is one of no elements. A single string is refused, as it is by many hosts.
bool readNames(const VARIANT& argument, std::wstring_view what, std::vector<std::wstring>& names,
               Failure& failure);

/// An array of double precision values, or one such value where the rules are not strict.
bool readValues(const VARIANT& argument, std::wstring_view what, const MaterialRules& rules,
                std::vector<double>& values, Failure& failure);

/// Fails for a name that no property has, derivatives included.
bool readProperty(std::wstring_view name, const StreamProperty*& property, Failure& failure);

/// Only the mole basis is served: "mole", "molar" in any case of letters, or none. By strict rules, "mole"
/// for what has a basis and none for what has not.
bool checkBasis(BSTR basis, const StreamProperty& property, const MaterialRules& rules, Failure& failure);

/// The label of a phase, in any case of letters.
bool readPhase(std::wstring_view label, Place& phase, Failure& failure);

/// An array of the labels of two different phases.
bool readPhasePair(const VARIANT& labels, Place& both, Failure& failure);

/// Empties the caller's in-out variants. False where one of them is missing.
bool clearResults(std::initializer_list<VARIANT*> places);

/// Replaces what the caller's in-out variant holds. An empty array gives VT_EMPTY.
void replace(VARIANT* place, Variant value);

/// The body of a method that returns a list of names, which `list()` makes.
template <class List>
HRESULT returnNames(VARIANT* result, List list) {
    return border([&]() -> HRESULT {
        if (!prepareResult(result))
            return E_POINTER;
        *result = VariantArray::of(std::span<const std::wstring>(list())).release();
        return S_OK;
    });
}

/// The body of a method that returns a count.
HRESULT returnCount(LONG* result, std::size_t count);

/// The compounds' names, by which they are identified.
std::vector<std::wstring> compoundIds(const PropertyPackage& package);

/// The indices of the named compounds in the package, in the order of the names; VT_EMPTY names all of them.
bool readCompounds(const VARIANT& argument, const PropertyPackage& package,
                   std::vector<std::size_t>& compounds, Failure& failure);

} // namespace solvane::host
