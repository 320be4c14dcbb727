#include "Flashes.h"

#include "PropertyPackage.h"
#include "TextbookFlash.h"
#include "Verdict.h"

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <string>

namespace solvane {

namespace {

using host::FlashCondition;
using enum host::FlashVariable;
using State = TextbookFlash::State;

// The feed of the example flash drum.
const std::vector<double> composition{0.50, 0.20, 0.15, 0.10, 0.05};
std::vector<const host::Compound*> drumCompounds() {
    std::vector<const host::Compound*> compounds;
    for (const char* name : {"methane", "ethane", "propane", "n-butane", "n-pentane"})
        compounds.push_back(host::findCompound(name));
    return compounds;
}

constexpr double pressureOfDrum = 20e5;
constexpr double temperatureOfDrum = 260;
constexpr double temperatureOfGas = 350;

struct Row {
    const char* name;
    FlashCondition first;
    FlashCondition second;
    std::function<State()> byTheTextbook;
    double goal; ///< the package's time over the textbook's
};

/// Microseconds of one flash in a turn of about the same length for every kind of flash.
double timeOf(const std::function<void()>& flash, double estimate) {
    constexpr double turn = 4000;
    const int count = 1 + static_cast<int>(turn / std::max(estimate, 1.0));
    return microseconds([&] {
               for (int i = 0; i < count; ++i)
                   flash();
           }) /
           count;
}

/// Whether both solve the same equations: the textbook's state to its precision.
bool agree(const host::Equilibrium& state, const State& textbook) {
    const bool hasVapor = state.phases[0].phase == host::Phase::vapor;
    const double vaporFraction = hasVapor ? state.phases[0].fraction : 0;
    return std::abs(state.temperature / textbook.temperature - 1) < 1e-7 &&
           std::abs(state.pressure / textbook.pressure - 1) < 1e-7 &&
           std::abs(vaporFraction - textbook.vaporFraction) < 1e-6;
}

bool compare(const host::PropertyPackage& package, const Row& row) {
    host::Equilibrium state;
    std::string error;
    if (!package.flash(composition, row.first, row.second, state, error) ||
        !agree(state, row.byTheTextbook())) {
        std::printf("  %s: the package and the textbook differ; %s\n", row.name, error.c_str());
        return printAtMost(row.name, {}, row.goal);
    }
    const std::function<void()> flash = [&] {
        (void)package.flash(composition, row.first, row.second, state, error);
    };
    const std::function<void()> textbookFlash = [&] { (void)row.byTheTextbook(); };
    const double estimate = microseconds(flash);
    const double textbookEstimate = microseconds(textbookFlash);
    std::vector<double> ours, theirs;
    constexpr int turns = 25;
    for (int turn = 0; turn < turns; ++turn) {
        ours.push_back(timeOf(flash, estimate));
        theirs.push_back(timeOf(textbookFlash, textbookEstimate));
    }
    return printAtMost(std::string("flash ") + row.name + " / by the textbook", {ours, theirs}, row.goal);
}

} // namespace

bool compareFlashes() {
    const TextbookFlash textbook(drumCompounds(), composition);
    const State drum = textbook.atTemperatureAndPressure(temperatureOfDrum, pressureOfDrum);
    const auto at = [&](double temperature) {
        return [&textbook, temperature] {
            return textbook.atTemperatureAndPressure(temperature, pressureOfDrum);
        };
    };
    const auto enthalpyOf = [&](const State& state) { return textbook.enthalpy(state); };
    const auto entropyOf = [&](const State& state) { return textbook.entropy(state); };
    const auto fractionOf = [](const State& state) { return state.vaporFraction; };
    const auto atPressure = [&](const TextbookFlash::Property& property) {
        return [&textbook, property, value = property(drum)] {
            return textbook.atPressure(pressureOfDrum, property, value, 200, 330);
        };
    };
    const auto atTemperature = [&](const TextbookFlash::Property& property) {
        return [&textbook, property, value = property(drum)] {
            return textbook.atTemperature(temperatureOfDrum, property, value, 5e5, 60e5);
        };
    };
    const FlashCondition givenPressure{pressure, pressureOfDrum};
    const FlashCondition givenTemperature{temperature, temperatureOfDrum};
    const Row rows[] = {
        {"at T and P, one phase", {temperature, temperatureOfGas}, givenPressure, at(temperatureOfGas), 0.25},
        {"at T and P, two phases", givenTemperature, givenPressure, at(temperatureOfDrum), 0.4},
        {"at P and vapor fraction",
         givenPressure,
         {vaporFraction, fractionOf(drum)},
         atPressure(fractionOf),
         0.3},
        {"at T and vapor fraction",
         givenTemperature,
         {vaporFraction, fractionOf(drum)},
         atTemperature(fractionOf),
         0.25},
        {"at P and entropy", givenPressure, {entropy, entropyOf(drum)}, atPressure(entropyOf), 0.45},
        {"at P and enthalpy", givenPressure, {enthalpy, enthalpyOf(drum)}, atPressure(enthalpyOf), 0.35},
    };
    const host::PropertyPackage package(drumCompounds());
    bool isMet = true;
    for (const Row& row : rows)
        isMet &= compare(package, row);
    return isMet;
}

} // namespace solvane
