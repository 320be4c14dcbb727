#include "Equilibrium.h"

#include "HostTexts.h"
#include "HostValues.h"
#include "PropertyCalls.h"
#include "channel/ChannelFrame.h"

#include <algorithm>

namespace solvane {

namespace {

struct Equilibrium {
    std::vector<double> fractions;                 ///< one per phase
    std::vector<std::vector<double>> compositions; ///< nComp values per phase
    double temperature = 0;
    double pressure = 0;
};

constexpr char emptyLabel[] = "List of present phases on material contains empty string";

/// Reads a material's values of `what`, such as "pressure"; `hr` is the result of the call.
bool readValues(IUnknown& material, HRESULT hr, VariantArray& values, const std::string& what,
                std::size_t count, const char* wrongCount, std::vector<double>& reals, std::string& error) {
    if (FAILED(hr))
        return fail(error, "Failed to get " + what + " from material: " + describeFailure(material, hr));
    if (!readReals(values, count, wrongCount, reals, error))
        return fail(error, "Invalid values for " + what + " from material: " + error);
    return true;
}

/// Both generations.
template <class Material>
bool readEquilibrium(Material& material, const std::vector<PhaseLabel>& phases, std::size_t nComp,
                     Equilibrium& state, std::string& error) {
    constexpr char scalarExpected[] = "scalar expected";
    VariantArray values;
    std::vector<double> scalar;
    for (const PhaseLabel& phase : phases) {
        HRESULT hr = getOfPhase(material, hostTexts.phaseFraction.get(), phase.host.get(), values.put());
        if (!readValues(material, hr, values, "phase fraction for phase " + phase.script, 1, scalarExpected,
                        scalar, error))
            return false;
        state.fractions.push_back(scalar.front());

        hr = getOfPhase(material, hostTexts.fraction.get(), phase.host.get(), values.put());
        if (!readValues(material, hr, values, "composition for phase " + phase.script, nComp,
                        "unexpected number of values", state.compositions.emplace_back(), error))
            return false;
    }
    HRESULT hr = getOverall(material, hostTexts.pressure.get(), notGiven, values.put());
    if (!readValues(material, hr, values, "pressure", 1, scalarExpected, scalar, error))
        return false;
    state.pressure = scalar.front();

    hr = getOverall(material, hostTexts.temperature.get(), notGiven, values.put());
    if (!readValues(material, hr, values, "temperature", 1, scalarExpected, scalar, error))
        return false;
    state.temperature = scalar.front();
    return true;
}

void writeState(const Equilibrium& state, std::size_t nComp, ReplyWriter& reply) {
    reply.reals(state.fractions);
    for (std::size_t compound = 0; compound < nComp; ++compound)
        for (const std::vector<double>& composition : state.compositions)
            reply.real(composition[compound]);
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
    writeState(state, run.nComp, reply);
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
    writeState(state, run.nComp, reply);
    return true;
}

} // namespace solvane
