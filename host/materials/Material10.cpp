#include "Material10.h"

#include "Arguments.h"
#include "PureCompounds.h"
#include "com/Text.h"

#include <algorithm>

namespace solvane::host {

namespace {

constexpr wchar_t materialInterface[] = L"ICapeThermoMaterialObject";

struct FlashType {
    std::wstring_view name;
    FlashVariable first;
    FlashVariable second;
};

using enum FlashVariable;

constexpr std::array flashTypes{
    FlashType{L"TP", temperature, pressure},
    FlashType{L"TVF", temperature, vaporFraction},
    FlashType{L"TH", temperature, enthalpy},
    FlashType{L"THF", temperature, enthalpyF},
    FlashType{L"THNF", temperature, enthalpyNF},
    FlashType{L"TS", temperature, entropy},
    FlashType{L"TSF", temperature, entropyF},
    FlashType{L"TSNF", temperature, entropyNF},
    FlashType{L"TU", temperature, internalEnergy},
    FlashType{L"TV", temperature, volume},
    FlashType{L"PVF", pressure, vaporFraction},
    FlashType{L"PH", pressure, enthalpy},
    FlashType{L"PHF", pressure, enthalpyF},
    FlashType{L"PHNF", pressure, enthalpyNF},
    FlashType{L"PS", pressure, entropy},
    FlashType{L"PSF", pressure, entropyF},
    FlashType{L"PSNF", pressure, entropyNF},
    FlashType{L"PU", pressure, internalEnergy},
    FlashType{L"PV", pressure, volume},
    FlashType{L"HVF", vaporFraction, enthalpy},
    FlashType{L"HFVF", vaporFraction, enthalpyF},
    FlashType{L"HNFVF", vaporFraction, enthalpyNF},
    FlashType{L"SVF", vaporFraction, entropy},
    FlashType{L"SFVF", vaporFraction, entropyF},
    FlashType{L"SNFVF", vaporFraction, entropyNF},
    FlashType{L"UVF", vaporFraction, internalEnergy},
    FlashType{L"VVF", vaporFraction, volume},
};

FlashSpecification specificationOf(FlashVariable variable) {
    return {&flashProperty(variable), variable == vaporFraction ? Place::vapor : Place::overall};
}

/// Values are those of the mixture, except for properties that only pure compounds have.
bool checkCalcType(BSTR calcType, const StreamProperty& property, Failure& failure) {
    const std::wstring_view type = viewOf(calcType);
    const std::wstring_view expected = property.isPure() ? L"pure" : L"mixture";
    return (type.empty() && !property.isPure()) || compareNoCase(type, expected) == 0 ||
           fail(failure, ECapeNoImplHR,
                L"The calculation type \"" + std::wstring(type) + L"\" is not supported for " +
                    property.name + L"; use \"" + std::wstring(expected) + L"\"");
}

bool readPlace(std::wstring_view label, Place& place, Failure& failure) {
    const auto found = findPlace(label);
    if (found)
        place = *found;
    return found || fail(failure, ECapeInvalidArgumentHR,
                         L"There is no phase \"" + std::wstring(label) +
                             L"\"; the phases are Overall, Vapor and Liquid");
}

} // namespace

ComRef<IDispatch> Material10::create(std::shared_ptr<StreamState> state, std::wstring name) {
    const ComRef material(new CComObject<Material10>());
    material->state_ = std::move(state);
    material->componentName = std::move(name);
    return ComRef<IDispatch>(static_cast<ICapeThermoMaterialObject*>(material.get()));
}

std::span<const InterfaceEntry> Material10::interfaceTable() {
    static constexpr std::array table{
        interfaceEntry<Material10, IDispatch, ICapeThermoMaterialObject>(),
        interfaceEntry<Material10, ICapeThermoMaterialObject>(),
        interfaceEntry<Material10, ECapeRoot>(),
        interfaceEntry<Material10, ECapeUser>(),
        interfaceEntry<Material10, ICapeIdentification>(),
    };
    return table;
}

STDMETHODIMP Material10::get_ComponentIds(VARIANT* compIds) {
    return returnNames(compIds, [&] { return compoundIds(*state_->package()); });
}

STDMETHODIMP Material10::get_PhaseIds(VARIANT* phaseIds) {
    return returnNames(phaseIds, [&] {
        std::vector<std::wstring> labels{std::wstring(placeLabel(Place::overall))};
        for (const Place phase : state_->phases())
            if (state_->isPresent(phase))
                labels.emplace_back(placeLabel(phase));
        return labels;
    });
}

STDMETHODIMP Material10::GetProp(BSTR property, BSTR phase, VARIANT compIds, BSTR calcType, BSTR basis,
                                 VARIANT* results) {
    if (!prepareResult(results))
        return E_POINTER;
    return call(materialInterface, L"GetProp", [&](Failure& failure) {
        const StreamProperty* asked = nullptr;
        Place place{};
        std::vector<std::size_t> compounds;
        std::vector<double> values;
        if (!readProperty(viewOf(property), asked, failure) || !readPlace(viewOf(phase), place, failure) ||
            !readCompounds(compIds, *state_->package(), compounds, failure) ||
            !checkCalcType(calcType, *asked, failure) ||
            !checkBasis(basis, *asked, state_->habits().rules, failure) ||
            !state_->get(place, *asked, values, failure))
            return false;
        if (asked->shape == ValueShape::perCompound) {
            std::vector<double> selected;
            for (const std::size_t compound : compounds)
                selected.push_back(values[compound]);
            values = std::move(selected);
        }
        *results = VariantArray::of(values).release();
        return true;
    });
}

STDMETHODIMP Material10::SetProp(BSTR property, BSTR phase, VARIANT compIds, BSTR calcType, BSTR basis,
                                 VARIANT values) {
    return call(materialInterface, L"SetProp", [&](Failure& failure) {
        const StreamProperty* given = nullptr;
        Place place{};
        std::vector<std::size_t> compounds;
        std::vector<double> numbers;
        if (!readProperty(viewOf(property), given, failure) || !readPlace(viewOf(phase), place, failure) ||
            !readCompounds(compIds, *state_->package(), compounds, failure) ||
            !checkCalcType(calcType, *given, failure) ||
            !checkBasis(basis, *given, state_->habits().rules, failure) ||
            !readValues(values, given->name, state_->habits().rules, numbers, failure))
            return false;
        if (given->shape == ValueShape::perCompound) {
            if (compounds.size() != state_->compoundCount() || numbers.size() != compounds.size())
                return fail(failure, ECapeInvalidArgumentHR,
                            std::wstring(given->name) + L" takes a value for each compound");
            std::vector<double> ordered(numbers.size());
            for (std::size_t i = 0; i < compounds.size(); ++i)
                ordered[compounds[i]] = numbers[i];
            numbers = std::move(ordered);
        }
        return state_->set(place, *given, numbers, failure);
    });
}

bool Material10::calculate(const std::vector<std::wstring>& properties, std::span<const Place> places,
                           BSTR calcType, Failure& failure) {
    for (const std::wstring& name : properties) {
        const StreamProperty* property = nullptr;
        if (!readProperty(name, property, failure) || !checkCalcType(calcType, *property, failure))
            return false;
        for (const Place place : places)
            if (!state_->calculate(place, *property, failure))
                return false;
    }
    return true;
}

STDMETHODIMP Material10::CalcProp(VARIANT props, VARIANT phases, BSTR calcType) {
    return call(materialInterface, L"CalcProp", [&](Failure& failure) {
        std::vector<std::wstring> properties, labels;
        if (!readNames(props, L"list of properties", properties, failure) ||
            !readNames(phases, L"list of phases", labels, failure))
            return false;
        std::vector<Place> places;
        for (const std::wstring& label : labels)
            if (!readPlace(label, places.emplace_back(), failure))
                return false;
        return calculate(properties, places, calcType, failure);
    });
}

STDMETHODIMP Material10::CalcEquilibrium(BSTR flashType, VARIANT props) {
    return call(materialInterface, L"CalcEquilibrium", [&](Failure& failure) {
        std::vector<std::wstring> properties;
        if (!readNames(props, L"list of properties", properties, failure))
            return false;
        const auto type = std::ranges::find_if(flashTypes, [&](const FlashType& known) {
            return compareNoCase(known.name, viewOf(flashType)) == 0;
        });
        if (type == flashTypes.end())
            return fail(failure, ECapeInvalidArgumentHR,
                        L"There is no flash type \"" + std::wstring(viewOf(flashType)) + L"\"");
        if (!state_->flash(specificationOf(type->first), specificationOf(type->second), failure))
            return false;
        std::vector<Place> present;
        std::ranges::copy_if(state_->phases(), std::back_inserter(present),
                             [&](Place phase) { return state_->isPresent(phase); });
        return calculate(properties, present, nullptr, failure);
    });
}

STDMETHODIMP Material10::RemoveResults(VARIANT props) {
    return call(materialInterface, L"RemoveResults", [&](Failure& failure) {
        std::vector<std::wstring> properties;
        if (!readNames(props, L"list of properties", properties, failure))
            return false;
        if (!properties.empty())
            return fail(failure, ECapeNoImplHR,
                        L"RemoveResults can only remove all results; pass no property names");
        state_->clearCalculated();
        return true;
    });
}

STDMETHODIMP Material10::CreateMaterialObject(IDispatch** materialObject) {
    return border([&]() -> HRESULT {
        if (!prepareResult(materialObject))
            return E_POINTER;
        *materialObject = create(state_->another(), componentName).release();
        return S_OK;
    });
}

STDMETHODIMP Material10::Duplicate(IDispatch** clone) {
    return border([&]() -> HRESULT {
        if (!prepareResult(clone))
            return E_POINTER;
        *clone = create(std::make_shared<StreamState>(*state_), componentName).release();
        return S_OK;
    });
}

STDMETHODIMP Material10::GetPropList(VARIANT* props) {
    return returnNames(props, [] {
        std::vector<std::wstring> names;
        for (const StreamProperty& property : streamProperties())
            names.push_back(property.name);
        return names;
    });
}

STDMETHODIMP Material10::GetNumComponents(LONG* numComp) {
    return returnCount(numComp, state_->compoundCount());
}

STDMETHODIMP Material10::GetUniversalConstant(VARIANT, VARIANT* propVals) {
    return prepareResult(propVals) ? notImplemented(materialInterface, L"GetUniversalConstant") : E_POINTER;
}

STDMETHODIMP Material10::GetComponentConstant(VARIANT props, VARIANT compIds, VARIANT* propVals) {
    if (!prepareResult(propVals))
        return E_POINTER;
    return call(materialInterface, L"GetComponentConstant", [&](Failure& failure) {
        PureQuestion question;
        if (!readQuestion(props, L"list of constants", compIds, *state_->package(), question, failure))
            return false;
        ConstantValues constants = readConstants(*state_->package(), question);
        if (!constants.unknown.empty())
            return fail(failure, ECapeThrmPropertyNotAvailableHR,
                        L"The constant \"" + constants.unknown.front() + L"\" is not available");
        *propVals = constants.values.release();
        return true;
    });
}

STDMETHODIMP Material10::SetIndependentVar(VARIANT, VARIANT) {
    return notImplemented(materialInterface, L"SetIndependentVar");
}

STDMETHODIMP Material10::GetIndependentVar(VARIANT, VARIANT* values) {
    return prepareResult(values) ? notImplemented(materialInterface, L"GetIndependentVar") : E_POINTER;
}

STDMETHODIMP Material10::PropCheck(VARIANT, VARIANT* valid) {
    return prepareResult(valid) ? notImplemented(materialInterface, L"PropCheck") : E_POINTER;
}

STDMETHODIMP Material10::AvailableProps(VARIANT* props) {
    return prepareResult(props) ? notImplemented(materialInterface, L"AvailableProps") : E_POINTER;
}

STDMETHODIMP Material10::ValidityCheck(VARIANT, VARIANT* relList) {
    return prepareResult(relList) ? notImplemented(materialInterface, L"ValidityCheck") : E_POINTER;
}

} // namespace solvane::host
