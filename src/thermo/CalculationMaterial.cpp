#include "CalculationMaterial.h"

#include "HostTexts.h"
#include "com/CapeError.h"
#include "com/Failure.h"
#include "com/Text.h"
#include "unit/model/Unit.h"

#include <array>

namespace solvane {

namespace {

const CPort* firstConnectedPort(const Unit& unit) {
    for (const auto* ports : {&unit.feedPorts, &unit.productPorts})
        for (const ComRef<CPort>& port : *ports)
            if (port->isConnected())
                return port.get();
    return nullptr;
}

/// Both generations: takes the copy that a port's material made of itself. Hosts may report success without
/// an object, so the object decides.
template <class Material>
bool takeCopy(Material& original, HRESULT hr, const ComRef<IDispatch>& copy, const wchar_t* interfaceName,
              ComRef<Material>& result, std::wstring& error) {
    if (!copy)
        return fail(error, L"Failed to duplicate material object: " + DescribeCapeError(&original, hr));
    result = copy.as<Material>();
    if (!result)
        return fail(error, std::wstring(L"Copied material does not expose ") + interfaceName);
    return true;
}

/// The compound and phase lists of a material.
struct MaterialLists {
    VariantArray compounds;
    VariantArray phases;
    VariantArray aggregationStates;
};

HRESULT getCompoundList(ICapeThermoCompounds& source, VariantArray& compounds) {
    VariantArray formulae, names, boilingTemperatures, molecularWeights, casNumbers;
    return source.GetCompoundList(compounds.put(), formulae.put(), names.put(), boilingTemperatures.put(),
                                  molecularWeights.put(), casNumbers.put());
}

std::wstring noCompoundList(IUnknown& source, HRESULT hr) {
    return L"Failed to get component list from calculation material: " + DescribeCapeError(&source, hr);
}

bool getLists10(CalculationRun& run, MaterialLists& lists, std::wstring& error) {
    const HRESULT hr = run.material10->get_ComponentIds(lists.compounds.put());
    return SUCCEEDED(hr) || fail(error, noCompoundList(*run.material10, hr));
}

bool getLists11(CalculationRun& run, MaterialLists& lists, std::wstring& error) {
    run.compounds = run.material11.as<ICapeThermoCompounds>();
    if (!run.compounds)
        return fail(error, L"Failed to get ICapeThermoCompounds from calculation material");
    HRESULT hr = getCompoundList(*run.compounds, lists.compounds);
    if (FAILED(hr))
        return fail(error, noCompoundList(*run.compounds, hr));

    // Reports a material without phases like one whose phases cannot be listed.
    run.phases = run.material11.as<ICapeThermoPhases>();
    VariantArray keyCompounds;
    hr = run.phases
             ? run.phases->GetPhaseList(lists.phases.put(), lists.aggregationStates.put(), keyCompounds.put())
             : E_NOINTERFACE;
    if (FAILED(hr))
        return fail(error, L"Failed to get list of phases from material: " +
                               DescribeCapeError(run.phases.get(), hr));
    return true;
}

/// The label decides, not the material's state of aggregation.
std::int32_t aggregationCode(std::wstring_view label) {
    static constexpr std::array<std::wstring_view, 3> states{L"vapor", L"liquid", L"solid"};
    for (std::size_t i = 0; i < states.size(); ++i)
        if (compareNoCase(label, states[i]) == 0)
            return static_cast<std::int32_t>(i) + 1;
    return 0;
}

} // namespace

bool createCalculationMaterial(CalculationRun& run, std::wstring& error) {
    const CPort* port = firstConnectedPort(run.unit);
    if (!port)
        return true;
    ComRef<IDispatch> copy;
    if (const ComRef material = port->materialObject10) {
        const HRESULT hr = material->Duplicate(copy.put());
        return takeCopy(*material, hr, copy, L"ICapeThermoMaterialObject", run.material10, error);
    }
    const ComRef material = port->materialObject11;
    const HRESULT hr = material->CreateMaterial(copy.put());
    return takeCopy(*material, hr, copy, L"ICapeThermoMaterial", run.material11, error);
}

bool readCompoundsAndPhases(CalculationRun& run, std::wstring& error) {
    MaterialLists lists;
    if (run.material10) {
        if (!getLists10(run, lists, error))
            return false;
    } else if (run.material11) {
        if (!getLists11(run, lists, error))
            return false;
    }

    constexpr wchar_t invalidStates[] = L"Invalid list of phase aggregation states from material: ";
    std::string reason;
    if (!readVariantArray(lists.compounds, VT_BSTR, reason))
        return fail(error, L"Invalid compound list from material: " + widen(reason));
    run.nComp = lists.compounds.count();
    run.compoundIds = std::move(lists.compounds);

    if (!readVariantArray(lists.phases, VT_BSTR, reason))
        return fail(error, L"Invalid list of phase labels from material: " + widen(reason));
    if (!readVariantArray(lists.aggregationStates, VT_BSTR, reason))
        return fail(error, invalidStates + widen(reason));
    if (lists.aggregationStates.count() != lists.phases.count())
        return fail(error, std::wstring(invalidStates) + L"size does not match number of phases");
    run.phaseLabels = lists.phases.texts();
    for (const std::wstring& label : run.phaseLabels) {
        run.phaseNames.push_back(scriptText(label));
        run.aggregationCodes.push_back(aggregationCode(label));
    }
    return true;
}

bool readCompoundList(CPort& port, std::vector<std::wstring>& compounds, std::wstring& error) {
    VariantArray list;
    ComRef<IUnknown> source;
    HRESULT hr = S_OK;
    if (const ComRef material10 = port.materialObject10) {
        source = ComRef<IUnknown>(material10.get());
        hr = material10->get_ComponentIds(list.put());
    } else if (const ComRef material11 = port.materialObject11) {
        const ComRef asked = port.interfaceOf(material11, &CPort::compounds);
        if (!asked)
            return fail(
                error,
                L"Failed to get ICapeThermoCompounds interface from material object connected to port");
        source = ComRef<IUnknown>(asked.get());
        hr = getCompoundList(*asked, list);
    } else {
        return fail(error, L"Port is not connected");
    }
    if (FAILED(hr))
        return fail(error, L"Failed to get list of compounds from material connected to port: " +
                               DescribeCapeError(source.get(), hr));
    std::string reason;
    if (!readVariantArray(list, VT_BSTR, reason))
        return fail(error, L"Invalid compound list from material connected to port: " + widen(reason));
    compounds = list.texts();
    return true;
}

ICapeThermoPropertyRoutine* propertyRoutine(CalculationRun& run) {
    if (!run.propertyRoutine)
        run.propertyRoutine = run.material11.as<ICapeThermoPropertyRoutine>();
    return run.propertyRoutine.get();
}

ICapeThermoEquilibriumRoutine* equilibriumRoutine(CalculationRun& run) {
    if (!run.equilibriumRoutine)
        run.equilibriumRoutine = run.material11.as<ICapeThermoEquilibriumRoutine>();
    return run.equilibriumRoutine.get();
}

} // namespace solvane
