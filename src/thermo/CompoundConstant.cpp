#include "CompoundCommands.h"

#include "CalculationMaterial.h"
#include "HostTexts.h"
#include "channel/ChannelFrame.h"
#include "channel/ValueTags.h"

#include <algorithm>
#include <limits>
#include <span>

namespace solvane {

namespace {

constexpr char invalidConstants[] = "Invalid return values from GetCompoundConstant: ";

bool wrongType(std::string& error) {
    return fail(error, std::string(invalidConstants) + "unexpected data type for a value");
}

/// If a material fails to return the constant of all compounds, this queries each compound once more. It
/// drops the results: the script gets no answer.
bool getConstants10(CalculationRun& run, const Bstr& name, VariantArray& values) {
    const VARIANT& names = run.oneText.of(name);
    if (SUCCEEDED(run.material10->GetComponentConstant(names, allCompounds, values.put())))
        return true;
    OneText compound;
    for (const std::wstring& id : run.compoundIds.texts())
        run.material10->GetComponentConstant(names, compound.of(Bstr(id)), values.put());
    return false;
}

bool getConstants11(CalculationRun& run, const std::string& name, VariantArray& values, std::string& error) {
    constexpr HRESULT notAvailable = ECapeThrmPropertyNotAvailableHR; // for some compounds, or for all
    const HRESULT hr =
        run.compounds->GetCompoundConstant(run.oneText.of(hostText(name)), allCompounds, values.put());
    return SUCCEEDED(hr) || hr == notAvailable ||
           fail(error,
                "Failed to get compound constant \"" + name + "\": " + describeFailure(*run.compounds, hr));
}

bool writeNumbers(std::span<const VARIANT> values, ReplyWriter& reply, std::string& error) {
    std::vector<double> numbers;
    for (const VARIANT& value : values) {
        if (value.vt != VT_R8 && value.vt != VT_EMPTY)
            return wrongType(error);
        numbers.push_back(value.vt == VT_R8 ? value.dblVal : std::numeric_limits<double>::quiet_NaN());
    }
    reply.success();
    reply.tag(ConstantKind::numbers);
    reply.reals(numbers);
    return true;
}

bool writeTexts(std::span<const VARIANT> values, ReplyWriter& reply, std::string& error) {
    std::vector<std::string> texts;
    std::size_t bytes = 2 * sizeof(std::uint32_t);
    for (const VARIANT& value : values) {
        if (value.vt != VT_BSTR && value.vt != VT_EMPTY)
            return wrongType(error);
        texts.push_back(value.vt == VT_BSTR ? scriptText(viewOf(value.bstrVal)) : "");
        bytes += texts.back().size() + 1;
    }
    if (bytes >= reply.room())
        return fail(error,
                    "Values too large to transfer (insufficient memory on data transfer memory block)");
    reply.success();
    reply.tag(ConstantKind::texts);
    for (const std::string& text : texts)
        reply.text(text);
    return true;
}

} // namespace

bool getCompoundConstant(CalculationRun& run, RequestReader& request, ReplyWriter& reply,
                         std::string& error) {
    const std::string name = request.text();
    VariantArray constants;
    if (run.material10) {
        if (!getConstants10(run, hostText(name), constants))
            return true;
    } else if (run.material11) {
        if (!getConstants11(run, name, constants, error))
            return false;
    } else {
        return fail(error, noCalculationMaterial);
    }
    if (!readVariantArray(constants, VT_VARIANT, error))
        return fail(error, invalidConstants + error);
    const std::span<const VARIANT> values = constants.variants();
    if (values.size() != run.nComp)
        return fail(error, std::string(invalidConstants) + "unexpected number of values");
    // The first value determines the kind of all values.
    const auto first = std::ranges::find_if(values, [](const VARIANT& v) { return v.vt != VT_EMPTY; });
    if (first == values.end())
        return fail(error, std::string(invalidConstants) + "values not available");
    return first->vt == VT_BSTR ? writeTexts(values, reply, error) : writeNumbers(values, reply, error);
}

} // namespace solvane
