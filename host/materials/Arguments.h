/// The arguments and results of materials of both generations: names, labels, bases and arrays.
#pragma once

#include "MaterialFailure.h"
#include "StreamState.h"
#include "com/Border.h"
#include "com/VariantArray.h"

#include <initializer_list>
#include <string>
#include <string_view>
#include <vector>

namespace solvane::host {

/// Reads an array of strings; VT_EMPTY is an empty one. Rejects a single string, as many hosts do.
bool readNames(const VARIANT& argument, std::wstring_view what, std::vector<std::wstring>& names,
               Failure& failure);

/// Reads an array of doubles or, unless the rules are strict, a single double.
bool readValues(const VARIANT& argument, std::wstring_view what, const MaterialRules& rules,
                std::vector<double>& values, Failure& failure);

/// Finds a property or derivative by its name.
bool readProperty(std::wstring_view name, const StreamProperty*& property, Failure& failure);

/// Only the mole basis is supported: "mole", "molar" in any case of letters, or none. Under strict rules,
/// "mole" for properties that have a basis and none for the others.
bool checkBasis(BSTR basis, const StreamProperty& property, const MaterialRules& rules, Failure& failure);

/// Reads the label of a phase, in any case of letters.
bool readPhase(std::wstring_view label, Place& phase, Failure& failure);

/// Reads an array of the labels of two different phases.
bool readPhasePair(const VARIANT& labels, Place& both, Failure& failure);

/// Empties the caller's in-out variants. False if one of them is null.
bool clearResults(std::initializer_list<VARIANT*> places);

/// Replaces the contents of the caller's in-out variant. An empty array becomes VT_EMPTY.
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

/// The compounds' names, which are their ids.
std::vector<std::wstring> compoundIds(const PropertyPackage& package);

/// Finds the indices of the named compounds in the package, in the order of the names; VT_EMPTY names all.
bool readCompounds(const VARIANT& argument, const PropertyPackage& package,
                   std::vector<std::size_t>& compounds, Failure& failure);

} // namespace solvane::host
