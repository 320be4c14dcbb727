#include "CalculationMaterial.h"
#include "CompoundCommands.h"
#include "HostTexts.h"
#include "PropertyCalls.h"
#include "channel/ChannelFrame.h"
#include "channel/PropertyTables.h"
#include "com/Text.h"

namespace solvane {

namespace {

/// A condition that properties of the pure compounds depend on.
struct Condition {
    const char* name;
    Bstr HostTexts::* hostName;
    char letter; ///< in the names of the commands
    const wchar_t* derivative;
    const UnitMap& (*knownProperties)();
    decltype(&ICapeThermoCompounds::GetTDependentProperty) get11;
};

constexpr Condition temperature{
    "temperature",   &HostTexts::temperature,   'T',
    L"Dtemperature", temperatureDependentUnits, &ICapeThermoCompounds::GetTDependentProperty};
constexpr Condition pressure{
    "pressure",   &HostTexts::pressure,   'P',
    L"Dpressure", pressureDependentUnits, &ICapeThermoCompounds::GetPDependentProperty};

/// The script's request, for every compound.
struct Question {
    const Condition& condition;
    double value; ///< of the condition
    std::string name;

    /// `reason` may be the host object's own words.
    bool failed(const char* verb, const std::string& reason, std::string& error) const {
        return fail(error, std::string("Failed to ") + verb + " " + condition.letter +
                               "-dependent property \"" + name + "\": " + reason);
    }
};

bool isKnown(const Question& question, std::string& error) {
    const Condition& condition = question.condition;
    const std::wstring name = widen(question.name, CP_THREAD_ACP);
    const std::size_t dot = name.find(L'.');
    if (dot != std::wstring::npos && compareNoCase(name.substr(dot + 1), condition.derivative) != 0)
        return fail(error, "Invalid derivative");
    return condition.knownProperties().find(name.substr(0, dot)) ||
           fail(error,
                "Property '" + question.name + "' is not a known " + condition.name + " dependent property");
}

/// There is no call for pure compounds: sets the condition on the material itself, which then calculates.
bool get10(CalculationRun& run, const Question& question, VariantArray& values, std::string& error) {
    if (!isKnown(question, error))
        return false;
    ICapeThermoMaterialObject& material = *run.material10;
    const Bstr name = hostText(question.name);
    const BSTR overall = hostTexts.overall.get();
    HRESULT hr = setProperty10(material, (hostTexts.*question.condition.hostName).get(), overall, notGiven,
                               run.oneReal.of(question.value));
    if (FAILED(hr))
        return fail(error, std::string("Failed to set ") + question.condition.name +
                               " on material object: " + describeFailure(material, hr));
    OneText phases;
    hr = material.CalcProp(run.oneText.of(name), phases.of(hostTexts.overall), hostTexts.pure.get());
    if (FAILED(hr))
        return question.failed("calculate", describeFailure(material, hr), error);
    // Hosts use their own basis for all other names.
    const bool isMolar = question.name.find("mol") != std::string::npos;
    hr = getProperty10(material, name.get(), overall, isMolar ? hostTexts.mole.get() : notGiven, values.put(),
                       hostTexts.pure.get());
    return SUCCEEDED(hr) || question.failed("get", describeFailure(material, hr), error);
}

bool get11(CalculationRun& run, const Question& question, VariantArray& values, std::string& error) {
    ICapeThermoCompounds& compounds = *run.compounds;
    const HRESULT hr = (compounds.*question.condition.get11)(run.oneText.of(hostText(question.name)),
                                                             question.value, allCompounds, values.put());
    return SUCCEEDED(hr) || question.failed("get", describeFailure(compounds, hr), error);
}

bool getProperty(const Condition& condition, CalculationRun& run, RequestReader& request, ReplyWriter& reply,
                 std::string& error) {
    const double value = request.real();
    const Question question{condition, value, request.text()};
    if (!run.material10 && !run.material11)
        return fail(error, noCalculationMaterial);
    VariantArray values;
    if (!(run.material10 ? get10 : get11)(run, question, values, error))
        return false;
    const std::string invalid = "Invalid return values from Get";
    if (!readVariantArray(values, VT_R8, error))
        return fail(error, invalid + condition.letter + "DependentProperty: " + error);
    // Prescribed text for both commands, though it names the first.
    if (values.count() != run.nComp)
        return fail(error, invalid + "TDependentProperty: unexpected number of values");
    reply.success();
    reply.reals(values.realsInPlace());
    return true;
}

} // namespace

bool getTDependentProperty(CalculationRun& run, RequestReader& request, ReplyWriter& reply,
                           std::string& error) {
    return getProperty(temperature, run, request, reply, error);
}

bool getPDependentProperty(CalculationRun& run, RequestReader& request, ReplyWriter& reply,
                           std::string& error) {
    return getProperty(pressure, run, request, reply, error);
}

} // namespace solvane
