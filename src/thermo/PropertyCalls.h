/// The calls that get and set properties, in one form for the materials of both generations. Values are on a
/// mole basis unless the call specifies a basis.
#pragma once

#include "CapeOpen.h"
#include "HostTexts.h"
#include "com/VariantArray.h"

namespace solvane {

/// For properties of all compounds; most properties of a 1.0 material have no calculation type.
inline HRESULT getProperty10(ICapeThermoMaterialObject& material, BSTR property, BSTR phase, BSTR basis,
                             VARIANT* values, BSTR calculationType = notGiven) {
    return material.GetProp(property, phase, allCompounds, calculationType, basis, values);
}
inline HRESULT setProperty10(ICapeThermoMaterialObject& material, BSTR property, BSTR phase, BSTR basis,
                             const VARIANT& values, BSTR calculationType = notGiven) {
    return material.SetProp(property, phase, allCompounds, calculationType, basis, values);
}

inline HRESULT getOfPhase(ICapeThermoMaterialObject& material, BSTR property, BSTR phase, VARIANT* values) {
    return getProperty10(material, property, phase, hostTexts.mole.get(), values);
}
inline HRESULT getOfPhase(ICapeThermoMaterial& material, BSTR property, BSTR phase, VARIANT* values) {
    return material.GetSinglePhaseProp(property, phase, hostTexts.mole.get(), values);
}

inline HRESULT getOverall(ICapeThermoMaterialObject& material, BSTR property, BSTR basis, VARIANT* values) {
    return getProperty10(material, property, hostTexts.overall.get(), basis, values);
}
inline HRESULT getOverall(ICapeThermoMaterial& material, BSTR property, BSTR basis, VARIANT* values) {
    return material.GetOverallProp(property, basis, values);
}

inline HRESULT setOverall(ICapeThermoMaterialObject& material, const Bstr& property, const VARIANT& values) {
    return setProperty10(material, property.get(), hostTexts.overall.get(), hostTexts.mole.get(), values);
}
inline HRESULT setOverall(ICapeThermoMaterial& material, const Bstr& property, const VARIANT& values) {
    return material.SetOverallProp(property.get(), hostTexts.mole.get(), values);
}

} // namespace solvane
