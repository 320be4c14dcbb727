#include "PropertyFlash.h"

#include "FlashVariables.h"
#include "SaturatedState.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace solvane::host {

namespace {

std::vector<double> evenPlaces(double first, double last) {
    // Enthalpy falls and rises again with pressure: a few steps a decade show both.
    constexpr int steps = 60;
    std::vector<double> places;
    for (int i = 0; i <= steps; ++i)
        places.push_back(first + (last - first) * i / steps);
    return places;
}

} // namespace

bool flashAtPressure(const Mixture& mixture, double pressure, const GivenProperty& given, Equilibrium& result,
                     std::string& error) {
    PhaseSplitter splitter(mixture);
    const Path path = [&](double temperature) {
        return Equilibrium{temperature, pressure, splitter.split(temperature, pressure)};
    };
    if (PathSearch(mixture, path, given).find({lowestTemperature, highestTemperature}, result, error))
        return true;
    error = text("at ", pressure, " Pa ", error, ", the values from ", lowestTemperature, " K to ",
                 highestTemperature, " K");
    return false;
}

bool flashAtTemperature(const Mixture& mixture, double temperature, const GivenProperty& given,
                        Equilibrium& result, std::string& error) {
    constexpr double lowestPressure = 1e-3;
    PhaseSplitter splitter(mixture);
    const Path path = [&](double logarithm) {
        const double pressure = std::exp(logarithm);
        return Equilibrium{temperature, pressure, splitter.split(temperature, pressure)};
    };
    const auto places = evenPlaces(std::log(lowestPressure), std::log(highestPressure));
    if (PathSearch(mixture, path, given).find(places, result, error))
        return true;
    error = text("at ", temperature, " K ", error, ", the values from ", lowestPressure, " Pa to ",
                 highestPressure, " Pa");
    return false;
}

bool flashAtVaporFraction(const Mixture& mixture, double vaporFraction, const GivenProperty& given,
                          Equilibrium& result, std::string& error) {
    const Path path = [&](double logarithm) -> std::optional<Equilibrium> {
        Equilibrium state;
        std::string ignored;
        if (!saturatedEquilibrium(mixture, vaporFraction, FlashVariable::temperature, std::exp(logarithm),
                                  state, ignored))
            return std::nullopt;
        return state;
    };
    const auto hottest = std::ranges::max(mixture.compounds, {}, &Compound::criticalTemperature);
    const auto places = evenPlaces(std::log(lowestTemperature), std::log(1.1 * hottest->criticalTemperature));
    if (PathSearch(mixture, path, given).find(places, result, error))
        return true;
    error = text("at vapor fraction ", vaporFraction, " ", error, ", the values up to the critical point");
    return false;
}

} // namespace solvane::host
