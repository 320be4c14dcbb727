#include "PureCompounds.h"

#include "Arguments.h"
#include "CapeOpen.h"
#include "com/Text.h"
#include "thermo/CompoundConstants.h"

#include <algorithm>
#include <cmath>

namespace solvane::host {

namespace {

const CompoundConstantRow* findConstant(std::wstring_view name) {
    const auto rows = compoundConstants();
    const auto found = std::ranges::find_if(rows, [&](const CompoundConstantRow& row) {
        return compareNoCase(widen(row.name, CP_UTF8), name) == 0;
    });
    return found == rows.end() ? nullptr : &*found;
}

Variant valueOf(const CompoundConstantRow& row, const Compound& compound) {
    if (const auto* text = std::get_if<CompoundConstantRow::Text>(&row.value))
        return Variant(widen((*text)(compound), CP_UTF8));
    const double number = std::get<CompoundConstantRow::Number>(row.value)(compound);
    return std::isnan(number) ? Variant() : Variant(number);
}

VariantArray arrayOf(std::vector<Variant> values) {
    VariantArray array;
    if (values.empty())
        return array;
    array.put()->parray = SafeArrayCreateVector(VT_VARIANT, 0, static_cast<ULONG>(values.size()));
    if (!array.get().parray)
        throw std::bad_alloc();
    array.in()->vt = VT_ARRAY | VT_VARIANT;
    auto* elements = static_cast<VARIANT*>(array.get().parray->pvData);
    for (Variant& value : values)
        *elements++ = value.release();
    return array;
}

} // namespace

bool readQuestion(const VARIANT& names, std::wstring_view what, const VARIANT& compounds,
                  const PropertyPackage& package, PureQuestion& question, Failure& failure) {
    return readNames(names, what, question.names, failure) &&
           readCompounds(compounds, package, question.compounds, failure);
}

ConstantValues readConstants(const PropertyPackage& package, const PureQuestion& question) {
    ConstantValues result;
    std::vector<Variant> values;
    for (const std::wstring& name : question.names) {
        const CompoundConstantRow* row = findConstant(name);
        if (!row)
            result.unknown.push_back(name);
        for (const std::size_t compound : question.compounds) {
            values.push_back(row ? valueOf(*row, *package.compounds()[compound]) : Variant());
            result.isComplete = result.isComplete && values.back().type() != VT_EMPTY;
        }
    }
    result.values = arrayOf(std::move(values));
    return result;
}

std::vector<std::wstring> constantNames() {
    std::vector<std::wstring> names;
    for (const CompoundConstantRow& row : compoundConstants())
        names.push_back(widen(row.name, CP_UTF8));
    return names;
}

std::vector<std::wstring> purePropertyNames(PureArgument argument) {
    std::vector<std::wstring> names;
    for (const StreamProperty& property : streamProperties())
        if (const auto* request = std::get_if<PureRequest>(&property.request))
            if (request->property->argument == argument)
                names.push_back(property.name);
    return names;
}

bool readPureProperties(const PropertyPackage& package, PureArgument argument, double at,
                        const PureQuestion& question, std::vector<double>& values, Failure& failure) {
    for (const std::wstring& name : question.names) {
        const StreamProperty* property = nullptr;
        if (!readProperty(name, property, failure))
            return false;
        const auto* request = std::get_if<PureRequest>(&property->request);
        if (!request || request->property->argument != argument)
            return fail(failure, ECapeThrmPropertyNotAvailableHR,
                        property->name + L" is not a property of the pure compounds that depends on " +
                            (argument == PureArgument::temperature ? L"temperature" : L"pressure") +
                            L" alone");
        std::vector<double> all;
        std::string error;
        if (!package.pureProperty(*request->property, at, all, error, request->derivative))
            return fail(failure, ECapeComputationHR,
                        property->name + L" cannot be calculated: " + widen(error, CP_UTF8));
        for (const std::size_t compound : question.compounds)
            values.push_back(all[compound]);
    }
    return true;
}

} // namespace solvane::host
