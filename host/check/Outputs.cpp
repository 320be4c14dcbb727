#include "Outputs.h"

#include "cases/NumberText.h"
#include "cases/ParameterRules.h"
#include "cases/UnitOfMeasure.h"
#include "thermo/IdealGas.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <limits>

namespace solvane::host {

namespace {

constexpr double noNumber = std::numeric_limits<double>::quiet_NaN();

/// The largest magnitudes in the streams of a run.
struct Magnitudes {
    double temperature = 0; // K
    double pressure = 0;    // Pa
    double flow = 0;        // mol/s
    double power = 0;       // W, the energy that the flows carry
};

double enthalpyScale(const StreamResult& stream) {
    return std::abs(stream.enthalpyF) + gasConstant * stream.temperature;
}

Magnitudes magnitudesOf(const std::vector<StreamResult>& streams) {
    Magnitudes largest;
    const auto raise = [](double& value, double other) { value = std::max(value, std::abs(other)); };
    for (const StreamResult& stream : streams) {
        raise(largest.temperature, stream.temperature);
        raise(largest.pressure, stream.pressure);
        raise(largest.flow, stream.totalFlow);
        raise(largest.power, stream.totalFlow * enthalpyScale(stream));
    }
    return largest;
}

/// The magnitude that belongs to a parameter of these dimensions; 0 for dimensions that no stream has.
double magnitudeOf(const std::vector<double>& dimensionality, const Magnitudes& streams) {
    struct Row {
        std::vector<double> exponents;
        double Magnitudes::* magnitude;
    };
    static const std::array rows{
        Row{{0, 0, 0, 0, 1}, &Magnitudes::temperature},
        Row{{-1, 1, -2}, &Magnitudes::pressure},
        Row{{0, 0, -1, 0, 0, 1}, &Magnitudes::flow},
        Row{{2, 1, -3}, &Magnitudes::power},
    };
    const auto row = std::ranges::find_if(
        rows, [&](const Row& one) { return isSameDimension(one.exponents, dimensionality); });
    if (row != rows.end())
        return streams.*row->magnitude;
    return isSameDimension({}, dimensionality) ? 1 : 0;
}

void addStream(const StreamResult& stream, const Magnitudes& magnitudes,
               const std::vector<std::string>& compounds, std::vector<Output>& outputs) {
    const auto add = [&](const std::string& quantity, double value, double scale) {
        outputs.push_back({quantity + " of stream " + stream.name, value, scale, {}});
    };
    add("temperature", stream.temperature, magnitudes.temperature);
    add("pressure", stream.pressure, magnitudes.pressure);
    add("vapour fraction", stream.vaporFraction, 1);
    add("enthalpy", stream.enthalpyF, enthalpyScale(stream));
    add("flow", stream.totalFlow, magnitudes.flow);
    for (std::size_t i = 0; i < compounds.size(); ++i)
        add("flow of " + compounds[i], stream.totalFlow * stream.fraction.at(i), magnitudes.flow);
}

void addParameter(const std::string& prefix, const ModelParameter& parameter, const Magnitudes& magnitudes,
                  std::vector<Output>& outputs) {
    Output output{prefix + "parameter " + parameter.name, noNumber, 1, {}};
    if (!isSet(parameter))
        output.text = "not set";
    else if (const auto* number = std::get_if<double>(&*parameter.value)) {
        output.value = *number;
        output.scale = std::max(std::abs(*number), magnitudeOf(parameter.dimensionality, magnitudes));
    } else
        output.text = valueText(parameter.value);
    outputs.push_back(std::move(output));
}

std::string valueOf(const Output& output) {
    return output.text.empty() ? shortNumber(output.value, 12) : output.text;
}

double deviation(const Output& expected, const Output& actual) {
    if (!expected.text.empty() || !actual.text.empty())
        return expected.text == actual.text ? 0 : std::numeric_limits<double>::infinity();
    if (std::isnan(expected.value) && std::isnan(actual.value))
        return 0;
    const double difference = std::abs(actual.value - expected.value);
    if (difference == 0)
        return 0;
    const double part = difference / std::max(expected.scale, actual.scale);
    return std::isnan(part) ? std::numeric_limits<double>::infinity() : part;
}

} // namespace

std::vector<Output> outputsOf(const RunResults& results) {
    const Magnitudes magnitudes = magnitudesOf(results.streams);
    std::vector<Output> outputs;
    for (const UnitResult& unit : results.units) {
        for (const std::string& product : unit.products)
            addStream(*std::ranges::find(results.streams, product, &StreamResult::name), magnitudes,
                      results.compounds, outputs);
        for (const ModelParameter& parameter : unit.parameters)
            if (!parameter.isInput)
                addParameter(results.isFlowsheet ? unit.name + ": " : "", parameter, magnitudes, outputs);
    }
    return outputs;
}

std::optional<Deviation> largestDeviation(const std::vector<Output>& expected,
                                          const std::vector<Output>& actual, double tolerance) {
    std::optional<Deviation> largest;
    for (const Output& output : expected) {
        const auto other = std::ranges::find(actual, output.name, &Output::name);
        if (other == actual.end())
            continue;
        const double size = deviation(output, *other);
        if (size > (largest ? largest->size : tolerance))
            largest = {output.name, size, valueOf(*other) + " instead of " + valueOf(output)};
    }
    return largest;
}

std::string unsoundOutput(const std::vector<Output>& outputs) {
    const auto found = std::ranges::find_if(
        outputs, [](const Output& output) { return output.text.empty() && !std::isfinite(output.value); });
    return found == outputs.end() ? "" : found->name + " is " + valueOf(*found);
}

} // namespace solvane::host
