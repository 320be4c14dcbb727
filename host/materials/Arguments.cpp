#include "Arguments.h"

#include "CapeOpen.h"
#include "com/Text.h"

#include <algorithm>
#include <array>
#include <numeric>

namespace solvane::host {

namespace {

/// Copies the array, also one that a script passed by reference.
bool readArray(const VARIANT& argument, VARTYPE elementType, std::wstring_view what, VariantArray& array,
               Failure& failure) {
    std::string error;
    if (FAILED(VariantCopyInd(array.put(), const_cast<VARIANT*>(&argument))))
        error = "the value cannot be read";
    else if (readVariantArray(array, elementType, error))
        return true;
    return fail(failure, ECapeInvalidArgumentHR,
                L"Invalid " + std::wstring(what) + L": " + widen(error, CP_UTF8));
}

/// Names as hosts spell them. A missing basis counts as the mole basis.
constexpr std::array<std::wstring_view, 3> moleBases{L"", L"mole", L"molar"};

} // namespace

bool readNames(const VARIANT& argument, std::wstring_view what, std::vector<std::wstring>& names,
               Failure& failure) {
    VariantArray array;
    if (!readArray(argument, VT_BSTR, what, array, failure))
        return false;
    names = array.texts();
    return true;
}

bool readValues(const VARIANT& argument, std::wstring_view what, const MaterialRules& rules,
                std::vector<double>& values, Failure& failure) {
    if (argument.vt == VT_R8 && !rules.strict) {
        values = {argument.dblVal};
        return true;
    }
    VariantArray array;
    if (!readArray(argument, VT_R8, what, array, failure))
        return false;
    values = array.reals();
    return true;
}

bool readProperty(std::wstring_view name, const StreamProperty*& property, Failure& failure) {
    property = findStreamProperty(name);
    return property || fail(failure, ECapeThrmPropertyNotAvailableHR,
                            L"The property \"" + std::wstring(name) + L"\" is not available");
}

bool checkBasis(BSTR basis, const StreamProperty& property, const MaterialRules& rules, Failure& failure) {
    const std::wstring_view expected = property.hasBasis() ? L"mole" : L"";
    // Hosts do not agree on which pure properties have one.
    if (rules.strict && !property.isPure() && compareNoCase(viewOf(basis), expected) != 0)
        return fail(failure, ECapeInvalidArgumentHR,
                    property.name + (property.hasBasis() ? L" needs the basis \"mole\"" : L" has no basis") +
                        L"; got \"" + std::wstring(viewOf(basis)) + L"\"");
    const auto isBasis = [&](std::wstring_view name) { return compareNoCase(viewOf(basis), name) == 0; };
    return std::ranges::any_of(moleBases, isBasis) ||
           fail(failure, ECapeNoImplHR,
                L"The basis \"" + std::wstring(viewOf(basis)) + L"\" is not supported; use \"mole\"");
}

bool readPhase(std::wstring_view label, Place& phase, Failure& failure) {
    const auto place = findPlace(label);
    if (!place || !isPhase(*place))
        return fail(failure, ECapeInvalidArgumentHR,
                    L"There is no phase \"" + std::wstring(label) + L"\"; the phases are Vapor and Liquid");
    phase = *place;
    return true;
}

bool readPhasePair(const VARIANT& labels, Place& both, Failure& failure) {
    std::vector<std::wstring> names;
    Place first{}, second{};
    if (!readNames(labels, L"list of phases", names, failure))
        return false;
    if (names.size() != 2)
        return fail(failure, ECapeInvalidArgumentHR, L"Two phases are needed");
    if (!readPhase(names[0], first, failure) || !readPhase(names[1], second, failure))
        return false;
    const auto place = placeOfBoth(first, second);
    if (place)
        both = *place;
    return place || fail(failure, ECapeInvalidArgumentHR, L"The two phases are the same");
}

bool clearResults(std::initializer_list<VARIANT*> places) {
    if (std::ranges::find(places, nullptr) != places.end())
        return false;
    for (VARIANT* place : places)
        VariantClear(place);
    return true;
}

void replace(VARIANT* place, Variant value) {
    VariantClear(place);
    *place = value.release();
}

HRESULT returnCount(LONG* result, std::size_t count) {
    if (!prepareResult(result))
        return E_POINTER;
    *result = static_cast<LONG>(count);
    return S_OK;
}

std::vector<std::wstring> compoundIds(const PropertyPackage& package) {
    std::vector<std::wstring> ids;
    for (const Compound* compound : package.compounds())
        ids.push_back(widen(compound->name, CP_UTF8));
    return ids;
}

bool readCompounds(const VARIANT& argument, const PropertyPackage& package,
                   std::vector<std::size_t>& compounds, Failure& failure) {
    std::vector<std::wstring> names;
    if (!readNames(argument, L"list of compounds", names, failure))
        return false;
    const auto ids = compoundIds(package);
    compounds.resize(ids.size());
    std::iota(compounds.begin(), compounds.end(), std::size_t{0});
    if (names.empty())
        return true;
    compounds.clear();
    for (const std::wstring& name : names) {
        const auto found =
            std::ranges::find_if(ids, [&](const std::wstring& id) { return compareNoCase(id, name) == 0; });
        if (found == ids.end())
            return fail(failure, ECapeInvalidArgumentHR, L"There is no compound \"" + name + L"\"");
        compounds.push_back(static_cast<std::size_t>(found - ids.begin()));
    }
    return true;
}

} // namespace solvane::host
