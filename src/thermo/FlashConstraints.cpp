#include "FlashConstraints.h"

#include "FlashProperties.h"
#include "HostTexts.h"

#include <vector>

namespace solvane {

namespace {

FlashProperty codeOf(const FlashConstraint& constraint) {
    return flashPropertyCode(hostText(constraint.name).view());
}

bool invalidProperty(const FlashConstraint& constraint, std::string& error) {
    return fail(error, "Invalid flash property: " + constraint.name);
}

bool setConstraint10(ICapeThermoMaterialObject& material, const FlashConstraint& constraint, OneReal& oneReal,
                     std::string& error) {
    const FlashProperty code = codeOf(constraint);
    if (!isFlashConstraint(code))
        return invalidProperty(constraint, error);
    const VARIANT& value = oneReal.of(constraint.value);
    if (code == FlashProperty::vaporFraction) {
        const HRESULT hr = material.SetProp(hostTexts.phaseFraction.get(), hostTexts.vapor.get(),
                                            allCompounds, notGiven, hostTexts.mole.get(), value);
        return SUCCEEDED(hr) ||
               fail(error, "Failed to set vapor fraction on material: " + describeFailure(material, hr));
    }
    const BSTR calculationType = isMolar(code) ? hostTexts.mixture.get() : notGiven;
    const BSTR basis = isMolar(code) ? hostTexts.mole.get() : notGiven;
    const HRESULT hr = material.SetProp(hostText(constraint.name).get(), hostTexts.overall.get(),
                                        allCompounds, calculationType, basis, value);
    return SUCCEEDED(hr) ||
           fail(error, "Failed to set " + constraint.name + " on material: " + describeFailure(material, hr));
}

} // namespace

bool areFlashConstraints(FlashConstraints constraints, const std::string& caller, std::string& error) {
    for (std::size_t i = 0; i < constraints.size(); ++i)
        if (!isFlashConstraint(codeOf(constraints[i])))
            return fail(error, caller + "Invalid value for propName" + std::to_string(i + 1) + "; \"" +
                                   constraints[i].name + "\" is not a valid flash constraint");
    return true;
}

bool isVaporFraction(const FlashConstraint& constraint) {
    return codeOf(constraint) == FlashProperty::vaporFraction;
}

bool flash10(ICapeThermoMaterialObject& material, FlashConstraints constraints, OneReal& oneReal,
             std::string& error) {
    for (const FlashConstraint& constraint : constraints)
        if (!setConstraint10(material, constraint, oneReal, error))
            return false;
    const wchar_t* type = flashType(codeOf(constraints[0]), codeOf(constraints[1]));
    if (!type)
        return fail(error, "Unsupported combination of flash properties");
    constexpr VARIANT noProperties{};
    const HRESULT hr = material.CalcEquilibrium(Bstr(type).get(), noProperties);
    return SUCCEEDED(hr) || fail(error, describeFailure(material, hr));
}

bool setVaporFraction11(ICapeThermoMaterial& material, const std::wstring& label, double value,
                        OneReal& oneReal, FlashSpecification& specification, std::string& error) {
    specification =
        VariantArray::ofTexts({hostTexts.phaseFraction.get(), hostTexts.mole.get(), label.c_str()});
    const HRESULT hr = material.SetSinglePhaseProp(hostTexts.phaseFraction.get(), Bstr(label).get(),
                                                   hostTexts.mole.get(), oneReal.of(value));
    return SUCCEEDED(hr) ||
           fail(error, "Failed to set vapor phase fraction: " + describeFailure(material, hr));
}

bool setOverallConstraint11(ICapeThermoMaterial& material, const FlashConstraint& constraint,
                            const char* failureTail, OneReal& oneReal, FlashSpecification& specification,
                            std::string& error) {
    const FlashProperty code = codeOf(constraint);
    if (!isFlashConstraint(code))
        return invalidProperty(constraint, error);
    const Bstr property = hostText(constraint.name);
    // The basis goes with the value; hosts want none in the specification.
    specification = VariantArray::ofTexts({property.get(), notGiven, hostTexts.overall.get()});
    const HRESULT hr = material.SetOverallProp(
        property.get(), isMolar(code) ? hostTexts.mole.get() : notGiven, oneReal.of(constraint.value));
    return SUCCEEDED(hr) || fail(error, "Failed to set " + constraint.name + failureTail + ": " +
                                            describeFailure(material, hr));
}

HRESULT offerPhases11(ICapeThermoMaterial& material, const VariantArray& labels, std::size_t count) {
    const std::vector<LONG> unknownStatus(count, CAPE_UNKNOWNPHASESTATUS);
    return material.SetPresentPhases(labels.get(), VariantArray::of(unknownStatus).get());
}

} // namespace solvane
