#include "FeedCommands.h"

#include "CalculationMaterial.h"
#include "Equilibrium.h"
#include "HostTexts.h"
#include "HostValues.h"
#include "OverallProperty.h"
#include "PortNumber.h"
#include "PropertyCalls.h"
#include "channel/ChannelFrame.h"
#include "channel/FlashProperties.h"
#include "channel/ValueTags.h"
#include "com/Text.h"
#include "unit/model/Unit.h"

#include <algorithm>
#include <array>

namespace solvane {

namespace {

/// The script's request for a property of a feed, by its number in the script.
struct FeedRequest {
    std::string number;
    std::string property;
};

/// The properties that are read from a feed's material directly. All others are calculated.
struct DirectProperty {
    FlashProperty code;
    Bstr HostTexts::* name;
    bool isVector;
};

constexpr auto directProperties = std::to_array<DirectProperty>({
    {FlashProperty::temperature, &HostTexts::temperature, false},
    {FlashProperty::pressure, &HostTexts::pressure, false},
    {FlashProperty::totalFlow, &HostTexts::totalFlow, false},
    {FlashProperty::flow, &HostTexts::flow, true},
    {FlashProperty::fraction, &HostTexts::fraction, true},
});

/// Both generations.
template <class Material>
bool getDirectProperty(const CalculationRun& run, Material& material, const FeedRequest& feed,
                       const DirectProperty& property, std::vector<double>& result, std::string& error) {
    const BSTR name = (hostTexts.*property.name).get();
    const BSTR basis = isMolar(property.code) ? hostTexts.mole.get() : notGiven;
    const std::string ofFeed = feed.property + " from feed " + feed.number + ": ";
    VariantArray values;
    const HRESULT hr = getOverall(material, name, basis, values.put());
    if (FAILED(hr))
        return fail(error, "Failed to get " + ofFeed + describeFailure(material, hr));
    const bool isRead = property.isVector
                            ? readReals(values, run.nComp, "Unexpected number of values", result, error)
                            : readReals(values, 1, "Scalar expected", result, error);
    return isRead || fail(error, "Invalid value for " + ofFeed + error);
}

bool copyFailed(const FeedRequest& feed, const std::string& reason, std::string& error) {
    return fail(error, "Failed to copy feed " + feed.number + " to calculation material: " + reason);
}

/// The copy becomes the calculation material for the rest of the run.
bool calculateProperty(CalculationRun& run, ICapeThermoMaterialObject& source, const FeedRequest& feed,
                       double& result, std::string& error) {
    ComRef<IDispatch> object;
    const HRESULT hr = source.Duplicate(object.put());
    if (FAILED(hr))
        return copyFailed(feed, describeFailure(source, hr), error);
    const auto copy = object.as<ICapeThermoMaterialObject>();
    if (!copy)
        return fail(error, "Copied feed " + feed.number + " does not expose ICapeThermoMaterialObject");
    run.replaceMaterial(copy);
    return overallFromPhases10(run, *copy, feed.property, result, error);
}

bool calculateProperty(CalculationRun& run, ICapeThermoMaterial& material, const FeedRequest& feed,
                       double& result, std::string& error) {
    if (!run.material11)
        return copyFailed(feed, "the calculation material is of version 1.0", error);
    IDispatch* source = &material;
    const HRESULT hr = run.material11->CopyFromMaterial(&source);
    if (FAILED(hr))
        return copyFailed(feed, describeFailure(*run.material11, hr), error);
    ICapeThermoPropertyRoutine* routine = propertyRoutine(run);
    if (!routine)
        return fail(error, noPropertyRoutine);
    return overallFromPhases11(run, *run.material11, *routine, feed.property, result, error);
}

bool notConnected(const char* command, std::int32_t number, std::string& error) {
    return fail(error, std::string(command) + ": Port " + std::to_string(number) + " is not connected");
}

void writeProperty(ReplyWriter& reply, bool isVector, std::span<const double> values) {
    reply.success();
    reply.tag(isVector ? ValueShape::vector : ValueShape::scalar);
    reply.reals(values);
}

/// Both generations. The caller holds the material, which the host may disconnect from inside a call.
template <class Material>
bool answerFeedProp(CalculationRun& run, Material& material, const FeedRequest& feed, FlashProperty code,
                    ReplyWriter& reply, std::string& error) {
    const auto direct = std::ranges::find(directProperties, code, &DirectProperty::code);
    if (direct != directProperties.end()) {
        std::vector<double> values;
        if (!getDirectProperty(run, material, feed, *direct, values, error))
            return false;
        writeProperty(reply, direct->isVector, values);
        return true;
    }
    double value = 0;
    if (!calculateProperty(run, material, feed, value, error))
        return false;
    writeProperty(reply, false, std::span(&value, 1));
    return true;
}

} // namespace

bool getFeedProp(CalculationRun& run, RequestReader& request, ReplyWriter& reply, std::string& error) {
    const std::int32_t number = request.integer();
    const std::string name = request.text();
    CPort* port = findPort(run, run.unit.feedPorts, number, "getFeedProp", error);
    if (!port)
        return false;
    if (!port->isConnected())
        return notConnected("getFeedProp", number, error);
    const FlashProperty code = flashPropertyCode(widen(name, CP_THREAD_ACP));
    if (code == FlashProperty::vaporFraction || code == FlashProperty::unknown)
        return fail(error, "Unknown/unsupported property \"" + name + "\" in getFeedProp");

    const FeedRequest feed{std::to_string(number), name};
    if (const ComRef material10 = port->materialObject10)
        return answerFeedProp(run, *material10, feed, code, reply, error);
    const ComRef material11 = port->materialObject11;
    return answerFeedProp(run, *material11, feed, code, reply, error);
}

bool getFeedEquilibrium(CalculationRun& run, RequestReader& request, ReplyWriter& reply, std::string& error) {
    const std::int32_t number = request.integer();
    CPort* port = findPort(run, run.unit.feedPorts, number, "getFeedEquilibrium", error);
    if (!port)
        return false;
    if (const ComRef material10 = port->materialObject10)
        return writeEquilibrium10(run, *material10, reply, error);
    if (const ComRef material11 = port->materialObject11)
        return writeEquilibrium11(run, *material11, reply, error);
    return notConnected("getFeedEquilibrium", number, error);
}

} // namespace solvane
