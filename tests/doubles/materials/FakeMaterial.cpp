#include "FakeMaterial.h"

#include "com/Text.h"
#include "com/VariantArray.h"

#include <algorithm>

namespace solvane {

namespace {

constexpr HRESULT notAvailable = ECapeThrmPropertyNotAvailableHR;
constexpr HRESULT invalidArgument = ECapeInvalidArgumentHR;
constexpr HRESULT computationError = ECapeComputationHR;

HRESULT give(BSTR* result, std::wstring_view text) {
    *result = newBstr(text);
    return S_OK;
}

HRESULT give(VARIANT* result, std::span<const double> values) {
    *result = VariantArray::of(values).release();
    return S_OK;
}

/// The reals of an array argument, none where it is something else.
std::vector<double> realsOf(const VARIANT& value) {
    Variant copy;
    VariantCopy(copy.put(), const_cast<VARIANT*>(&value));
    VariantArray array(std::move(copy));
    std::string error;
    return readVariantArray(array, VT_R8, error) ? array.reals() : std::vector<double>();
}

std::wstring firstText(const VARIANT& list) {
    if (list.vt != (VT_ARRAY | VT_BSTR))
        return {};
    return std::wstring(viewOf(*static_cast<BSTR*>(list.parray->pvData)));
}

std::wstring calculationOf(std::wstring_view property, std::wstring_view phase) {
    return std::wstring(property) + L" of " + toLower(phase);
}

} // namespace

STDMETHODIMP FakeMaterial::get_name(BSTR* name) {
    return give(name, errorName);
}
STDMETHODIMP FakeMaterial::get_code(LONG* code) {
    *code = 0;
    return S_OK;
}
STDMETHODIMP FakeMaterial::get_description(BSTR* description) {
    return give(description, errorDescription);
}
STDMETHODIMP FakeMaterial::get_scope(BSTR* scope) {
    return give(scope, L"a double");
}
STDMETHODIMP FakeMaterial::get_interfaceName(BSTR* interfaceName) {
    return give(interfaceName, L"a double");
}
STDMETHODIMP FakeMaterial::get_operation(BSTR* operation) {
    return give(operation, L"a double");
}
STDMETHODIMP FakeMaterial::get_moreInfo(BSTR* moreInfo) {
    return give(moreInfo, L"a double");
}

STDMETHODIMP FakeMaterial::get_ComponentName(BSTR* name) {
    return answer("ComponentName", {}, [&] { return give(name, *componentName); });
}

HRESULT FakeMaterial::query(REFIID iid, IUnknown* own, void** result) {
    IUnknown* object = own;
    if (iid == __uuidof(ICapeIdentification) && componentName)
        object = static_cast<ICapeIdentification*>(this);
    else if (iid == __uuidof(ECapeUser))
        object = static_cast<ECapeUser*>(this);
    else if (iid == __uuidof(ECapeRoot))
        object = static_cast<ECapeRoot*>(this);
    if (std::ranges::find(hidden, iid) != hidden.end())
        object = nullptr;
    *result = object;
    if (!object)
        return E_NOINTERFACE;
    object->AddRef();
    return S_OK;
}

void FakeMaterial::adopt(FakeMaterial& copy) const {
    copy.record = record;
    copy.onFlash = onFlash;
    copy.hidden = hiddenOnCopies;
    copy.hiddenOnCopies = hiddenOnCopies;
    copy.prefix_ = "copy.";
}

HRESULT FakeMaterial::answer(const std::string& call, std::initializer_list<VARIANT*> results,
                             const std::function<HRESULT()>& body) {
    const std::optional<Fault> fault = record->note(prefix_ + call);
    if (!fault)
        return body();
    const HRESULT result = FAILED(fault->result) ? fail(fault->result, fault->text) : body();
    if (fault->output < results.size()) {
        VARIANT* place = results.begin()[fault->output];
        VariantClear(place);
        VariantCopy(place, fault->value.in());
    }
    return FAILED(result) ? result : fault->result;
}

HRESULT FakeMaterial::answerObject(const std::string& call, IDispatch** result,
                                   const std::function<HRESULT()>& body) {
    *result = nullptr;
    const std::optional<Fault> fault = record->note(prefix_ + call);
    if (!fault)
        return body();
    return FAILED(fault->result) ? fail(fault->result, fault->text) : fault->result;
}

HRESULT FakeMaterial::fail(HRESULT result, std::wstring description) {
    errorDescription = std::move(description);
    return result;
}

HRESULT FakeMaterial::unknown(BSTR property) {
    return fail(notAvailable, L"no value for " + std::wstring(viewOf(property)));
}

HRESULT FakeMaterial::getOverall(BSTR property, VARIANT* values) {
    const std::wstring name(viewOf(property));
    if (calculated_.contains(calculationOf(name, L"overall")))
        return give(values, stream.results.at(name));
    if (name == L"flow") {
        std::vector<double> flows = stream.overall[L"fraction"];
        for (double& flow : flows)
            flow *= stream.overall[L"totalFlow"].at(0);
        return give(values, flows);
    }
    const auto found = stream.overall.find(name);
    return found == stream.overall.end() ? unknown(property) : give(values, found->second);
}

HRESULT FakeMaterial::setOverall(BSTR property, const VARIANT& values) {
    stream.overall[std::wstring(viewOf(property))] = realsOf(values);
    return S_OK;
}

HRESULT FakeMaterial::getOfPhase(BSTR property, BSTR label, VARIANT* values) {
    const std::wstring name(viewOf(property));
    if (stream.results.contains(name) && calculated_.contains(calculationOf(name, viewOf(label))))
        return give(values, stream.results.at(name));
    const FakePhase* phase = stream.findPhase(std::wstring(viewOf(label)));
    if (!phase)
        return fail(invalidArgument, L"no such phase");
    if (name == L"phaseFraction")
        return give(values, {&phase->fraction, 1});
    if (name == L"fraction")
        return give(values, phase->composition);
    const auto found = phase->properties.find(name);
    if (found == phase->properties.end() || !calculated_.contains(calculationOf(name, phase->label)))
        return unknown(property);
    return give(values, {&found->second, 1});
}

HRESULT FakeMaterial::setOfPhase(BSTR property, BSTR label, const VARIANT& values) {
    FakePhase* phase = stream.findPhase(std::wstring(viewOf(label)));
    if (!phase)
        return fail(invalidArgument, L"no such phase");
    const std::vector<double> reals = realsOf(values);
    if (viewOf(property) == L"phaseFraction" && reals.size() == 1)
        phase->fraction = reals.front();
    else if (viewOf(property) == L"fraction")
        phase->composition = reals;
    return S_OK;
}

HRESULT FakeMaterial::getConstant(const VARIANT& properties, VARIANT* values) {
    const auto found = stream.constants.find(firstText(properties));
    return found == stream.constants.end() ? fail(invalidArgument, L"no such constant")
                                           : VariantCopy(values, found->second.in());
}

HRESULT FakeMaterial::getResult(const VARIANT& properties, VARIANT* values) {
    const auto found = stream.results.find(firstText(properties));
    return found == stream.results.end() ? fail(notAvailable, L"no such property")
                                         : give(values, found->second);
}

HRESULT FakeMaterial::calculate(const VARIANT& properties, const std::wstring& label) {
    const std::wstring name = firstText(properties);
    const FakePhase* phase = stream.findPhase(label);
    if (!stream.results.contains(name) && !(phase && phase->properties.contains(name)))
        return fail(computationError, L"can't calculate " + name);
    calculated_.insert(calculationOf(name, label));
    return S_OK;
}

HRESULT FakeMaterial::flash() {
    if (onFlash)
        onFlash(stream);
    return S_OK;
}

} // namespace solvane
