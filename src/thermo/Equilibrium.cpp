#include "Equilibrium.h"

#include "HostTexts.h"
#include "HostValues.h"
#include "PropertyCalls.h"
#include "channel/ChannelFrame.h"

#include <algorithm>

namespace solvane {

namespace {

struct Equilibrium {
    std::vector<double> fractions;   ///< one per phase
    std::vector<double> composition; ///< phase by phase of each compound, as the reply has it
    double temperature = 0;
    double pressure = 0;
};

constexpr char emptyLabel[] = "List of present phases on material contains empty string";

/// Checks a material's values of `what`, such as "pressure", of a phase if one is given; `hr` is the result
/// of the call.
bool checkValues(IUnknown& material, HRESULT hr, VariantArray& values, const char* what,
                 const PhaseLabel* phase, std::size_t count, const char* wrongCount, std::string& error) {
    const auto named = [&] { return what + (phase ? " for phase " + phase->script : std::string()); };
    if (FAILED(hr))
        return fail(error, "Failed to get " + named() + " from material: " + describeFailure(material, hr));
    return checkReals(values, count, wrongCount, error) ||
           fail(error, "Invalid values for " + named() + " from material: " + error);
}

/// Both generations.
template <class Material>
bool readEquilibrium(Material& material, const std::vector<PhaseLabel>& phases, std::size_t nComp,
                     Equilibrium& state, std::string& error) {
    constexpr char scalarExpected[] = "scalar expected";
    VariantArray values;
    state.fractions.resize(phases.size());
    state.composition.resize(phases.size() * nComp);
    for (std::size_t i = 0; i < phases.size(); ++i) {
        const PhaseLabel& phase = phases[i];
        HRESULT hr = getOfPhase(material, hostTexts.phaseFraction.get(), phase.host.get(), values.put());
        if (!checkValues(material, hr, values, "phase fraction", &phase, 1, scalarExpected, error))
            return false;
        state.fractions[i] = values.realsInPlace().front();

        hr = getOfPhase(material, hostTexts.fraction.get(), phase.host.get(), values.put());
        if (!checkValues(material, hr, values, "composition", &phase, nComp, "unexpected number of values",
                         error))
            return false;
        std::size_t place = i;
        for (const double fraction : values.realsInPlace()) {
            state.composition[place] = fraction;
            place += phases.size();
        }
    }
    const auto readOverall = [&](const Bstr& property, const char* what, double& scalar) {
        const HRESULT hr = getOverall(material, property.get(), notGiven, values.put());
        if (!checkValues(material, hr, values, what, nullptr, 1, scalarExpected, error))
            return false;
        scalar = values.realsInPlace().front();
        return true;
    };
    return readOverall(hostTexts.pressure, "pressure", state.pressure) &&
           readOverall(hostTexts.temperature, "temperature", state.temperature);
}

void writeState(const Equilibrium& state, ReplyWriter& reply) {
    reply.reals(state.fractions);
    reply.reals(state.composition);
    reply.real(state.temperature);
    reply.real(state.pressure);
}

} // namespace

bool writeEquilibrium10(const CalculationRun& run, ICapeThermoMaterialObject& material, ReplyWriter& reply,
                        std::string& error) {
    VariantArray labels;
    const HRESULT hr = material.get_PhaseIds(labels.put());
    std::vector<PhaseLabel> phases;
    if (!readPresentPhases(material, hr, labels, phases, error))
        return false;
    if (std::ranges::any_of(phases, &PhaseLabel::isNull))
        return fail(error, emptyLabel);
    std::erase_if(phases, isOverallLabel);

    Equilibrium state;
    if (!readEquilibrium(material, phases, run.nComp, state, error))
        return false;

    reply.success();
    reply.integer(-static_cast<std::int32_t>(phases.size()));
    for (const PhaseLabel& phase : phases)
        reply.text(phase.script);
    writeState(state, reply);
    return true;
}

bool writeEquilibrium11(const CalculationRun& run, ICapeThermoMaterial& material, ReplyWriter& reply,
                        std::string& error) {
    VariantArray labels;
    VariantArray statuses;
    const HRESULT hr = material.GetPresentPhases(labels.put(), statuses.put());
    std::vector<PhaseLabel> phases;
    if (!readPresentPhases(material, hr, labels, phases, error))
        return false;
    std::vector<std::int32_t> indices;
    for (const PhaseLabel& phase : phases) {
        if (phase.script.empty())
            return fail(error, emptyLabel);
        const auto known = std::ranges::find(run.phaseNames, phase.script);
        if (known == run.phaseNames.end())
            return fail(error, "List of present phases on material returned unknown phase: " + phase.script);
        indices.push_back(static_cast<std::int32_t>(known - run.phaseNames.begin()) + 1);
    }

    Equilibrium state;
    if (!readEquilibrium(material, phases, run.nComp, state, error))
        return false;

    reply.success();
    reply.integer(static_cast<std::int32_t>(indices.size()));
    for (const std::int32_t index : indices)
        reply.integer(index);
    writeState(state, reply);
    return true;
}

} // namespace solvane
