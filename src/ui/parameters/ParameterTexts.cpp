#include "ParameterTexts.h"

#include "UnitOfMeasure.h"
#include "com/Numbers.h"
#include "com/Text.h"

namespace solvane {

const wchar_t* kindWord(ParameterKind kind) {
    static constexpr std::array words{L"Real", L"Integer", L"String", L"Boolean"};
    return words[static_cast<std::size_t>(kind)];
}

std::wstring valueText(const Variant& value) {
    switch (value.type()) {
    case VT_R8:
        return widen(printReal(value.real()));
    case VT_I4:
        return std::to_wstring(value.integer());
    case VT_BOOL:
        return value.boolean() ? L"True" : L"False";
    case VT_BSTR:
        return std::wstring(value.text());
    default:
        return {};
    }
}

std::vector<std::wstring> parameterCells(const CParameter& parameter) {
    return {parameter.componentName,
            kindWord(parameter.parameterKind),
            parameter.isInput ? L"Input" : L"Output",
            valueText(parameter.currentValue),
            valueText(parameter.defaultValue),
            valueText(parameter.minimumValue),
            valueText(parameter.maximumValue),
            unitText(parameter.dimensionality)};
}

} // namespace solvane
