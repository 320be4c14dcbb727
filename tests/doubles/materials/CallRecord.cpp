#include "CallRecord.h"

#include "com/Text.h"
#include "com/VariantArray.h"

#include <algorithm>
#include <iomanip>
#include <sstream>

namespace solvane {

namespace {

std::string join(const std::vector<std::string>& texts) {
    std::string joined;
    for (const std::string& text : texts)
        joined += (joined.empty() ? "" : ", ") + text;
    return joined;
}

template <class Element>
std::string describeArray(const char* type, SAFEARRAY& array) {
    const auto* elements = static_cast<const Element*>(array.pvData);
    std::vector<std::string> texts;
    for (ULONG i = 0; i < array.rgsabound[0].cElements; ++i)
        if constexpr (std::is_same_v<Element, LONG>)
            texts.push_back(std::to_string(elements[i]));
        else
            texts.push_back(describe(elements[i]));
    return std::string(type) + "[" + join(texts) + "]";
}

} // namespace

std::optional<Fault> CallRecord::note(std::string call) {
    calls.push_back(std::move(call));
    if (const auto intrude = onCall)
        intrude(std::string(calls.back()));
    if (calls.size() == failingCall_)
        return failure_;
    const auto fault =
        std::ranges::find_if(faults_, [&](const Fault& f) { return calls.back().starts_with(f.call); });
    if (fault == faults_.end())
        return std::nullopt;
    std::optional<Fault> found(std::move(*fault));
    faults_.erase(fault);
    return found;
}

std::vector<std::string> CallRecord::callsOf(const std::string& beginning) const {
    std::vector<std::string> found;
    std::ranges::copy_if(calls, std::back_inserter(found),
                         [&](const std::string& call) { return call.starts_with(beginning); });
    return found;
}

std::string describe(BSTR text) {
    return text ? narrow(viewOf(text)) : "null";
}

std::string describe(double value) {
    std::ostringstream text;
    text << std::setprecision(10) << value;
    return text.str();
}

std::string describe(const VARIANT& value) {
    switch (value.vt) {
    case VT_EMPTY:
        return "empty";
    case VT_ARRAY | VT_R8:
        return describeArray<double>("R8", *value.parray);
    case VT_ARRAY | VT_BSTR:
        return describeArray<BSTR>("BSTR", *value.parray);
    case VT_ARRAY | VT_I4:
        return describeArray<LONG>("I4", *value.parray);
    default:
        return "VARTYPE " + std::to_string(value.vt);
    }
}

std::string describeCall(const std::string& name, std::initializer_list<std::string> arguments) {
    return name + "(" + join(arguments) + ")";
}

} // namespace solvane
