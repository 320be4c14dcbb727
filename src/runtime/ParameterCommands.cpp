// getParameter and setParameter: the script's access to the unit's parameters.

#include "UnitCommands.h"
#include "channel/ChannelFrame.h"
#include "channel/ValueTags.h"
#include "com/Failure.h"
#include "com/Numbers.h"
#include "com/Text.h"
#include "thermo/CalculationRun.h"
#include "unit/model/Unit.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace solvane {

namespace {

/// A value as the gateway sends it.
struct WireValue {
    ValueTag tag;
    double real = 0;
    std::int32_t integer = 0;
    std::string text;

    bool isText() const { return tag > ValueTag::boolean; }
};

WireValue readValue(RequestReader& request) {
    WireValue value{.tag = static_cast<ValueTag>(request.unsignedInteger()), .text = {}};
    switch (value.tag) {
    case ValueTag::real:
        value.real = request.real();
        break;
    case ValueTag::integer:
    case ValueTag::boolean:
        value.integer = request.integer();
        break;
    default:
        value.text = request.text();
        break;
    }
    return value;
}

CParameter* findParameter(CalculationRun& run, const std::string& name, std::string& error) {
    const std::vector<ComRef<CParameter>>& parameters = run.unit.parameters;
    if (run.parameterPlaces.empty())
        for (std::size_t place = 0; place < parameters.size(); ++place)
            run.parameterPlaces.emplace(parameters[place]->componentName, place);
    const std::wstring wideName = widen(name);
    const auto hasName = [&](const ComRef<CParameter>& parameter) {
        return compareNoCase(parameter->componentName, wideName) == 0;
    };
    // The host may have named a parameter anew in the middle of the run.
    const auto place = run.parameterPlaces.find(wideName);
    if (place != run.parameterPlaces.end() && place->second < parameters.size() &&
        hasName(parameters[place->second]))
        return parameters[place->second].get();
    const auto found = std::ranges::find_if(parameters, hasName);
    if (found != parameters.end())
        return found->get();
    error = "Invalid parameter name: " + name;
    return nullptr;
}

/// Written so that any bound rejects a NaN.
template <class T>
bool isWithinBounds(T value, const CParameter& parameter, T (Variant::*number)() const, std::string& hint,
                    std::string& error) {
    const Variant& minimum = parameter.minimumValue;
    const Variant& maximum = parameter.maximumValue;
    const auto beyond = [&](const char* relation, const Variant& bound, const char* text) {
        hint = relation + printReal((bound.*number)()) + ", got " + printReal(value);
        return fail(error, text);
    };
    if (!minimum.isEmpty() && !((minimum.*number)() <= value))
        return beyond("is at least ", minimum, "Value below minimum value");
    if (!maximum.isEmpty() && !(value <= (maximum.*number)()))
        return beyond("is at most ", maximum, "Value above maximum value");
    return true;
}

/// floor(value + 0.5) as an int32. A value outside its range, NaN included, becomes the lowest int32, as the
/// processor converts it.
LONG rounded(double value) {
    const double whole = std::floor(value + 0.5);
    constexpr double limit = 2147483648.0;
    return whole >= -limit && whole < limit ? static_cast<LONG>(whole) : std::numeric_limits<LONG>::min();
}

bool assignReal(CParameter& parameter, const WireValue& value, std::string& hint, std::string& error) {
    if (value.isText())
        return fail(error, "Cannot assign string to real parameter");
    const double number = value.tag == ValueTag::real ? value.real : value.integer;
    if (!isWithinBounds(number, parameter, &Variant::real, hint, error))
        return false;
    parameter.currentValue = Variant(number);
    return true;
}

bool assignInteger(CParameter& parameter, const WireValue& value, std::string& hint, std::string& error) {
    if (value.isText())
        return fail(error, "Cannot assign string to integer parameter");
    const LONG number = value.tag == ValueTag::real ? rounded(value.real) : value.integer;
    if (!isWithinBounds(number, parameter, &Variant::integer, hint, error))
        return false;
    parameter.currentValue = Variant(number);
    return true;
}

bool assignBoolean(CParameter& parameter, const WireValue& value, std::string& error) {
    if (value.isText() && value.text != "true" && value.text != "false")
        return fail(error, "Cannot assign string to boolean parameter");
    const bool truth = value.isText()                ? value.text == "true"
                       : value.tag == ValueTag::real ? value.real != 0
                                                     : value.integer != 0;
    parameter.currentValue = Variant(truth);
    return true;
}

bool assignString(CParameter& parameter, const WireValue& value, std::string& hint, std::string& error) {
    if (!value.isText())
        return fail(error, value.tag == ValueTag::boolean
                               ? "Cannot assign boolean value to string parameter"
                               : "Cannot assign numeric value to string parameter");
    const std::wstring text = widen(value.text);
    if (parameter.restrictedToList && !parameter.isOption(text)) {
        for (const std::wstring& option : parameter.optionList)
            hint.append(hint.empty() ? "takes " : ", ").append(narrow(option));
        return fail(error, "Invalid value for parameter: value is not in list of exclusive options");
    }
    parameter.currentValue = Variant(std::wstring_view(text));
    return true;
}

constexpr char unknownKind[] = "Internal error: unknown parameter type";

} // namespace

bool getParameter(CalculationRun& run, RequestReader& request, ReplyWriter& reply, std::string& error) {
    const CParameter* parameter = findParameter(run, request.text(), error);
    if (!parameter)
        return false;
    const Variant& value = parameter->currentValue;
    reply.success();
    switch (parameter->parameterKind) {
    case ParameterKind::real:
        reply.tag(ValueTag::real);
        reply.real(value.real());
        return true;
    case ParameterKind::integer:
        reply.tag(ValueTag::integer);
        reply.integer(value.integer());
        return true;
    case ParameterKind::boolean:
        reply.tag(ValueTag::boolean);
        reply.integer(value.boolean() ? 1 : 0);
        return true;
    case ParameterKind::string: {
        reply.tag(ValueTag::text);
        const std::string text = narrow(value.text());
        constexpr std::size_t reserve = 4; // kept free after the longest text
        if (reply.room() < text.size() + reserve)
            return fail(error, "String value too large for allocated memory");
        reply.text(text);
        return true;
    }
    }
    return fail(error, unknownKind);
}

bool setParameter(CalculationRun& run, RequestReader& request, ReplyWriter& reply, std::string& error) {
    CParameter* parameter = findParameter(run, request.text(), error);
    if (!parameter)
        return false;
    const WireValue value = readValue(request);
    bool stored = false;
    switch (parameter->parameterKind) {
    case ParameterKind::real:
        stored = assignReal(*parameter, value, run.hint, error);
        break;
    case ParameterKind::integer:
        stored = assignInteger(*parameter, value, run.hint, error);
        break;
    case ParameterKind::boolean:
        stored = assignBoolean(*parameter, value, error);
        break;
    case ParameterKind::string:
        stored = assignString(*parameter, value, run.hint, error);
        break;
    default:
        error = unknownKind;
        break;
    }
    if (stored)
        reply.success();
    else
        run.hint.insert(0, "parameter '" + narrow(parameter->componentName) + "'" +
                               (run.hint.empty() ? "" : " "));
    return stored;
}

} // namespace solvane
