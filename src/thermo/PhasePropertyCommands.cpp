#include "PhasePropertyCommands.h"

#include "CalculationMaterial.h"
#include "PropertyCalls.h"
#include "channel/ChannelFrame.h"
#include "channel/PropertyTables.h"
#include "channel/ValueTags.h"
#include "com/Text.h"

#include <algorithm>
#include <span>

namespace solvane {

namespace {

struct PhaseState {
    Bstr label;
    VariantArray composition;
};

/// The property that the script requests, and its state.
struct Question {
    double temperature = 0;
    double pressure = 0;
    std::vector<PhaseState> phases; ///< one or two
    std::string name;               ///< with its suffix, which only the host understands
    Bstr hostName;
    BSTR basis = notGiven; ///< that of the result
};

Question readQuestion(const CalculationRun& run, RequestReader& request, std::size_t phaseCount) {
    Question question;
    question.temperature = request.real();
    question.pressure = request.real();
    question.phases.resize(phaseCount);
    for (PhaseState& phase : question.phases)
        phase.composition = VariantArray::of(request.reals(run.nComp));
    question.name = request.text();
    question.hostName = hostText(question.name);
    for (PhaseState& phase : question.phases)
        phase.label = hostText(request.text());
    return question;
}

// The failures, in the same words for both generations.
constexpr char temperatureFailed[] = "Failed to set temperature on material: ";
constexpr char pressureFailed[] = "Failed to set pressure on material: ";
constexpr char compositionFailed[] = "Failed to set composition on material: ";

std::string calculationFailed(const Question& question) {
    return "Failed to calculate " + question.name + ": ";
}

std::string resultFailed(const Question& question) {
    return "Failed to get " + question.name + ": ";
}

bool setConditions10(CalculationRun& run, const Question& question, std::string& error) {
    ICapeThermoMaterialObject& material = *run.material10;
    const auto set = [&](const Bstr& property, const Bstr& phase, BSTR basis, const VARIANT& value,
                         const char* failure) {
        const HRESULT hr = setProperty10(material, property.get(), phase.get(), basis, value);
        return SUCCEEDED(hr) || fail(error, failure + describeFailure(material, hr));
    };
    return set(hostTexts.temperature, hostTexts.overall, notGiven, run.oneReal.of(question.temperature),
               temperatureFailed) &&
           set(hostTexts.pressure, hostTexts.overall, notGiven, run.oneReal.of(question.pressure),
               pressureFailed) &&
           std::ranges::all_of(question.phases, [&](const PhaseState& phase) {
               return set(hostTexts.fraction, phase.label, hostTexts.mole.get(), phase.composition.get(),
                          compositionFailed);
           });
}

bool setConditions11(CalculationRun& run, const Question& question, std::string& error) {
    ICapeThermoMaterial& material = *run.material11;
    const auto setOnEach = [&](const Bstr& property, BSTR basis, auto valueOf, const char* failure) {
        return std::ranges::all_of(question.phases, [&](const PhaseState& phase) {
            const HRESULT hr =
                material.SetSinglePhaseProp(property.get(), phase.label.get(), basis, valueOf(phase));
            return SUCCEEDED(hr) || fail(error, failure + describeFailure(material, hr));
        });
    };
    return setOnEach(
               hostTexts.temperature, notGiven,
               [&](const PhaseState&) { return run.oneReal.of(question.temperature); }, temperatureFailed) &&
           setOnEach(
               hostTexts.pressure, notGiven,
               [&](const PhaseState&) { return run.oneReal.of(question.pressure); }, pressureFailed) &&
           setOnEach(
               hostTexts.fraction, hostTexts.mole.get(),
               [](const PhaseState& phase) { return phase.composition.get(); }, compositionFailed);
}

/// The label for a property of these phases. A 1.0 material has no call for two phases: their joined labels
/// name the pair.
Bstr joinedLabel(const std::vector<PhaseState>& phases) {
    std::wstring label;
    for (const PhaseState& phase : phases)
        label += phase.label.view();
    return Bstr(label);
}

bool calculate10(CalculationRun& run, const Question& question, VariantArray& values, std::string& error) {
    if (!setConditions10(run, question, error))
        return false;
    ICapeThermoMaterialObject& material = *run.material10;
    const Bstr phase = joinedLabel(question.phases);
    OneText phaseArray;
    HRESULT hr =
        material.CalcProp(run.oneText.of(question.hostName), phaseArray.of(phase), hostTexts.mixture.get());
    if (FAILED(hr))
        return fail(error, calculationFailed(question) + describeFailure(material, hr));
    hr = getProperty10(material, question.hostName.get(), phase.get(), question.basis, values.put(),
                       hostTexts.mixture.get());
    return SUCCEEDED(hr) || fail(error, resultFailed(question) + describeFailure(material, hr));
}

bool calculate11(CalculationRun& run, const Question& question, VariantArray& values, std::string& error) {
    ICapeThermoPropertyRoutine* routine = propertyRoutine(run);
    if (!routine)
        return fail(error, "Failed to get ICapeThermoPropertyRoutine from calculation material");
    if (!setConditions11(run, question, error))
        return false;
    ICapeThermoMaterial& material = *run.material11;
    const bool isPair = question.phases.size() == 2;
    const BSTR phase = question.phases.front().label.get();
    const VariantArray pair =
        isPair ? VariantArray::ofTexts({phase, question.phases.back().label.get()}) : VariantArray();
    HRESULT hr = isPair ? routine->CalcTwoPhaseProp(run.oneText.of(question.hostName), pair.get())
                        : routine->CalcSinglePhaseProp(run.oneText.of(question.hostName), phase);
    if (FAILED(hr))
        return fail(error, calculationFailed(question) + describeFailure(*routine, hr));
    hr = isPair ? material.GetTwoPhaseProp(question.hostName.get(), pair.get(), question.basis, values.put())
                : material.GetSinglePhaseProp(question.hostName.get(), phase, question.basis, values.put());
    return SUCCEEDED(hr) || fail(error, resultFailed(question) + describeFailure(material, hr));
}

/// The shape of a number of values.
struct Shape {
    ValueShape shape;
    std::size_t count;
};

/// Writes the first of `shapes` with the right number of values.
bool answer(CalculationRun& run, const Question& question, std::span<const Shape> shapes, ReplyWriter& reply,
            std::string& error) {
    VariantArray values;
    if (!run.material10 && !run.material11)
        return fail(error, noCalculationMaterial);
    if (!(run.material10 ? calculate10 : calculate11)(run, question, values, error))
        return false;
    if (!readVariantArray(values, VT_R8, error))
        return fail(error, "Invalid return values: " + error);
    const auto shape = std::ranges::find(shapes, values.count(), &Shape::count);
    if (shape == shapes.end())
        return fail(error, "Invalid return values: unexpected number of values");
    reply.success();
    reply.tag(shape->shape);
    reply.reals(values.realsInPlace());
    return true;
}

} // namespace

bool getSinglePhaseProperty(CalculationRun& run, RequestReader& request, ReplyWriter& reply,
                            std::string& error) {
    Question question = readQuestion(run, request, 1);
    const std::wstring_view name = question.hostName.view();
    const SinglePhaseProperty* property = singlePhaseProperties().find(name.substr(0, name.find(L'.')));
    if (!property)
        return fail(error, "Invalid or unsupported single-phase property: " + question.name);
    if (property->molar)
        question.basis = hostTexts.mole.get();
    const std::size_t n = run.nComp;
    const Shape shapes[] = {{ValueShape::scalar, 1}, {ValueShape::vector, n}, {ValueShape::matrix, n * n}};
    return answer(run, question, shapes, reply, error);
}

bool getTwoPhaseProperty(CalculationRun& run, RequestReader& request, ReplyWriter& reply,
                         std::string& error) {
    const Question question = readQuestion(run, request, 2);
    const std::wstring lowerName = toLower(question.hostName.view());
    const bool isSurfaceTension = lowerName.find(L"surfacetension") != std::wstring::npos;
    if (!isSurfaceTension && lowerName.find(L"kvalue") == std::wstring::npos)
        return fail(error, "Invalid or unsupported two-phase property: " + question.name);
    if (question.phases[0].label.view() == question.phases[1].label.view())
        return fail(error, "phase names should not be the same");
    const std::size_t n = run.nComp;
    const Shape surfaceTension[] = {{ValueShape::scalar, 1}, {ValueShape::vectorOfPair, 2 * n}};
    const Shape kValue[] = {{ValueShape::vector, n}, {ValueShape::matricesOfPair, 2 * n * n}};
    return answer(run, question, isSurfaceTension ? surfaceTension : kValue, reply, error);
}

} // namespace solvane
