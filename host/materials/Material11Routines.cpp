// The calculations of a 1.1 material: properties of a phase, and equilibria.
#include "Arguments.h"
#include "Material11.h"
#include "com/Text.h"

#include <algorithm>
#include <numeric>

namespace solvane::host {

namespace {

constexpr wchar_t propertyInterface[] = L"ICapeThermoPropertyRoutine";
constexpr wchar_t equilibriumInterface[] = L"ICapeThermoEquilibriumRoutine";

/// The solution types that a flash may request. This package has one solution for each.
constexpr std::array<std::wstring_view, 3> solutionTypes{L"", L"unspecified", L"normal"};

/// A specification is an array of property, basis and phase label. The basis is ignored: the value was
/// converted when it was set.
bool readSpecification(const VARIANT& argument, FlashSpecification& specification, Failure& failure) {
    std::vector<std::wstring> words;
    if (!readNames(argument, L"flash specification", words, failure))
        return false;
    if (words.size() < 3)
        return fail(failure, ECapeInvalidArgumentHR,
                    L"A flash specification names a property, a basis and a phase or \"overall\"");
    const StreamProperty* property = nullptr;
    if (!readProperty(words[0], property, failure))
        return false;
    const auto place = findPlace(words[2]);
    const bool fits =
        place && (property == &phaseFractionProperty ? isPhase(*place) : *place == Place::overall);
    if (!property->flashVariable || !fits)
        return fail(failure, ECapeInvalidArgumentHR,
                    L"\"" + words[0] + L"\" of \"" + words[2] + L"\" is not a flash specification");
    specification = {property, *place};
    return true;
}

bool readRequest(const VARIANT& specification1, const VARIANT& specification2, BSTR solutionType,
                 FlashSpecification& first, FlashSpecification& second, Failure& failure) {
    const auto isAskedFor = [&](std::wstring_view type) {
        return compareNoCase(viewOf(solutionType), type) == 0;
    };
    if (!std::ranges::any_of(solutionTypes, isAskedFor))
        return fail(failure, ECapeNoImplHR,
                    L"The solution type \"" + std::wstring(viewOf(solutionType)) + L"\" is not supported");
    return readSpecification(specification1, first, failure) &&
           readSpecification(specification2, second, failure);
}

template <class Request>
bool isOffered(BSTR name) {
    const StreamProperty* property = findStreamProperty(viewOf(name));
    return property && std::holds_alternative<Request>(property->request);
}

/// The names of all properties of that kind.
template <class Request>
HRESULT returnOffered(VARIANT* result) {
    return returnNames(result, [] {
        std::vector<std::wstring> names;
        for (const StreamProperty& property : streamProperties())
            if (std::holds_alternative<Request>(property.request))
                names.push_back(property.name);
        return names;
    });
}

} // namespace

STDMETHODIMP Material11::CalcEquilibrium(VARIANT specification1, VARIANT specification2, BSTR solutionType) {
    return call(equilibriumInterface, L"CalcEquilibrium", [&](Failure& failure) {
        FlashSpecification first{}, second{};
        return readRequest(specification1, specification2, solutionType, first, second, failure) &&
               state_->flash(first, second, failure);
    });
}

STDMETHODIMP Material11::CheckEquilibriumSpec(VARIANT specification1, VARIANT specification2,
                                              BSTR solutionType, VARIANT_BOOL* isSupported) {
    if (!prepareResult(isSupported))
        return E_POINTER;
    return border([&]() -> HRESULT {
        FlashSpecification first{}, second{};
        Failure failure;
        const bool supported =
            readRequest(specification1, specification2, solutionType, first, second, failure) &&
            StreamState::canFlash(first, second);
        *isSupported = supported ? VARIANT_TRUE : VARIANT_FALSE;
        return S_OK;
    });
}

bool Material11::calculate(const VARIANT& props, Place place, Failure& failure) {
    std::vector<std::wstring> names;
    return readNames(props, L"list of properties", names, failure) &&
           std::ranges::all_of(names, [&](const std::wstring& name) {
               const StreamProperty* property = nullptr;
               return readProperty(name, property, failure) && state_->calculate(place, *property, failure);
           });
}

STDMETHODIMP Material11::CalcSinglePhaseProp(VARIANT props, BSTR phaseLabel) {
    return call(propertyInterface, L"CalcSinglePhaseProp", [&](Failure& failure) {
        Place phase{};
        return readOwnPhase(phaseLabel, phase, failure) && calculate(props, phase, failure);
    });
}

STDMETHODIMP Material11::CalcTwoPhaseProp(VARIANT props, VARIANT phaseLabels) {
    return call(propertyInterface, L"CalcTwoPhaseProp", [&](Failure& failure) {
        Place both{};
        return readOwnPhasePair(phaseLabels, both, failure) && calculate(props, both, failure);
    });
}

STDMETHODIMP Material11::CheckSinglePhasePropSpec(BSTR property, BSTR phaseLabel, VARIANT_BOOL* valid) {
    if (!prepareResult(valid))
        return E_POINTER;
    return border([&]() -> HRESULT {
        Place phase{};
        Failure failure;
        *valid = isOffered<PhaseRequest>(property) && readPhase(viewOf(phaseLabel), phase, failure)
                     ? VARIANT_TRUE
                     : VARIANT_FALSE;
        return S_OK;
    });
}

STDMETHODIMP Material11::CheckTwoPhasePropSpec(BSTR property, VARIANT phaseLabels, VARIANT_BOOL* valid) {
    if (!prepareResult(valid))
        return E_POINTER;
    return border([&]() -> HRESULT {
        Place both{};
        Failure failure;
        *valid = isOffered<TwoPhaseRequest>(property) && readPhasePair(phaseLabels, both, failure)
                     ? VARIANT_TRUE
                     : VARIANT_FALSE;
        return S_OK;
    });
}

STDMETHODIMP Material11::GetSinglePhasePropList(VARIANT* props) {
    return returnOffered<PhaseRequest>(props);
}

STDMETHODIMP Material11::GetTwoPhasePropList(VARIANT* props) {
    return returnOffered<TwoPhaseRequest>(props);
}

STDMETHODIMP Material11::CalcAndGetLnPhi(BSTR phaseLabel, double temperature, double pressure,
                                         VARIANT moleNumbers, int fFlags, VARIANT* lnPhi, VARIANT* lnPhiDT,
                                         VARIANT* lnPhiDP, VARIANT* lnPhiDn) {
    for (VARIANT* place : {lnPhi, lnPhiDT, lnPhiDP, lnPhiDn})
        if (place)
            VariantClear(place);
    return call(propertyInterface, L"CalcAndGetLnPhi", [&](Failure& failure) {
        if (fFlags != CAPE_LOG_FUGACITY_COEFFICIENTS || !lnPhi)
            return fail(failure, ECapeNoImplHR,
                        L"CalcAndGetLnPhi returns only logarithmic fugacity coefficients, no derivatives");
        StreamState phaseOnly(state_->package());
        Place phase{};
        std::vector<double> moles, values;
        if (!readPhase(viewOf(phaseLabel), phase, failure) ||
            !readValues(moleNumbers, L"mole numbers", state_->habits().rules, moles, failure))
            return false;
        const double total = std::reduce(moles.begin(), moles.end());
        if (!(total > 0))
            return fail(failure, ECapeInvalidArgumentHR, L"The mole numbers must have a positive sum");
        for (double& amount : moles)
            amount /= total;
        if (!phaseOnly.set(phase, temperatureProperty, std::span(&temperature, 1), failure) ||
            !phaseOnly.set(phase, pressureProperty, std::span(&pressure, 1), failure) ||
            !phaseOnly.set(phase, fractionProperty, moles, failure) ||
            !phaseOnly.calculate(phase, logFugacityCoefficientProperty, failure) ||
            !phaseOnly.get(phase, logFugacityCoefficientProperty, values, failure))
            return false;
        replace(lnPhi, VariantArray::of(values));
        return true;
    });
}

} // namespace solvane::host
